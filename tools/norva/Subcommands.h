#pragma once
// The subcommands of the norva tool. Each returns the process exit code and throws EUsage on bad
// input.

#include "CommandLine.h"

#include <QTextStream>

namespace norva::cli {

int RunPacketEncode(TArguments& arguments, QTextStream& out);
int RunPacketDecode(TArguments& arguments, QTextStream& out);
int RunZoneEncode(TArguments& arguments, QTextStream& out);
int RunZoneDecode(TArguments& arguments, QTextStream& out);
int RunError(TArguments& arguments, QTextStream& out);
int RunPorts(TArguments& arguments, QTextStream& out);
int RunUsb(TArguments& arguments, QTextStream& out);
int RunMonitor(TArguments& arguments, QTextStream& out);
int RunSend(TArguments& arguments, QTextStream& out);
int RunKeypress(TArguments& arguments, QTextStream& out);
int RunButtonFind(TArguments& arguments, QTextStream& out);
int RunButtonList(TArguments& arguments, QTextStream& out);
int RunButtonOrdinal(TArguments& arguments, QTextStream& out);
int RunIRHex(TArguments& arguments, QTextStream& out);
int RunIRNative(TArguments& arguments, QTextStream& out);
int RunIRRaw(TArguments& arguments, QTextStream& out);
int RunIRDecode(TArguments& arguments, QTextStream& out);
int RunIREncode(TArguments& arguments, QTextStream& out);
int RunIRDatabase(TArguments& arguments, QTextStream& out);

}  // namespace norva::cli
