#pragma once
// The IR database: makes and models of device commands in one XML file, the built-in makes of the
// installation's own devices, naming received codes, and importing code files of other tools.

#include <IR_Database/BuiltInMakes.h>
#include <IR_Database/CodeFileEntries.h>
#include <IR_Database/CodeFileFormats.h>
#include <IR_Database/CodeImport.h>
#include <IR_Database/IRDatabase.h>
#include <IR_Database/Make.h>
#include <IR_Database/Model.h>
#include <IR_Database/StreamNames.h>
