#include <OrbGlobal/Undo/PropertyEntries.h>

#include <OrbGlobal/Model/OrbObject.h>
#include <OrbGlobal/Undo/PropertyKinds.h>

#include <QSequentialIterable>

namespace norva {

namespace {

bool IsEmptyArray(const QVariant& value) { return value.value<QSequentialIterable>().size() == 0; }

}  // namespace

TChangedProperty::TChangedProperty(TOrbObject* object, int propertyIndex)
    : TChangeProtocolEntry(object), mPropertyIndex(propertyIndex) {}

QMetaProperty TChangedProperty::Property() const {
  return Object().metaObject()->property(mPropertyIndex);
}

QString TChangedProperty::PropertyName() const { return QString::fromLatin1(Property().name()); }

QVariant TChangedProperty::ReadValue() const { return Property().read(&Object()); }

void TChangedProperty::WriteValue(const QVariant& value) const {
  Property().write(&Object(), value);
}

void TChangedOrdProperty::Capture() { mPrevValue = OrdinalOf(ReadValue()); }
// The property is looked up once: reverting a large step runs this for every entry.
void TChangedOrdProperty::Revert() {
  const QMetaProperty property = Property();
  property.write(&Object(), OrdinalValue(property.metaType(), mPrevValue));
}

void TChangedAnsiStringProperty::Capture() { mPrevValue = ReadValue().toByteArray(); }
void TChangedAnsiStringProperty::Revert() { WriteValue(mPrevValue); }

void TChangedUnicodeStringProperty::Capture() { mPrevValue = ReadValue().toString(); }
void TChangedUnicodeStringProperty::Revert() { WriteValue(mPrevValue); }

void TChangedVariantProperty::Capture() { mPrevValue = ReadValue(); }
void TChangedVariantProperty::Revert() { WriteValue(mPrevValue); }

void TChangedDynamicArrayProperty::Capture() {
  const QVariant value = ReadValue();
  if (!IsEmptyArray(value)) mPrevValue = value;
}

void TChangedDynamicArrayProperty::Revert() {
  WriteValue(mPrevValue.isNull() ? QVariant(Property().metaType()) : mPrevValue);
}

void TChangedObjectReferenceProperty::Capture() {
  mPrevReferencedObject = OrbObjectOf(ReadValue());
}

void TChangedObjectReferenceProperty::Revert() {
  WriteValue(ObjectPropertyValue(Property().metaType(), mPrevReferencedObject.data()));
}

void TChangedSubObjectProperty::Capture() {
  mSubObjectPersist = TSubObjectSnapshot(OrbObjectOf(ReadValue()));
}

// The setter copies the temporary object into the sub-object the property holds.
void TChangedSubObjectProperty::Revert() {
  const std::unique_ptr<TOrbObject> previous = mSubObjectPersist.Restore();
  WriteValue(ObjectPropertyValue(Property().metaType(), previous.get()));
}

}  // namespace norva
