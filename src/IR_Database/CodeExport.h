#pragma once
// Writing the database's codes as files other tools read: Pronto hex lines (the form of named codes
// the import reads back), a Girr document, or a Flipper IR signals file. A code a format cannot
// hold is reported, never silently left out.

#include <IR_Database/Model.h>

#include <QByteArray>
#include <QList>
#include <QStringList>
#include <QStringView>

#include <optional>

namespace norva {

enum class TCodeExportFormat {
  Pronto,   // NAME, TAB, Pronto hex code, a line each; make and model are not written
  Girr,     // one "remote" per model (manufacturer and model), each command as "ccf"
  Flipper,  // "type: raw" blocks: the frequency, duty cycle 0.33, durations in microseconds
};

struct TCodeExport {
  QByteArray Bytes;
  // "Acme - TV 1: Power: <reason>", one for each command that could not be written.
  QStringList Unwritten;
};

// The format named "pronto", "girr" or "flipper"; nothing for another name.
std::optional<TCodeExportFormat> CodeExportFormatNamed(QStringView name);

// The IR streams of `models`, in order. Not written: commands that are no IR stream, empty
// streams, streams without carrier (none of the formats holds them), streams without end. A
// Flipper signal is the part sent once followed by the part repeated, each once. Control
// characters in names are written as spaces, so that a name stays on its line.
TCodeExport ExportCodes(const QList<const TModel*>& models, TCodeExportFormat format);

}  // namespace norva
