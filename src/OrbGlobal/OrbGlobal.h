#pragma once
// The document object model: model objects, lists, classes and their registry (Model/), undo and
// redo (Undo/), XML documents and element helpers (Xml/), the clipboard slot and the tree list
// (Clipboard/).

#include <OrbGlobal/Clipboard/OrbClipboard.h>
#include <OrbGlobal/Clipboard/TreeList.h>
#include <OrbGlobal/Model/AssignTarget.h>
#include <OrbGlobal/Model/ListItemObject.h>
#include <OrbGlobal/Model/OrbClass.h>
#include <OrbGlobal/Model/OrbClassRegistry.h>
#include <OrbGlobal/Model/OrbErrors.h>
#include <OrbGlobal/Model/OrbGuid.h>
#include <OrbGlobal/Model/OrbInterfaces.h>
#include <OrbGlobal/Model/OrbObject.h>
#include <OrbGlobal/Model/OrbObjectList.h>
#include <OrbGlobal/Model/OrbTypes.h>
#include <OrbGlobal/Model/StreamPersist.h>
#include <OrbGlobal/Model/StreamStrings.h>
#include <OrbGlobal/Undo/ChangeProtocolEntry.h>
#include <OrbGlobal/Undo/ListEntries.h>
#include <OrbGlobal/Undo/PropertyEntries.h>
#include <OrbGlobal/Undo/PropertyKinds.h>
#include <OrbGlobal/Undo/SubObjectSnapshot.h>
#include <OrbGlobal/Undo/Undo.h>
#include <OrbGlobal/Undo/UndoControl.h>
#include <OrbGlobal/Xml/XmlBuilding.h>
#include <OrbGlobal/Xml/XmlDocument.h>
#include <OrbGlobal/Xml/XmlErrors.h>
#include <OrbGlobal/Xml/XmlFormatSettings.h>
#include <OrbGlobal/Xml/XmlLookup.h>
#include <OrbGlobal/Xml/XmlNames.h>
