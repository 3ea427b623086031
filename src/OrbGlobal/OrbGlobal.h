#pragma once
// Object model: XML helpers (element building and lookup, document load and save, the file
// number and date format) and the stream string form.

#include <OrbGlobal/ChangeProtocolEntry.h>
#include <OrbGlobal/ListEntries.h>
#include <OrbGlobal/ListItemObject.h>
#include <OrbGlobal/OrbClass.h>
#include <OrbGlobal/OrbClassRegistry.h>
#include <OrbGlobal/OrbClipboard.h>
#include <OrbGlobal/OrbErrors.h>
#include <OrbGlobal/OrbGuid.h>
#include <OrbGlobal/OrbInterfaces.h>
#include <OrbGlobal/OrbObject.h>
#include <OrbGlobal/OrbObjectList.h>
#include <OrbGlobal/OrbTypes.h>
#include <OrbGlobal/PropertyEntries.h>
#include <OrbGlobal/PropertyKinds.h>
#include <OrbGlobal/StreamPersist.h>
#include <OrbGlobal/StreamStrings.h>
#include <OrbGlobal/SubObjectSnapshot.h>
#include <OrbGlobal/TreeList.h>
#include <OrbGlobal/Undo.h>
#include <OrbGlobal/UndoControl.h>
#include <OrbGlobal/XmlBuilding.h>
#include <OrbGlobal/XmlDocument.h>
#include <OrbGlobal/XmlErrors.h>
#include <OrbGlobal/XmlFormatSettings.h>
#include <OrbGlobal/XmlLookup.h>
#include <OrbGlobal/XmlNames.h>
