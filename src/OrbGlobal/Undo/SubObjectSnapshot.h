#pragma once
// The in-memory copy of a sub-object that an undo entry restores; never written to disk.
//
// The byte stream holds the class identity (the address of the class's QMetaObject, 8 bytes
// little-endian; 0 = no object, and nothing follows), then the object's own stream form when it
// implements IStreamPersist, else each stored, writable property in declaration order: ordinals as
// 4 bytes, strings in the stream string form (8-bit strings widened byte for byte), sub-objects as
// nested snapshots. Object references and variant or array values stay beside the bytes (the
// stream holds their 4-byte index), so a referenced object destroyed meanwhile comes back as none
// and values of every recordable kind come back whole.

#include <QByteArray>
#include <QList>
#include <QPointer>
#include <QVariant>

#include <memory>
#include <vector>

class QIODevice;

namespace norva {

class TOrbObject;

class TSubObjectSnapshot {
 public:
  TSubObjectSnapshot() = default;
  explicit TSubObjectSnapshot(const TOrbObject* object);

  // A new object without owner holding the snapshot's values (none for a snapshot of none).
  // Raises ENorvaError "Cannot construct " + the class name when the class has no virtual
  // constructor. Restoring records nothing.
  std::unique_ptr<TOrbObject> Restore() const;

  const QByteArray& Bytes() const { return mBytes; }

 private:
  void WriteObject(QIODevice& stream, const TOrbObject* object);
  void WriteProperties(QIODevice& stream, const TOrbObject& object);
  std::unique_ptr<TOrbObject> ReadObject(QIODevice& stream) const;
  void ReadProperties(QIODevice& stream, TOrbObject& object) const;

  QByteArray mBytes;
  std::vector<QPointer<TOrbObject>> mReferences;
  QList<QVariant> mValues;
};

}  // namespace norva
