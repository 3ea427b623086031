#pragma once
// Small helpers shared by the subcommands: argument parsing with one-line errors.

#include <NorvaBusComms/CommandPacket.h>

#include <QString>
#include <QStringList>

#include <optional>
#include <stdexcept>

namespace norva::cli {

// Bad input from the user: printed as one line on stderr, exit code 2.
class EUsage : public std::runtime_error {
 public:
  explicit EUsage(const QString& message) : std::runtime_error(message.toStdString()) {}
};

// Arguments of one subcommand: options are taken out as they are asked for; what remains are the
// positional arguments, in order. After "--" everything is positional, so values may start with a
// minus sign ("-/--" is a button name).
class TArguments {
 public:
  explicit TArguments(QStringList arguments) : mArguments(std::move(arguments)) {}

  // True (and removed) when the flag is present.
  bool TakeFlag(const QString& flag);
  // The value after `option` (removed with it), or nothing when absent.
  std::optional<QString> TakeOption(const QString& option);
  // The positional arguments; fails on anything left that looks like an option.
  QStringList Positional() const;

 private:
  // The index of "--", or the end: options are looked for before it only.
  qsizetype OptionsEnd() const;
  QStringList mArguments;
};

// Text on one line: backslashes, double quotes, line breaks and other control characters escaped
// (a newline shows as \n), for messages that carry user-supplied text.
QString Escaped(const QString& text);
// A user-supplied value as an error message shows it: escaped, in double quotes.
QString Quoted(const QString& value);

// A whole number as the command line writes it: an optional minus sign, then decimal digits or 0x
// and hexadecimal digits, and nothing else. Nothing when the text is not such a number; deciding
// whether "-0x10" is an option asks the same question.
std::optional<qlonglong> ParseNumber(const QString& text);

// A number as ParseNumber reads it, within [min, max]; `what` names it in the error.
int ParseInteger(const QString& text, int min, int max, const QString& what);

// The packet named by the remaining arguments: CMD ZONE [DATA...] [--preamp] [--page-preset]
// (ZONE 0-95, or -1 for none). Take every other option first.
TCommandPacket TakePacket(TArguments& arguments, const QString& command);

}  // namespace norva::cli
