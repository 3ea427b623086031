#pragma once
// The process-wide registry of model classes, keyed by class GUID (never by class name), so that
// saved files and clipboard data can re-create objects.

#include <OrbGlobal/Model/OrbClass.h>

#include <QList>
#include <QString>
#include <QUuid>

namespace norva {

// Appends the class; duplicates are not checked. A class publishing a writable property whose type
// undo cannot restore (see PropertyKinds.h), itself or in a part it holds, is refused: ENorvaError
// "Cannot register <class>: property <declaring class>.<property> of type <type> cannot be
// undone", and nothing is registered.
void RegisterOrbObjectClass(TOrbObjectClass cls);
// Registers, in order, each class of the list that is a model class; skips the others. When one
// is refused, none of the list is registered.
void RegisterOrbObjectClasses(const QList<const QMetaObject*>& classes);
// The first registered class whose class GUID is `guid`, or none.
TOrbObjectClass GetOrbObjectClass(const QUuid& guid);
// Raises EConvertError for text that is not a GUID in registry form.
TOrbObjectClass GetOrbObjectClass(const QString& guidText);
// The registered classes in registration order; none before the first registration.
const QList<TOrbObjectClass>* GetRegisteredOrbClasses();

}  // namespace norva
