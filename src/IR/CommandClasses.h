#pragma once
// Command classes by the XML element a list saves them in. A command class names its element as
// class-level data, Q_CLASSINFO("XmlElement", "rs232_command"), and is registered in the model
// class registry; lists then save and read it without knowing it.

#include <OrbGlobal/Model/OrbClass.h>

#include <QString>

namespace norva {

// Registers the library's own command classes, once per process.
void RegisterCommandClasses();

// The element a command class is saved in (inherited from its base class), or "".
const char* CommandElementName(TOrbObjectClass cls);

// The first registered command class saved in elements named `name`, or none. The library's own
// classes are registered first when they are not yet.
TOrbObjectClass CommandClassOfElement(QStringView name);

}  // namespace norva
