#pragma once
// What a reader of a code file gives: one entry per code it found, each with its place in the file,
// and one refusal per entry it could not read. Readers are pure functions from the file's bytes to
// these, so the import, its tests and its fuzz targets call the same code.

#include <IR/IRProtocols.h>
#include <IR/IRStreamData.h>

#include <QByteArray>
#include <QList>
#include <QString>

#include <variant>

namespace norva {

// A learnt capture: carrier frequency (0: unmodulated) and alternating pulse and gap durations in
// microseconds, starting with a pulse, possibly several frames of a held button.
struct TRawCapture {
  double FrequencyHz = 0;
  QList<double> Microseconds;
};

// A code given by protocol and parameters, built by the protocol engine when imported.
struct TProtocolCode {
  QString Protocol;
  TIRProtocolParameters Parameters;
};

struct TCodeFileEntry {
  QString Name;
  QString Make;   // empty when the file names none: the import's own make is used
  QString Model;  // likewise
  std::variant<TIRStreamData, TRawCapture, TProtocolCode> Code;
  QString Place;  // "line 12", "command 3 (Power)": where the file holds it
};

struct TCodeFileRefusal {
  QString Place;
  QString Reason;
};

struct TCodeFileEntries {
  QList<TCodeFileEntry> Entries;
  QList<TCodeFileRefusal> Refusals;
};

}  // namespace norva
