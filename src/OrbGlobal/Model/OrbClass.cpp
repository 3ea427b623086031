#include <OrbGlobal/Model/OrbClass.h>

#include <NorvaGlobal/Exceptions.h>
#include <OrbGlobal/Model/OrbGuid.h>
#include <OrbGlobal/Model/OrbObject.h>

#include <QHash>
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

// The index of the class's constructor taking the owner, or -1; found once per class and thread.
int OwnerConstructorIndex(TOrbObjectClass cls) {
  if (!InheritsOrbObject(cls)) return -1;
  thread_local QHash<TOrbObjectClass, int> known;
  const auto found = known.constFind(cls);
  if (found != known.constEnd()) return *found;
  int index = -1;
  for (int i = 0; i < cls->constructorCount() && index < 0; ++i) {
    if (TakesOwner(cls->constructor(i))) index = i;
  }
  known.insert(cls, index);
  return index;
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
  return value ? StringToGUID(QLatin1StringView(value)) : NoGUID;
}

QString ClassNameOf(TOrbObjectClass cls) {
  const QString qualified = QString::fromLatin1(cls->className());
  return qualified.mid(qualified.lastIndexOf(u':') + 1);
}

TOrbObject* ConstructOrbObject(TOrbObjectClass cls, TOrbObject* owner) {
  const int constructor = OwnerConstructorIndex(cls);
  if (constructor < 0) {
    throw ENorvaError(QStringLiteral("Cannot construct ") + (cls ? ClassNameOf(cls) : QString()));
  }
  // Straight to the class's constructor: newInstance would build and look up its signature anew
  // for every object, which costs more than the object when a file holds thousands.
  QObject* created = nullptr;
  void* arguments[] = {&created, &owner};
  cls->static_metacall(QMetaObject::CreateInstance, constructor, arguments);
  return static_cast<TOrbObject*>(created);
}

}  // namespace norva
