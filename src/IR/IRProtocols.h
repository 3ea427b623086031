#pragma once
// Infra-red protocols: the codes most remotes send are described by a protocol and a few numbers
// ("NEC1 D=4 F=8"), not by timings. One table of protocol definitions and one interpreter turn
// parameters into a stream (encode) and a stream, learnt or typed, back into parameters (decode).
// Pure functions over stream values, like the hex and raw readers; the stream model's own
// comparison and naming are not changed by them.

#include <IR/IRStreamData.h>

#include <QList>
#include <QString>
#include <QStringList>
#include <QStringView>

#include <cstdint>
#include <optional>

namespace norva {

// Device, sub-device, function and toggle, as public protocol databases name them. A protocol
// without one of them leaves it empty.
struct TIRProtocolParameters {
  std::optional<std::int64_t> D;
  std::optional<std::int64_t> S;
  std::optional<std::int64_t> F;
  std::optional<std::int64_t> T;

  friend bool operator==(const TIRProtocolParameters&, const TIRProtocolParameters&) = default;
};

// What a stream says: a protocol and its parameters, or for a code no protocol explains, its
// generic description (coding, bit count, the bits as hex), equal for two captures of the same
// button.
struct TIRDecode {
  QString Protocol;  // the protocol's own spelling ("NEC1"); empty when none explains the stream
  TIRProtocolParameters Parameters;
  QString Generic;      // set when Protocol is empty
  QString Unexplained;  // what the stream holds beyond or lacks of the protocol; empty when nothing
  // A compound code (Pioneer's two-part commands: one code, a short gap, another code): the codes
  // sent after this one, in order; empty for a single code.
  QList<TIRDecode> Then;

  bool IsKnown() const { return !Protocol.isEmpty(); }
  friend bool operator==(const TIRDecode&, const TIRDecode&) = default;
};

// "NEC1 D=4 F=8", "RC5 D=0 F=12 T=1", a compound code's parts joined by " + " ("Pioneer D=170
// F=90 + Pioneer D=175 F=122"), or "unknown " followed by the generic description.
QString DecodeText(const TIRDecode& decode);

// The decodes of a stream, the most likely first: at least one for a stream with an end (an
// unknown one with its generic description when no protocol fits), none for an empty stream. A
// stream no single code explains, but whose frames are codes one after the other, decodes to one
// compound code.
QList<TIRDecode> DecodeIRStream(const TIRStreamData& stream);
// The same for a raw signal: carrier frequency (0: unmodulated) and alternating pulse and gap
// durations in microseconds, starting with a pulse.
QList<TIRDecode> DecodeIRSignal(double frequencyHz, const QList<double>& microseconds);

// The stream a protocol sends for these parameters: once and repeat words as the protocol sends
// them. The protocol name is compared without regard to case. Raises ENorvaError for an unknown
// protocol, a missing or out-of-range parameter, or a code that does not fit the stream's limits.
TIRStreamData EncodeIRStream(QStringView protocol, const TIRProtocolParameters& parameters);

// Every protocol's own spelling, in the order they are listed in the documentation.
QStringList IRProtocolNames();
// The protocol's own spelling for `name` compared without regard to case; empty when unknown.
QString FindIRProtocol(QStringView name);

}  // namespace norva
