#pragma once
// Undo entries of property changes: the value a named property had before it changed, kept by the
// property's kind. Reverting writes it back through the property's own setter, which records the
// reverse change.

#include <OrbGlobal/Undo/ChangeProtocolEntry.h>
#include <OrbGlobal/Undo/SubObjectSnapshot.h>

#include <QByteArray>
#include <QMetaProperty>
#include <QPointer>
#include <QString>
#include <QVariant>

#include <cstdint>

namespace norva {

class TOrbObject;

class TChangedProperty : public TChangeProtocolEntry {
 public:
  // `propertyIndex` is the property's index in the object's meta-object.
  TChangedProperty(TOrbObject* object, int propertyIndex);
  TOrbObject& Object() const { return *static_cast<TOrbObject*>(AffectedObject()); }
  QString PropertyName() const;
  // Keeps the property's current value; called once the entry has been recorded.
  virtual void Capture() = 0;

 protected:
  QMetaProperty Property() const;
  QVariant ReadValue() const;
  void WriteValue(const QVariant& value) const;

 private:
  int mPropertyIndex;
};

class TChangedOrdProperty : public TChangedProperty {
 public:
  using TChangedProperty::TChangedProperty;
  void Capture() override;
  void Revert() override;
  std::int32_t PrevValue() const { return mPrevValue; }

 private:
  std::int32_t mPrevValue = 0;
};

class TChangedAnsiStringProperty : public TChangedProperty {
 public:
  using TChangedProperty::TChangedProperty;
  void Capture() override;
  void Revert() override;

 private:
  QByteArray mPrevValue;
};

class TChangedUnicodeStringProperty : public TChangedProperty {
 public:
  using TChangedProperty::TChangedProperty;
  void Capture() override;
  void Revert() override;

 private:
  QString mPrevValue;
};

class TChangedVariantProperty : public TChangedProperty {
 public:
  using TChangedProperty::TChangedProperty;
  void Capture() override;
  void Revert() override;

 private:
  QVariant mPrevValue;
};

// An empty array is kept as a null value.
class TChangedDynamicArrayProperty : public TChangedProperty {
 public:
  using TChangedProperty::TChangedProperty;
  void Capture() override;
  void Revert() override;

 private:
  QVariant mPrevValue;
};

class TChangedObjectReferenceProperty : public TChangedProperty {
 public:
  using TChangedProperty::TChangedProperty;
  void Capture() override;
  void Revert() override;

 private:
  // Guarded: the referenced object is not the affected one and may be destroyed meanwhile; the
  // reference then comes back as none.
  QPointer<TOrbObject> mPrevReferencedObject;
};

class TChangedSubObjectProperty : public TChangedProperty {
 public:
  using TChangedProperty::TChangedProperty;
  void Capture() override;
  void Revert() override;

 private:
  TSubObjectSnapshot mSubObjectPersist;
};

}  // namespace norva
