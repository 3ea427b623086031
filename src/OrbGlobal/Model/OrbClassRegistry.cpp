#include <OrbGlobal/Model/OrbClassRegistry.h>

#include <NorvaGlobal/Exceptions.h>
#include <OrbGlobal/Model/OrbGuid.h>
#include <OrbGlobal/Undo/PropertyKinds.h>

#include <QMetaProperty>

#include <memory>

namespace norva {

namespace {
// Created by the first registration.
std::unique_ptr<QList<TOrbObjectClass>> gRegistry;

// Undo writes a changed property back according to its kind, so every property that editing may
// write needs one (QObject's own objectName is no part of a model object); so do the properties of
// the parts the class holds, which sub-object snapshots keep. Checked once here rather than at
// every change.
void CheckUndoable(TOrbObjectClass registered, TOrbObjectClass cls,
                   QList<TOrbObjectClass>& checked) {
  if (!cls || checked.contains(cls)) return;
  checked.append(cls);
  for (int i = QObject::staticMetaObject.propertyCount(); i < cls->propertyCount(); ++i) {
    const QMetaProperty property = cls->property(i);
    if (!property.isWritable()) continue;
    const TPropertyKind kind = PropertyKindOf(property);
    if (kind == TPropertyKind::SubObject) {
      CheckUndoable(registered, property.metaType().metaObject(), checked);
    } else if (kind == TPropertyKind::Unsupported) {
      throw ENorvaError(
          QStringLiteral("Cannot register %1: property %2.%3 of type %4 cannot be undone")
              .arg(ClassNameOf(registered), ClassNameOf(property.enclosingMetaObject()),
                   QString::fromLatin1(property.name()), QString::fromLatin1(property.typeName())));
    }
  }
}

void CheckUndoable(TOrbObjectClass cls) {
  QList<TOrbObjectClass> checked;
  CheckUndoable(cls, cls, checked);
}

void Append(TOrbObjectClass cls) {
  if (!gRegistry) gRegistry = std::make_unique<QList<TOrbObjectClass>>();
  gRegistry->append(cls);
}

}  // namespace

void RegisterOrbObjectClass(TOrbObjectClass cls) {
  CheckUndoable(cls);
  Append(cls);
}

void RegisterOrbObjectClasses(const QList<const QMetaObject*>& classes) {
  QList<TOrbObjectClass> models;
  for (const QMetaObject* cls : classes) {
    if (!InheritsOrbObject(cls)) continue;
    CheckUndoable(cls);
    models.append(cls);
  }
  for (TOrbObjectClass cls : models) Append(cls);
}

TOrbObjectClass GetOrbObjectClass(const QUuid& guid) {
  if (!gRegistry) return nullptr;
  for (TOrbObjectClass cls : *gRegistry) {
    if (ClassGUIDOf(cls) == guid) return cls;
  }
  return nullptr;
}

TOrbObjectClass GetOrbObjectClass(const QString& guidText) {
  return GetOrbObjectClass(StringToGUID(guidText));
}

const QList<TOrbObjectClass>* GetRegisteredOrbClasses() { return gRegistry.get(); }

}  // namespace norva
