#pragma once
// Objects that keep their own binary form: sub-object snapshots store that form instead of the
// object's properties.

#include <QIODevice>

namespace norva {

class IStreamPersist {
 public:
  virtual ~IStreamPersist() = default;
  virtual void SaveToStream(QIODevice& stream) const = 0;
  virtual void LoadFromStream(QIODevice& stream) = 0;
};

}  // namespace norva
