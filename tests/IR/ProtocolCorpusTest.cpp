// The protocol engine against codes another tool rendered (tests/data/ir/girrlib-protocols.tsv):
// every labelled code of a known protocol decodes to its labels, encodes back to the same
// durations, and still decodes the same when a receiver's jitter moves every duration. Protocols
// without labelled codes go round encode and decode.

#include <IR/IR.h>
#include <IR/IRProtocols.h>
#include <NorvaGlobal/Exceptions.h>
#include <support/QtPrinters.h>

#include <QFile>
#include <QStringList>

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <optional>
#include <random>

using namespace norva;

namespace {

struct TLabelledCode {
  QString Name;
  QString Protocol;
  TIRProtocolParameters Parameters;  // those the file states
  QString Hex;
};

using TParameter = std::optional<std::int64_t>;

TIRProtocolParameters Parameters(TParameter d, TParameter s, TParameter f, TParameter t = {}) {
  return {d, s, f, t};
}

TParameter Parameter(const QString& field) {
  if (field.isEmpty()) return std::nullopt;
  return field.toLongLong();
}

QList<TLabelledCode> LabelledCodes() {
  QFile file(QStringLiteral(NORVA_SOURCE_DIR "/tests/data/ir/girrlib-protocols.tsv"));
  QList<TLabelledCode> codes;
  if (!file.open(QIODevice::ReadOnly)) return codes;
  for (const QByteArray& line : file.readAll().split('\n')) {
    const QStringList fields = QString::fromUtf8(line).split(u'\t');
    if (fields.size() != 7) continue;
    codes.append(
        {fields[0],
         fields[1],
         {Parameter(fields[2]), Parameter(fields[3]), Parameter(fields[4]), Parameter(fields[5])},
         fields[6]});
  }
  return codes;
}

// Whether every parameter the file states is decoded to its value.
bool DecodesTo(const TIRDecode& decode, const TLabelledCode& code) {
  const auto matches = [](const auto& stated, const auto& decoded) {
    return !stated || stated == decoded;
  };
  const TIRProtocolParameters& stated = code.Parameters;
  const TIRProtocolParameters& decoded = decode.Parameters;
  return decode.Protocol.compare(code.Protocol, Qt::CaseInsensitive) == 0 &&
         matches(stated.D, decoded.D) && matches(stated.S, decoded.S) &&
         matches(stated.F, decoded.F) && matches(stated.T, decoded.T);
}

bool FirstDecodeIs(const TIRStreamData& stream, const TLabelledCode& code) {
  const QList<TIRDecode> decodes = DecodeIRStream(stream);
  return !decodes.isEmpty() && DecodesTo(decodes.first(), code);
}

// The stated parameters, those the file leaves out taken from the decode (files leave out what
// their remote's header states once).
TIRProtocolParameters Completed(TIRProtocolParameters stated,
                                const TIRProtocolParameters& decoded) {
  stated.D = stated.D ? stated.D : decoded.D;
  stated.S = stated.S ? stated.S : decoded.S;
  stated.F = stated.F ? stated.F : decoded.F;
  stated.T = stated.T ? stated.T : decoded.T;
  return stated;
}

double Microseconds(const TIRStreamData& stream, TPeriodID id) {
  const double unit = id >= FirstWordEndID ? WordEndLengthUnit : PeriodLengthUnit;
  return stream.Lengths[id] * unit * 1e6;
}

bool Near(double value, double expected) { return std::abs(value - expected) <= expected / 16; }

// The pairs sent once and the pairs repeated, as a hex code counts them.
std::pair<int, int> Counts(const TIRStreamData& stream) {
  const int end = stream.GetEndPos(false);
  if (stream.Format == RepeatWord1 || stream.Format == RepeatBothWords) return {0, end + 1};
  const int onceEnd = stream.GetEndPos(true);
  return {onceEnd + 1, end - onceEnd};
}

// The hex code's counts, each pulse and gap and the carrier period within 1/16 of the file's.
bool SameCode(const TIRStreamData& encoded, const TLabelledCode& code) {
  const QStringList words = code.Hex.split(u' ');
  const TIRStreamData file = *ParseHexCode(code.Hex);
  if (Counts(encoded) != std::pair(words[2].toInt(nullptr, 16), words[3].toInt(nullptr, 16)) ||
      !Near(encoded.ModulationPeriod, file.ModulationPeriod))
    return false;
  for (int i = 0; i <= file.GetEndPos(false); ++i) {
    const TPeriodIDPair& a = encoded.Pairs[static_cast<std::size_t>(i)];
    const TPeriodIDPair& b = file.Pairs[static_cast<std::size_t>(i)];
    if (!Near(Microseconds(encoded, a.OnID), Microseconds(file, b.OnID)) ||
        !Near(Microseconds(encoded, a.OffID), Microseconds(file, b.OffID)))
      return false;
  }
  return true;
}

// The code with every pulse and gap moved by up to 5 % either way.
QString Jittered(const QString& hex, std::mt19937& random) {
  std::uniform_real_distribution<double> factor(0.95, 1.05);
  QStringList words = hex.split(u' ');
  for (qsizetype i = 4; i < words.size(); ++i) {
    const double moved = std::round(words[i].toInt(nullptr, 16) * factor(random));
    words[i] = QStringLiteral("%1").arg(std::max(1, static_cast<int>(moved)), 4, 16, QChar(u'0'));
  }
  return words.join(u' ').toUpper();
}

struct TTally {
  int Codes = 0;
  int Decoded = 0;
  int Encoded = 0;
  int Jittered = 0;

  friend bool operator==(const TTally&, const TTally&) = default;
};

}  // namespace

// What the labels cannot say, as measured: F32's fourth byte and IODATAn's x and y are parameters
// beyond D, S, F and T, so those codes do not encode back from their labels.
const std::map<QString, TTally> Shortfalls = {
    {QStringLiteral("f32"), {3, 3, 0, 3}},
    {QStringLiteral("iodatan"), {10, 10, 0, 10}},
};

TEST(ProtocolCorpus, LabelledCodesDecodeEncodeAndSurviveJitter) {
  const QList<TLabelledCode> codes = LabelledCodes();
  ASSERT_EQ(codes.size(), 320);
  std::mt19937 random(20261124);
  std::map<QString, TTally> tallies;
  for (const TLabelledCode& code : codes) {
    if (FindIRProtocol(code.Protocol).isEmpty()) continue;
    SCOPED_TRACE(code.Name.toStdString());
    TTally& tally = tallies[code.Protocol];
    ++tally.Codes;
    const QList<TIRDecode> decodes = DecodeIRStream(*ParseHexCode(code.Hex));
    const bool decoded = !decodes.isEmpty() && DecodesTo(decodes.first(), code);
    tally.Decoded += decoded;
    const TIRProtocolParameters parameters =
        decoded ? Completed(code.Parameters, decodes.first().Parameters) : code.Parameters;
    tally.Encoded += SameCode(EncodeIRStream(code.Protocol, parameters), code);
    tally.Jittered += FirstDecodeIs(*ParseHexCode(Jittered(code.Hex, random)), code);
  }
  QString report;
  for (const auto& [protocol, tally] : tallies)
    report += QStringLiteral("%1: %2 codes, %3 decoded, %4 encoded, %5 under jitter\n")
                  .arg(protocol)
                  .arg(tally.Codes)
                  .arg(tally.Decoded)
                  .arg(tally.Encoded)
                  .arg(tally.Jittered);
  EXPECT_EQ(tallies.size(), 12U) << report.toStdString();
  for (const auto& [protocol, tally] : tallies) {
    const auto shortfall = Shortfalls.find(protocol);
    const TTally expected = shortfall != Shortfalls.end()
                                ? shortfall->second
                                : TTally{tally.Codes, tally.Codes, tally.Codes, tally.Codes};
    EXPECT_EQ(tally, expected) << protocol.toStdString() << "\n" << report.toStdString();
  }
}

TEST(ProtocolCorpus, UnlabelledProtocolsGoRoundAndRefuseWhatTheyCannotSend) {
  const struct {
    QStringView Protocol;
    TIRProtocolParameters Sent;
    TIRProtocolParameters OutOfRange;
  } cases[] = {
      {u"Panasonic_Old", Parameters(3, {}, 17), Parameters(32, {}, 17)},
      {u"JVC", Parameters(3, {}, 23), Parameters(3, {}, 256)},
      {u"Denon", Parameters(2, {}, 201), Parameters(2, {}, -1)},
      {u"Sharp", Parameters(1, {}, 39), Parameters(32, {}, 39)},
      {u"Aiwa", Parameters(110, 21, 142), Parameters(110, 32, 142)},
      {u"Mitsubishi", Parameters(71, {}, 5), Parameters(256, {}, 5)},
      {u"Pioneer", Parameters(165, 37, 28), Parameters(165, 37, 300)},
      {u"Proton", Parameters(9, {}, 188), Parameters(9, {}, 256)},
      {u"RCA-38", Parameters(12, {}, 77), Parameters(16, {}, 77)},
      {u"RECS80", Parameters(5, {}, 38, 1), Parameters(8, {}, 38, 0)},
      {u"Dish_Network", Parameters(3, 17, 42), Parameters(3, 17, 64)},
      {u"DirecTV", Parameters(12, {}, 179), Parameters(16, {}, 179)},
      {u"G.I.Cable", Parameters(7, {}, 200), Parameters(7, {}, 256)},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.Protocol.toString().toStdString());
    const QList<TIRDecode> decodes = DecodeIRStream(EncodeIRStream(c.Protocol, c.Sent));
    ASSERT_FALSE(decodes.isEmpty());
    EXPECT_EQ(decodes.first().Protocol, c.Protocol);
    EXPECT_EQ(decodes.first().Parameters, c.Sent);
    EXPECT_THROW(EncodeIRStream(c.Protocol, c.OutOfRange), ENorvaError);
  }
}
