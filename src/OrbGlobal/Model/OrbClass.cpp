#include <OrbGlobal/Model/OrbClass.h>

#include <NorvaGlobal/Exceptions.h>
#include <OrbGlobal/Model/OrbGuid.h>
#include <OrbGlobal/Model/OrbObject.h>

#include <QMetaClassInfo>

namespace norva {

namespace {

const char* ClassInfoValue(TOrbObjectClass cls, const char* name) {
  const int index = cls->indexOfClassInfo(name);
  return index < 0 ? nullptr : cls->classInfo(index).value();
}

// moc records the parameter type as written in the class; accept it with or without namespace.
bool TakesOwner(const QMetaMethod& constructor) {
  if (constructor.parameterCount() != 1) return false;
  QByteArray type = constructor.parameterTypes().constFirst();
  type.replace("norva::", "");
  return type == "TOrbObject*";
}

}  // namespace

bool InheritsOrbObject(TOrbObjectClass cls) {
  return cls && cls->inherits(&TOrbObject::staticMetaObject);
}

bool ClassIsSubComponent(TOrbObjectClass cls) {
  const char* value = ClassInfoValue(cls, "SubComponent");
  return !value || qstrcmp(value, "false") != 0;
}

QUuid ClassGUIDOf(TOrbObjectClass cls) {
  const char* value = ClassInfoValue(cls, "ClassGUID");
  return value ? StringToGUID(QString::fromLatin1(value)) : NoGUID;
}

QString ClassNameOf(TOrbObjectClass cls) {
  const QString qualified = QString::fromLatin1(cls->className());
  return qualified.mid(qualified.lastIndexOf(u':') + 1);
}

TOrbObject* ConstructOrbObject(TOrbObjectClass cls, TOrbObject* owner) {
  if (InheritsOrbObject(cls)) {
    for (int i = 0; i < cls->constructorCount(); ++i) {
      const QMetaMethod constructor = cls->constructor(i);
      if (!TakesOwner(constructor)) continue;
      const QByteArray type = constructor.parameterTypes().constFirst();
      QObject* created = cls->newInstance(QGenericArgument(type.constData(), &owner));
      if (created) return static_cast<TOrbObject*>(created);
    }
  }
  throw ENorvaError(QStringLiteral("Cannot construct ") + (cls ? ClassNameOf(cls) : QString()));
}

}  // namespace norva
