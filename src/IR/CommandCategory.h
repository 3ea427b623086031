#pragma once
// Who can give commands a category: the owner of a command set (a model of the IR database) files
// the commands it holds under its own name when they have none of their own.

#include <QString>

namespace norva {

class ICommandCategoryOwner {
 public:
  virtual QString CommandCategory() const = 0;

 protected:
  ~ICommandCategoryOwner() = default;
};

}  // namespace norva
