// The protocol engine: codes encoded from protocol and parameters decode back to them, typed and
// learnt codes (jitter, carrier off, merged bi-phase halves, frames sent several times) decode to
// the protocol that sent them, and nothing is claimed whose timing does not fit.

#include "FailureOf.h"

#include <IR/IR.h>
#include <support/QtPrinters.h>

#include <gtest/gtest.h>

using namespace norva;

namespace {

struct TCode {
  const char* Protocol;
  TIRProtocolParameters Parameters;
};

std::ostream& operator<<(std::ostream& out, const TCode& code) {
  return out << code.Protocol << " D=" << code.Parameters.D.value_or(-1)
             << " S=" << code.Parameters.S.value_or(-1) << " F=" << code.Parameters.F.value_or(-1)
             << " T=" << code.Parameters.T.value_or(-1);
}

// The durations of a stream as a learning receiver would see them while the key is held: the
// once word, then the repeated word `repeats` times.
QList<double> Held(const TIRStreamData& stream, int repeats) {
  QList<double> once;
  QList<double> repeat;
  const int end = stream.GetEndPos(false);
  const int onceEnd =
      stream.Format == RepeatWord2 || stream.Format == NoRepeat ? stream.GetEndPos(true) : -1;
  for (int i = 0; i <= end; ++i) {
    const TPeriodIDPair pair = stream.Pairs[static_cast<std::size_t>(i)];
    const double off = stream.Lengths[pair.OffID] * (pair.IsWordEnd() ? 256.0 : 1.0) / 3;
    (i <= onceEnd ? once : repeat) << stream.Lengths[pair.OnID] / 3.0 << off;
  }
  for (int r = 0; r < repeats; ++r) once << repeat;
  return once;
}

// Flashes longer and gaps shorter by `share`, as a demodulating receiver records them.
QList<double> Jittered(QList<double> durations, double share) {
  for (qsizetype i = 0; i < durations.size(); ++i)
    durations[i] *= i % 2 == 0 ? 1 + share : 1 - share;
  return durations;
}

double Frequency(const TIRStreamData& stream) {
  return ModulationClockHz / stream.ModulationPeriod;
}

QString FirstDecode(const QList<TIRDecode>& decodes) {
  if (decodes.isEmpty()) return QStringLiteral("(none)");
  const TIRDecode& first = decodes.front();
  return first.Unexplained.isEmpty()
             ? DecodeText(first)
             : DecodeText(first) + QStringLiteral(" (") + first.Unexplained + u')';
}

class ProtocolRoundTrip : public testing::TestWithParam<TCode> {};

// Encoded, then decoded as a stream and as a learnt capture with 10% jitter and the carrier 4% off.
TEST_P(ProtocolRoundTrip, DecodesToWhatWasEncoded) {
  const TCode& code = GetParam();
  const TIRStreamData stream = EncodeIRStream(QString::fromLatin1(code.Protocol), code.Parameters);
  ASSERT_EQ(stream.Status(), QStringLiteral("OK"));
  TIRDecode expected;
  expected.Protocol = QLatin1String(code.Protocol);
  expected.Parameters = code.Parameters;
  const QString text = DecodeText(expected);
  EXPECT_EQ(FirstDecode(DecodeIRStream(stream)), text);
  const QList<double> learnt = Jittered(Held(stream, 2), 0.1);
  EXPECT_EQ(FirstDecode(DecodeIRSignal(Frequency(stream) * 0.96, learnt)), text);
}

TIRProtocolParameters P(std::optional<std::int64_t> d, std::optional<std::int64_t> s,
                        std::optional<std::int64_t> f, std::optional<std::int64_t> t) {
  return {d, s, f, t};
}
constexpr std::nullopt_t None = std::nullopt;

INSTANTIATE_TEST_SUITE_P(
    IRProtocols, ProtocolRoundTrip,
    testing::Values(TCode{"NEC1", P(4, None, 8, None)}, TCode{"NEC1", P(55, 202, 1, None)},
                    TCode{"NEC1", P(0, 0, 255, None)}, TCode{"NEC2", P(128, None, 77, None)},
                    TCode{"NECx1", P(7, None, 3, None)}, TCode{"NECx1", P(7, 8, 200, None)},
                    TCode{"NECx2", P(64, 1, 0, None)}, TCode{"NEC1-f16", P(3, None, 0x1234, None)},
                    TCode{"Samsung36", P(4, 11, 200, None)}, TCode{"RC5", P(0, None, 12, 1)},
                    TCode{"RC5", P(31, None, 127, 0)}, TCode{"RC5", P(5, None, 63, 1)},
                    TCode{"RC5x", P(1, 70, 33, 0)}, TCode{"RC6", P(0, None, 12, 0)},
                    TCode{"RC6", P(70, None, 154, 1)}, TCode{"RC6-6-20", P(128, 9, 77, 1)},
                    TCode{"MCE", P(15, 12, 13, 1)}, TCode{"Sony12", P(1, None, 21, None)},
                    TCode{"Sony15", P(164, None, 50, None)}, TCode{"Sony20", P(26, 73, 99, None)},
                    TCode{"Panasonic", P(176, 0, 18, None)}, TCode{"Panasonic", P(2, 255, 1, None)},
                    TCode{"Denon-K", P(4, 1, 2046, None)}));

TEST(IRProtocols, EncodingRefusesWhatItCannotSend) {
  struct TCase {
    const char* Protocol;
    TIRProtocolParameters Parameters;
    const char* Message;
  } cases[] = {
      {"NEC3", P(1, None, 1, None), "Unknown infra-red protocol: NEC3"},
      {"NEC1", P(4, None, 300, None), "F=300 is out of range for NEC1 (0..255)."},
      {"NEC1", P(-1, None, 3, None), "D=-1 is out of range for NEC1 (0..255)."},
      {"NEC1", P(4, None, None, None), "NEC1 needs the parameter F."},
      {"Sony12", P(1, None, 2, 1), "Sony12 has no parameter T."},
  };
  for (const TCase& c : cases) {
    EXPECT_EQ(FailureOf([&] { EncodeIRStream(QString::fromLatin1(c.Protocol), c.Parameters); }),
              QLatin1String(c.Message))
        << c.Protocol;
  }
}

TEST(IRProtocols, NamesAreComparedWithoutCase) {
  EXPECT_EQ(FindIRProtocol(u"nec1"), QStringLiteral("NEC1"));
  EXPECT_EQ(FindIRProtocol(u"rc6-6-20"), QStringLiteral("RC6-6-20"));
  EXPECT_EQ(FindIRProtocol(u"nec"), QString());
  EXPECT_TRUE(IRProtocolNames().contains(QStringLiteral("Sony20")));
  EXPECT_EQ(DecodeText(DecodeIRStream(EncodeIRStream(u"panasonic", P(1, 2, 3, None))).front()),
            QStringLiteral("Panasonic D=1 S=2 F=3"));
}

// Typed codes of an independent tool: the ditto of NEC1, RC6's double-length trailer bit with the
// toggle, RC5's merged halves.
TEST(IRProtocols, TypedCodesDecode) {
  struct TCase {
    const char* Hex;
    const char* Decode;
  } cases[] = {
      {"0000 006C 0022 0002 015B 00AD 0016 0041 0016 0041 0016 0041 0016 0016 0016 0041 0016 0041 "
       "0016 0016 0016 0016 0016 0016 0016 0041 0016 0016 0016 0041 0016 0016 0016 0016 0016 0041 "
       "0016 0041 0016 0041 0016 0016 0016 0016 0016 0016 0016 0016 0016 0016 0016 0016 0016 0016 "
       "0016 0016 0016 0041 0016 0041 0016 0041 0016 0041 0016 0041 0016 0041 0016 0041 0016 05CB "
       "015B 0057 0016 0E6C",
       "NEC1 D=55 S=202 F=1"},
      {"0000 0073 0000 0010 0060 0020 0010 0020 0010 0010 0010 0010 0030 0030 0020 0020 0010 0010 "
       "0010 0010 0020 0010 0010 0020 0020 0020 0010 0010 0020 0020 0010 0010 0020 0020 0010 0BCD",
       "RC6 D=70 F=146 T=1"},
      {"0000 0073 0000 000B 0020 0020 0020 0020 0040 0020 0020 0020 0020 0020 0020 0040 0040 0020 "
       "0020 0040 0020 0020 0040 0020 0020 0CC8",
       "RC5 D=1 F=12 T=1"},
  };
  for (const TCase& c : cases) {
    const std::optional<TIRStreamData> stream = ParseHexCode(QString::fromLatin1(c.Hex));
    ASSERT_TRUE(stream.has_value());
    EXPECT_EQ(FirstDecode(DecodeIRStream(*stream)), QLatin1String(c.Decode));
  }
}

// What a capture holds beyond or lacks of the code, and NEC1 against NEC2 by their repeats.
TEST(IRProtocols, FramesOfACaptureAreAccountedFor) {
  const TIRStreamData nec1 = EncodeIRStream(u"NEC1", P(4, None, 8, None));
  const QList<double> frameAndDittos = Held(nec1, 3);
  const QList<double> frame = frameAndDittos.mid(0, 68);
  const double f = Frequency(nec1);
  EXPECT_EQ(FirstDecode(DecodeIRSignal(f, frameAndDittos)), QStringLiteral("NEC1 D=4 F=8"));
  EXPECT_EQ(FirstDecode(DecodeIRSignal(f, frame)),
            QStringLiteral("NEC1 D=4 F=8 (no repeat frame)"));
  EXPECT_EQ(FirstDecode(DecodeIRSignal(f, frame + frame + frame)), QStringLiteral("NEC2 D=4 F=8"));
  EXPECT_EQ(FirstDecode(DecodeIRSignal(f, frameAndDittos + frame)),
            QStringLiteral("NEC1 D=4 F=8 (1 frame beyond the code)"));
  // A capture ending on its last flash, as learning receivers write them.
  EXPECT_EQ(FirstDecode(DecodeIRSignal(f, frameAndDittos.mid(0, frameAndDittos.size() - 1))),
            QStringLiteral("NEC1 D=4 F=8"));
  const TIRStreamData rc5 = EncodeIRStream(u"RC5", P(3, None, 9, 1));
  EXPECT_EQ(FirstDecode(DecodeIRSignal(Frequency(rc5), Held(rc5, 4))),
            QStringLiteral("RC5 D=3 F=9 T=1"));
}

// Pioneer's two-part commands: one code, a short silence, another code, as learning receivers
// capture them; the parts are named in turn, and only codes whose every frame a protocol explains.
TEST(IRProtocols, CompoundCodesDecodeToTheirParts) {
  const auto frame = [](int device, int function) {
    QList<double> durations = Held(EncodeIRStream(u"Pioneer", P(device, None, function, None)), 1);
    durations.back() = 20000;
    return durations;
  };
  const QList<double> prefix = frame(170, 90);
  const QList<double> command = frame(175, 122);
  const QList<double> garbage = {3000, 1000, 500, 500, 500, 1500, 500, 26000};
  const struct {
    const char* What;
    QList<double> Capture;
    const char* Decode;
  } cases[] = {
      {"two parts", prefix + command, "Pioneer D=170 F=90 + Pioneer D=175 F=122"},
      {"ending on its last flash", prefix + command.mid(0, command.size() - 1),
       "Pioneer D=170 F=90 + Pioneer D=175 F=122"},
      {"held", prefix + command + prefix + command,
       "Pioneer D=170 F=90 + Pioneer D=175 F=122 (1 frame beyond the code)"},
      {"one code, its frames close", prefix + prefix,
       "Pioneer D=170 F=90 (frames spaced unlike the protocol's)"},
      {"a part no protocol explains", prefix + garbage, "unknown"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.What);
    const QString decode = FirstDecode(DecodeIRSignal(40000, Jittered(c.Capture, 0.05)));
    EXPECT_EQ(c.Decode == std::string_view("unknown") ? decode.section(u' ', 0, 0) : decode,
              QLatin1String(c.Decode));
  }
}

// No protocol is claimed for a code whose lead-in, bits or check do not fit it; such codes get a
// description that two captures of the same button share.
TEST(IRProtocols, WrongTimingsAreNotClaimedAndGetAStableDescription) {
  const TIRStreamData nec1 = EncodeIRStream(u"NEC1", P(4, None, 8, None));
  const QList<double> frame = Held(nec1, 0);
  const double f = Frequency(nec1);
  QList<double> shortLeadIn = frame;
  shortLeadIn[0] = 6500;
  QList<double> slowBits = frame;
  for (qsizetype i = 2; i < 66; ++i) slowBits[i] *= 1.5;
  for (const QList<double>& code : {shortLeadIn, slowBits}) {
    const QList<TIRDecode> decodes = DecodeIRSignal(f, code);
    ASSERT_EQ(decodes.size(), 1);
    EXPECT_FALSE(decodes.front().IsKnown()) << DecodeText(decodes.front()).toStdString();
  }
  // A carrier no NEC remote uses.
  EXPECT_FALSE(DecodeIRSignal(56000, frame).front().IsKnown());
  // The second bit of F flipped: the complement no longer holds, F:16 has none to check.
  QList<double> badComplement = frame;
  badComplement[2 * 18 + 1] = 1692;
  EXPECT_EQ(FirstDecode(DecodeIRSignal(f, badComplement)),
            QStringLiteral("NEC1-f16 D=4 F=63242 (no repeat frame)"));

  // RC5 bits at 500 us, too fast for RC5: 1 1 0 00011 000101.
  QList<double> fastBiPhase = Held(EncodeIRStream(u"RC5", P(3, None, 5, 0)), 1);
  for (double& duration : fastBiPhase) duration *= 500.0 / 889;
  // Long and short flashes alike common: the first, long, is a bit, not a lead-in that opens
  // every frame, so the whole code is described.
  const QList<double> longFirstBit = {1200, 400, 400, 1200, 400, 1200, 1200, 400, 400, 30000};
  const std::pair<QList<double>, const char*> unknown[] = {
      {shortLeadIn, "pulse-distance 32 bits 0x20DF10EF"},
      {fastBiPhase, "bi-phase 14 bits 0x30C5"},
      {longFirstBit, "other 9 durations 10010:0110"},
  };
  for (const auto& [code, description] : unknown) {
    EXPECT_EQ(DecodeIRSignal(f, code).front().Generic, QLatin1String(description));
    EXPECT_EQ(DecodeIRSignal(f * 1.03, Jittered(code, 0.1)).front().Generic,
              QLatin1String(description));
    EXPECT_EQ(DecodeIRSignal(f, Jittered(code, -0.08)).front().Generic, QLatin1String(description));
  }
  EXPECT_TRUE(DecodeIRStream(TIRStreamData()).isEmpty());
}

}  // namespace
