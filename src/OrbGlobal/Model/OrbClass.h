#pragma once
// Class references of the object model. A class reference is the class's QMetaObject; the
// class-level constants are declared in the class with Q_CLASSINFO and inherited like class
// methods (the most derived declaration wins):
//   Q_CLASSINFO("ClassGUID", "{...}")     the key under which the class registry finds the class
//                                         (registry form; none declared = NoGUID)
//   Q_CLASSINFO("SubComponent", "false")  objects of the class are top-level objects of their own
//                                         (none declared = "true": parts of their owner)
// The virtual constructor is a Q_INVOKABLE constructor taking the owner as a TOrbObject pointer.

#include <QMetaObject>
#include <QString>
#include <QUuid>

namespace norva {

class TOrbObject;

using TOrbObjectClass = const QMetaObject*;

bool InheritsOrbObject(TOrbObjectClass cls);
bool ClassIsSubComponent(TOrbObjectClass cls);
QUuid ClassGUIDOf(TOrbObjectClass cls);
// The class's own name, without namespaces.
QString ClassNameOf(TOrbObjectClass cls);

// A new object of the class through its virtual constructor. Raises ENorvaError "Cannot construct "
// + the class name when the class is not a model class or has no such constructor.
TOrbObject* ConstructOrbObject(TOrbObjectClass cls, TOrbObject* owner);

}  // namespace norva
