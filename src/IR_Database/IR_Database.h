#pragma once
// The IR database: makes and models of device commands in one XML file, the built-in makes of the
// installation's own devices, naming and recognising received codes, importing code files of other
// tools and writing codes as their files.

#include <IR_Database/BuiltInMakes.h>
#include <IR_Database/CodeExport.h>
#include <IR_Database/CodeFileEntries.h>
#include <IR_Database/CodeFileFormats.h>
#include <IR_Database/CodeImport.h>
#include <IR_Database/IRDatabase.h>
#include <IR_Database/Make.h>
#include <IR_Database/Model.h>
#include <IR_Database/StreamNames.h>
#include <IR_Database/StreamRecognition.h>
