#pragma once
// Device commands: infra-red streams (learnt, typed as hex codes, built from raw signals, or the
// native codes of the installation's own devices), serial and network commands, command lists
// and macros.

#include <IR/CommandCategory.h>
#include <IR/CommandClasses.h>
#include <IR/CommandObject.h>
#include <IR/CommandObjectList.h>
#include <IR/DataCommand.h>
#include <IR/IPCommand.h>
#include <IR/IRHexCode.h>
#include <IR/IRMacro.h>
#include <IR/IRPeriods.h>
#include <IR/IRProtocols.h>
#include <IR/IRRawSignal.h>
#include <IR/IRStream.h>
#include <IR/IRStreamData.h>
#include <IR/IRTypes.h>
#include <IR/NorvaCodes.h>
#include <IR/NorvaIRStream.h>
#include <IR/RS232Command.h>
