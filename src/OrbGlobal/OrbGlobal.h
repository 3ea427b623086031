#pragma once
// Object model: XML helpers (element building and lookup, document load and save, the file
// number and date format) and the stream string form.

#include <OrbGlobal/StreamStrings.h>
#include <OrbGlobal/XmlBuilding.h>
#include <OrbGlobal/XmlDocument.h>
#include <OrbGlobal/XmlErrors.h>
#include <OrbGlobal/XmlFormatSettings.h>
#include <OrbGlobal/XmlLookup.h>
#include <OrbGlobal/XmlNames.h>
