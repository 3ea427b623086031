// norva: the installer's command-line tool for the bus.
#include "Subcommands.h"

#include <NorvaGlobal/UIServices.h>

#include <QCoreApplication>

#include <vector>

namespace norva::cli {
namespace {

struct TSubcommand {
  QStringList Words;  // e.g. {"packet", "encode"}
  QString Usage;
  QString Summary;
  int (*Run)(TArguments&, QTextStream&);
};

const std::vector<TSubcommand>& Subcommands() {
  static const std::vector<TSubcommand> table = {
      {{"packet", "encode"},
       "packet encode CMD ZONE [DATA...] [--preamp] [--page-preset]",
       "print the bus text of a packet (ZONE 0-95, -1 for none; numbers decimal or 0x hex)",
       &RunPacketEncode},
      {{"packet", "decode"},
       "packet decode [FILE|-] [--usb-notifications] [--chunk BYTES]",
       "read captured bus text (or USB notification frames) and print each packet as received",
       &RunPacketDecode},
      {{"zone", "encode"},
       "zone encode ZONE [--preamp] [--page-preset]",
       "print the zone byte sent on the bus",
       &RunZoneEncode},
      {{"zone", "decode"},
       "zone decode BYTE",
       "print the zone a zone byte stands for",
       &RunZoneDecode},
      {{"ports"}, "ports", "list the serial ports of this machine", &RunPorts},
      {{"usb"},
       "usb [--simulated]",
       "list the recognised USB devices (--simulated: the simulated amplifier of this process)",
       &RunUsb},
      {{"monitor"},
       "monitor LINK [--count N] [--seconds S]   (with --usb, a device path may follow)",
       "print every packet received (echoes marked); reconnects when the device returns",
       &RunMonitor},
      {{"send"},
       "send LINK CMD ZONE [DATA...] [--timeout MS] [--listen MS]",
       "send a packet, wait for its echo where the link echoes (exit 3 without one), print answers",
       &RunSend},
      {{"keypress"},
       "keypress LINK ZONE KEY [REPEATS]",
       "send a key press (KEY 0-31, REPEATS 0-7) as a keypad would",
       &RunKeypress},
      {{"button", "find"},
       "button find NAME...",
       "print the button class each command name gets (exit 1 when one gets none; -- before "
       "names that start with -)",
       &RunButtonFind},
      {{"button", "list"},
       "button list [GROUP]",
       "print the button-class groups, or one group's classes with their keypad ordinals",
       &RunButtonList},
      {{"button", "ordinal"},
       "button ordinal (wk3|zr900 N | GROUP VALUE)",
       "decode a keypad's button ordinal, or encode a class (GROUP and VALUE by name or number)",
       &RunButtonOrdinal},
      {{"ir", "hex"},
       "ir hex CODE|-",
       "read an infra-red hex code (or, with -, one per line, perhaps after a name and a TAB) and "
       "print the stream it gives (exit 1 when one fails)",
       &RunIRHex},
      {{"ir", "native"},
       "ir native ZONE COMMAND [--type TYPE] | ir native --sw6 MODULE LETTER",
       "build the native code of a command (nvVolUpCmd or 2; TYPE PreampCommand or 1; ZONE -1 "
       "for all zones), or of a relay-module command (LETTER A to \\)",
       &RunIRNative},
      {{"ir", "raw"},
       "ir raw --frequency HZ DURATIONS...",
       "build a stream from a learnt raw signal: pulse and gap durations in microseconds",
       &RunIRRaw},
      {{"ir", "decode"},
       "ir decode [--json] (CODE|- | --frequency HZ DURATIONS...)",
       "print the protocol and parameters of hex codes (with -, one per line, perhaps after a "
       "name and a TAB) or of a raw signal, or unknown with a generic description (exit 1 when "
       "one cannot be read or decoded)",
       &RunIRDecode},
      {{"ir", "encode"},
       "ir encode PROTOCOL D=n [S=n] F=n [T=n] [--hex]",
       "build the stream a protocol sends for these parameters (--hex: only its hex code; exit 1 "
       "for an unknown protocol or a value out of range)",
       &RunIREncode},
      {{"irdb"},
       "irdb FILE [--public] (list [MAKE [MODEL]] | name CODE | import TSV --make M --model N | "
       "export [MAKE [MODEL]] [--format pronto|girr|flipper])",
       "list an IR database (--public: with the built-in makes; a model's commands with their "
       "decodes), name a received hex code (the command holding exactly that code, else every "
       "command that is the same button; exit 1 when none), import lines of a name, a TAB and a "
       "hex code, skipping codes already there (exit 1 when one failed; the previous file is kept "
       "as FILE.bak), or export the IR streams of the database, a make or a model to standard "
       "output as lines of a name, a TAB and a hex code (pronto, the default), a Girr document or "
       "a Flipper IR signals file (exit 1 when a command could not be written, each said on "
       "standard error). Only import creates "
       "FILE; a FILE that does not load is never written (exit 1, with the reason)",
       &RunIRDatabase},
      {{"error"},
       "error CODE [FIRST SECOND]",
       "print the message of a device error code (number or name such as errEEPROMFull)",
       &RunError},
  };
  return table;
}

void PrintCommand(const TSubcommand& command, QTextStream& out) {
  out << "  norva " << command.Usage << "\n      " << command.Summary << '\n';
}

void PrintHelp(QTextStream& out) {
  out << "Usage: norva COMMAND [ARGUMENTS]\n\nCommands:\n";
  for (const TSubcommand& command : Subcommands()) PrintCommand(command, out);
  out << "\nLINK is --serial DEVICE [--usb-serial], --tcp HOST:PORT, or --usb [--usb-device PATH]\n"
         "[--simulated] (the simulated USB amplifier, in this process).\n";
  out << "\nNumbers are decimal or 0x hexadecimal, with an optional leading minus (-0x10).\n";
  out << "\nBad input, bare norva included, is reported on one line of standard error with exit\n"
         "code 2 (quoted values with their line breaks escaped); a link that cannot be opened,\n"
         "or that fails or drops while send or keypress uses it, with exit code 1; a missing\n"
         "echo with exit code 3. Live commands say on standard error which device they opened.\n";
}

const TSubcommand* FindSubcommand(const QStringList& arguments) {
  for (const TSubcommand& command : Subcommands())
    if (arguments.mid(0, command.Words.size()) == command.Words) return &command;
  return nullptr;
}

// The subcommands whose first word is `group` ("ir": ir hex, ir native, ir raw, ...).
std::vector<const TSubcommand*> GroupMembers(const QString& group) {
  std::vector<const TSubcommand*> members;
  for (const TSubcommand& command : Subcommands())
    if (command.Words.size() > 1 && command.Words.front() == group) members.push_back(&command);
  return members;
}

// A first word that begins several subcommands answers --help with all of them; followed by
// anything else it names none of them.
int RunGroup(const QStringList& arguments, QTextStream& out) {
  const std::vector<const TSubcommand*> members = GroupMembers(arguments.front());
  if (members.empty())
    throw EUsage(
        QStringLiteral("unknown command %1 (see norva --help)").arg(Quoted(arguments.join(u' '))));
  TArguments rest(arguments.mid(1));
  if (!rest.TakeFlag(QStringLiteral("--help")))
    throw EUsage(QStringLiteral("unknown command %1 (see norva %2 --help)")
                     .arg(Quoted(arguments.join(u' ')), arguments.front()));
  out << "Usage:\n";
  for (const TSubcommand* command : members) PrintCommand(*command, out);
  return 0;
}

int Run(const QStringList& arguments) {
  QTextStream out(stdout);
  // Bare norva is a slip, not a request for the help: a short usage line, as for bad input.
  if (arguments.isEmpty())
    throw EUsage(QStringLiteral("usage: norva COMMAND [ARGUMENTS] (norva --help lists them)"));
  if (arguments.front() == QStringLiteral("--help") ||
      arguments.front() == QStringLiteral("help")) {
    PrintHelp(out);
    return 0;
  }
  const TSubcommand* command = FindSubcommand(arguments);
  if (!command) return RunGroup(arguments, out);
  TArguments rest(arguments.mid(command->Words.size()));
  if (rest.TakeFlag(QStringLiteral("--help"))) {
    out << "Usage: norva " << command->Usage << "\n  " << command->Summary << '\n';
    return 0;
  }
  return command->Run(rest, out);
}

// A failure on one line of standard error (the library's messages may run over several).
int Report(const std::exception& error, int exitCode) {
  QTextStream(stderr) << "norva: " << MessageOnOneLine(QString::fromUtf8(error.what())) << Qt::endl;
  return exitCode;
}

}  // namespace
}  // namespace norva::cli

int main(int argc, char** argv) {
  QCoreApplication app(argc, argv);
  try {
    return norva::cli::Run(app.arguments().mid(1));
  } catch (const norva::cli::EUsage& error) {
    return norva::cli::Report(error, 2);
  } catch (const std::exception& error) {
    return norva::cli::Report(error, 1);
  }
}
