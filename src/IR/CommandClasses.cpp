#include <IR/CommandClasses.h>

#include <IR/CommandObject.h>
#include <IR/IPCommand.h>
#include <IR/IRStream.h>
#include <IR/NorvaIRStream.h>
#include <IR/RS232Command.h>
#include <OrbGlobal/Model/OrbClassRegistry.h>

#include <QHash>
#include <QMetaClassInfo>

namespace norva {

namespace {

bool IsCommandClass(TOrbObjectClass cls) {
  return cls && cls->inherits(&TCommandObject::staticMetaObject);
}

// Element names of the registered command classes, rebuilt when the registry grows.
struct TElementIndex {
  qsizetype RegistrySize = -1;
  QHash<QString, TOrbObjectClass> Classes;
};

}  // namespace

void RegisterCommandClasses() {
  static const bool registered = [] {
    // The plain stream before the native one: streams read from files are plain streams.
    RegisterOrbObjectClasses({&TIRStream::staticMetaObject, &TNorvaIRStream::staticMetaObject,
                              &TRS232Command::staticMetaObject, &TIPCommand::staticMetaObject});
    return true;
  }();
  (void)registered;
}

const char* CommandElementName(TOrbObjectClass cls) {
  if (!IsCommandClass(cls)) return "";
  const int index = cls->indexOfClassInfo("XmlElement");
  return index < 0 ? "" : cls->classInfo(index).value();
}

TOrbObjectClass CommandClassOfElement(QStringView name) {
  RegisterCommandClasses();
  static TElementIndex index;
  const QList<TOrbObjectClass>* registered = GetRegisteredOrbClasses();
  if (!registered) return nullptr;
  if (index.RegistrySize != registered->size()) {
    index.Classes.clear();
    for (const TOrbObjectClass cls : *registered) {
      const QString element = QString::fromLatin1(CommandElementName(cls));
      if (!element.isEmpty() && !index.Classes.contains(element))
        index.Classes.insert(element, cls);
    }
    index.RegistrySize = registered->size();
  }
  return index.Classes.value(name.toString());
}

}  // namespace norva
