#include <OrbGlobal/Undo/PropertyRecording.h>

#include <NorvaGlobal/DebugOutput.h>
#include <OrbGlobal/Model/OrbObject.h>
#include <OrbGlobal/Undo/PropertyEntries.h>
#include <OrbGlobal/Undo/PropertyKinds.h>
#include <OrbGlobal/Undo/Undo.h>

#include <memory>

namespace norva {

namespace {

std::unique_ptr<TChangedProperty> NewPropertyEntry(TOrbObject& object, int index) {
  switch (PropertyKindOf(object.metaObject()->property(index))) {
    case TPropertyKind::Ordinal: return std::make_unique<TChangedOrdProperty>(&object, index);
    case TPropertyKind::AnsiString:
      return std::make_unique<TChangedAnsiStringProperty>(&object, index);
    case TPropertyKind::UnicodeString:
      return std::make_unique<TChangedUnicodeStringProperty>(&object, index);
    case TPropertyKind::Variant: return std::make_unique<TChangedVariantProperty>(&object, index);
    case TPropertyKind::DynamicArray:
      return std::make_unique<TChangedDynamicArrayProperty>(&object, index);
    case TPropertyKind::ObjectReference:
      return std::make_unique<TChangedObjectReferenceProperty>(&object, index);
    case TPropertyKind::SubObject:
      return std::make_unique<TChangedSubObjectProperty>(&object, index);
    case TPropertyKind::OtherClass: return nullptr;
    case TPropertyKind::Unsupported: break;
  }
  DebugOutput(OrbLog(), QStringLiteral("Unsupported property type: ") +
                            QString::fromLatin1(object.metaObject()->property(index).name()));
  return nullptr;
}

}  // namespace

void RecordPropertyChange(TOrbObject& object, const char* propertyName) {
  const int index = object.metaObject()->indexOfProperty(propertyName);
  if (index < 0) {
    DebugOutput(OrbLog(),
                QStringLiteral("Unpublished property ") + QString::fromLatin1(propertyName));
    return;
  }
  std::unique_ptr<TChangedProperty> entry = NewPropertyEntry(object, index);
  if (entry) RecordChange(std::move(entry))->Capture();
}

}  // namespace norva
