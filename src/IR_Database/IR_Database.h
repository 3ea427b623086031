#pragma once
// The IR database: makes and models of device commands in one XML file, the built-in makes of the
// installation's own devices, naming and recognising received codes, and writing codes as other
// tools' files.

#include <IR_Database/BuiltInMakes.h>
#include <IR_Database/CodeExport.h>
#include <IR_Database/IRDatabase.h>
#include <IR_Database/Make.h>
#include <IR_Database/Model.h>
#include <IR_Database/NamedCodes.h>
#include <IR_Database/StreamNames.h>
#include <IR_Database/StreamRecognition.h>
