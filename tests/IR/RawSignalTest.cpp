// A learnt raw signal set on a stream: real captures of learning receivers (tests/IR/data) and the
// slips such a receiver makes become a faithful stream or one failure that leaves the stream as
// it was.

#include "FailureOf.h"
#include "IRCorpus.h"

#include <IR/IR.h>
#include <NorvaGlobal/Exceptions.h>
#include <OrbGlobal/Undo/Undo.h>
#include <OrbGlobal/Undo/UndoControl.h>
#include <support/QtPrinters.h>

#include <QFile>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <map>

using namespace norva;

namespace {

struct TCapture {
  double Frequency = 0;
  QList<double> Microseconds;
};

// The raw captures of tests/IR/data/raw-captures.ir by name.
std::map<QString, TCapture> ReadCaptures() {
  QFile file(QStringLiteral(NORVA_SOURCE_DIR "/tests/IR/data/raw-captures.ir"));
  std::map<QString, TCapture> captures;
  if (!file.open(QIODevice::ReadOnly)) return captures;
  QString name;
  for (const QByteArray& line : file.readAll().split('\n')) {
    const QString text = QString::fromUtf8(line);
    const QString value = text.section(u':', 1).trimmed();
    if (text.startsWith(u"name:")) name = value;
    if (text.startsWith(u"frequency:")) captures[name].Frequency = value.toDouble();
    if (text.startsWith(u"data:"))
      for (const QString& duration : value.split(u' ', Qt::SkipEmptyParts))
        captures[name].Microseconds << duration.toDouble();
  }
  return captures;
}

// Every pair up to the end keeps its durations: a pulse or gap within its period's tolerance, a
// word gap to its coarse unit, and the words end where the signal's gaps say.
void ExpectFaithful(const TIRStream& stream, QList<double> microseconds) {
  if (microseconds.size() % 2 != 0) microseconds << RawClosingGapMicroseconds;
  const int end = stream.GetEndPos(false);
  ASSERT_EQ(end + 1, microseconds.size() / 2);
  int firstWordEnd = -1;
  for (int i = 0; i < end && firstWordEnd < 0; ++i)
    if (microseconds[2 * i + 1] > 8000) firstWordEnd = i;
  for (int i = 0; i <= end; ++i) {
    SCOPED_TRACE(i);
    const TPeriodIDPair pair = stream.GetPeriodIDPair(i);
    const double on = microseconds[2 * i] * 3;
    const double off = microseconds[2 * i + 1] * 3;
    EXPECT_NEAR(stream.GetPeriodLength(pair.OnID), on, on / 8);
    EXPECT_EQ(pair.IsWordEnd(), i == end || i == firstWordEnd);
    if (pair.IsWordEnd()) {
      EXPECT_EQ(stream.GetPeriodLength(pair.OffID), std::floor(off / 256));
    } else {
      EXPECT_NEAR(stream.GetPeriodLength(pair.OffID), off, off / 8);
    }
  }
}

// A real capture by name; none when it is missing.
TCapture Capture(const char* name) {
  static const std::map<QString, TCapture> captures = ReadCaptures();
  const auto found = captures.find(QString::fromLatin1(name));
  return found == captures.end() ? TCapture{} : found->second;
}

// A stream of a document (so that undo records its changes) holding a code and a name.
class RawSignal : public ::testing::Test {
 protected:
  void SetUp() override {
    RegisterCommandClasses();
    const TUndoSuspended quiet(true);
    stream.SetHexCode(CorpusCode("Right"));
    stream.SetName("Right");
  }
  void TearDown() override { Undo().Empty(); }

  TOrbObject document;
  TIRStream stream{&document};
};

}  // namespace

TEST_F(RawSignal, BecomesAFaithfulStreamInOneUndoStep) {
  const struct {
    const char* Name;
    TCapture Signal;
    std::uint16_t ModulationPeriod;
    TIRStreamFormat Format;
    const char* Pairs;  // when short enough to read
  } cases[] = {
      {"a capture ending on a pulse", Capture("Toys__Unknown-brand__Solar_system/Power"), 316,
       RepeatWord1, "01,11,11,21,2E"},
      {"a one-word capture", Capture("Streaming_Devices__MAG__MAG_TV_Box/POWER"), 316, RepeatWord1,
       nullptr},
      {"a frame and its repeat",
       Capture("Audio_and_Video_Receivers__Pioneer__Pioneer_XXD3089/FL_Dimmer"), 300,
       RepeatBothWords, nullptr},
      {"an odd count",
       {38000, {9000, 4500, 560, 560, 560, 1690, 560}},
       316,
       RepeatWord1,
       "01,22,23,2E"},
      // The 9 ms gap inside ends a first word, as in hex codes.
      {"a gap that splits two words",
       {38000, {9000, 4500, 560, 9000, 560, 560, 560}},
       316,
       RepeatBothWords,
       "01,2E,22,2F"},
      {"no carrier",
       {0, {500, 500, 1000, 500, 500, 1000, 500, 30000}},
       0,
       RepeatWord1,
       "00,10,01,0E"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.Name);
    ASSERT_FALSE(c.Signal.Microseconds.isEmpty());
    Undo().Empty();
    stream.SetRawSignal(c.Signal.Frequency, c.Signal.Microseconds);
    MaintainUndo();
    EXPECT_EQ(stream.GetModulationPeriod(), c.ModulationPeriod);
    EXPECT_EQ(stream.GetFormat(), c.Format);
    EXPECT_EQ(stream.Status(), "OK");
    if (c.Pairs) {
      EXPECT_EQ(stream.GetPeriodIDPairsString(), c.Pairs);
    }
    ExpectFaithful(stream, c.Signal.Microseconds);
    EXPECT_EQ(Undo().NumSavePoints(), 1);
  }
}

TEST_F(RawSignal, ThatCannotBeAStreamFailsAndChangesNothing) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const double infinity = std::numeric_limits<double>::infinity();
  const struct {
    const char* Name;
    TCapture Signal;
    const char* Failure;  // what the message begins with
  } cases[] = {
      {"a pulse beyond the longest period",
       Capture("Toys__Uncle_Miltons__SolarSystemInMyRoom/BigButton"),
       "Infra-red period of 25594 us is too long (at most 21845 us)."},
      {"more pulses of one length than can be averaged",
       Capture("ACs__Daikin__Daikin_ARC480A41/AUTO"),
       "Too many pulses of one period length in infra-red stream."},
      {"held for many frames", Capture("Projectors__NEC__NEC_RU_M124/HDMI1"),
       "Infra-red stream is too long."},
      {"an empty capture", {38000, {}}, "Stream has zero length"},
      {"a zero duration",
       {38000, {500, 0, 500, 500}},
       "Infra-red durations must be positive, not 0."},
      {"a negative duration",
       {38000, {-500, 500}},
       "Infra-red durations must be positive, not -500."},
      {"a duration that is no number",
       {38000, {500, nan}},
       "Infra-red durations must be positive, not nan."},
      {"an infinite duration",
       {38000, {infinity, 500}},
       "Infra-red durations must be positive, not inf."},
      {"a second-long pulse",
       {38000, {1e6, 500}},
       "Infra-red period of 1000000 us is too long (at most 21845 us)."},
      {"a pulse beyond 32 bits", {38000, {1e300, 500}}, "Infra-red period of "},
      {"a ten-second closing gap",
       {38000, {500, 1e7}},
       "Infra-red word gap of 10000000 us is too long (at most 5592405 us)."},
      {"a long gap in the second word",
       {38000, {500, 9000, 500, 30000, 500, 500}},
       "Infra-red period of 30000 us is too long (at most 21845 us)."},
      {"fifteen pulse lengths",
       {38000, {100, 500, 200, 500,  300, 500,  400, 500,  500, 500,  600, 500,  700, 500,  800,
                500, 900, 500, 1000, 500, 1100, 500, 1200, 500, 1300, 500, 1400, 500, 1500, 500}},
       "Too many different period lengths in infra-red stream."},
      {"a carrier too slow",
       {100, {500, 500}},
       "Carrier frequency 100 Hz is out of range (184 Hz or more, below 24000000 Hz)."},
      {"a negative carrier", {-38000, {500, 500}}, "Carrier frequency -38000 Hz is out of range"},
      {"a carrier that is no number",
       {nan, {500, 500}},
       "Carrier frequency nan Hz is out of range"},
      // Too fast for a period of one tick: it must not pass for no carrier.
      {"a carrier too fast",
       {30e6, {500, 500}},
       "Carrier frequency 3e+07 Hz is out of range (184 Hz or more, below 24000000 Hz)."},
      {"an infinite carrier", {infinity, {500, 500}}, "Carrier frequency inf Hz is out of range"},
  };
  const TIRStreamData before = stream.Data();
  for (const auto& c : cases) {
    SCOPED_TRACE(c.Name);
    Undo().Empty();
    const QString failure =
        FailureOf([&] { stream.SetRawSignal(c.Signal.Frequency, c.Signal.Microseconds); });
    EXPECT_TRUE(failure.startsWith(QString::fromLatin1(c.Failure))) << failure.toStdString();
    MaintainUndo();
    EXPECT_EQ(stream.Data(), before);
    EXPECT_EQ(stream.GetName(), "Right");
    EXPECT_EQ(Undo().Count(), 0);
  }
}

// Words given apart keep apart: the format says which is sent once and which repeated, and the
// hex code counts each word's pairs where they belong.
TEST(WordsStream, KeepsTheOnceAndTheRepeatWordApart) {
  const QList<double> frame{9000, 4500, 560, 560, 560, 1690, 560, 40000};
  const QList<double> ditto{9000, 2250, 560};
  struct TCase {
    QList<double> Once, Repeat;
    TIRStreamFormat Format;
    QString Counts;
  } const cases[] = {
      {frame, ditto, RepeatWord2, QStringLiteral("0004 0002")},
      {frame, {}, NoRepeat, QStringLiteral("0004 0000")},
      {{}, frame, RepeatWord1, QStringLiteral("0000 0004")},
  };
  for (const TCase& c : cases) {
    const TIRStreamData stream = WordsStream(38000, c.Once, c.Repeat);
    EXPECT_EQ(stream.Format, c.Format);
    EXPECT_EQ(stream.Status(), QStringLiteral("OK"));
    EXPECT_EQ(HexCodeOf(stream).mid(10, 9), c.Counts);
  }
  EXPECT_THROW(WordsStream(38000, {}, {}), ENorvaError);
  EXPECT_THROW(WordsStream(38000, {9000, -1}, {}), ENorvaError);
}

namespace {

// A NEC-style frame of 32 bits (34 pairs) of `data`, `jitter` added to every pulse, closed by
// `gap` (none: it ends on its last pulse).
QList<double> NecFrame(std::uint32_t data, double gap, double jitter = 0) {
  QList<double> frame{9000 + jitter, 4500};
  for (int bit = 0; bit < 32; ++bit) frame << 560 + jitter << ((data >> bit) & 1 ? 1690 : 560);
  frame << 560 + jitter;
  if (gap > 0) frame << gap;
  return frame;
}

QList<double> Joined(std::initializer_list<QList<double>> parts) {
  QList<double> joined;
  for (const QList<double>& part : parts) joined << part;
  return joined;
}

}  // namespace

// What a receiver records while a key is held becomes what the remote sends: repeated frames
// count once, whatever their number, and the word that ends the stream keeps the capture's gap.
TEST(CaptureStream, KeepsWhatTheRemoteSends) {
  const QList<double> ditto{9000, 2250, 560, 96000};
  const QList<double> seville{1300, 400,  1300, 400, 430, 1280, 1300, 400,  430, 1280, 430, 1280,
                              430,  1280, 1300, 400, 430, 1280, 430,  1280, 430, 1280, 430, 7900};
  const struct {
    const char* Name;
    QList<double> Capture;
    TIRStreamFormat Format;
    const char* Counts;  // pairs sent once and repeated, as the hex code counts them
    double LastGap;      // the gap that ends the stream, in microseconds
  } cases[] = {
      {"one frame ending on a pulse", NecFrame(0xF708FB04, 0), RepeatWord1, "0000 0022",
       RawClosingGapMicroseconds},
      {"a frame held with jitter",
       Joined({NecFrame(0xF708FB04, 40000), NecFrame(0xF708FB04, 41000, 60),
               NecFrame(0xF708FB04, 0, -40)}),
       RepeatWord1, "0000 0022", 40000},
      {"six frames, past 160 pairs",
       Joined({NecFrame(1, 40000), NecFrame(1, 40000), NecFrame(1, 40000), NecFrame(1, 40000),
               NecFrame(1, 40000), NecFrame(1, 0)}),
       RepeatWord1, "0000 0022", 40000},
      {"a lead frame and ditto frames", Joined({NecFrame(7, 40000), ditto, ditto, ditto.mid(0, 3)}),
       RepeatWord2, "0022 0002", 96000},
      // The ditto keeps the pace of the frame before: 93.29 ms from start to start.
      {"a lead frame and one ditto", Joined({NecFrame(7, 40000), ditto.mid(0, 3)}), RepeatWord2,
       "0022 0002", 81480},
      {"a lead frame, frames repeating and a release frame",
       Joined({NecFrame(0, 19800), NecFrame(5, 116000), NecFrame(5, 116000, 50), NecFrame(0, 0)}),
       RepeatWord2, "0022 0022", 116000},
      {"two frames in turn",
       Joined({NecFrame(1, 26000), NecFrame(2, 26000), NecFrame(1, 26000), NecFrame(2, 0)}),
       RepeatBothWords, "0000 0044", 26000},
      {"short frames a short gap apart", Joined({seville, seville, seville, seville}), RepeatWord1,
       "0000 000C", 7900},
      {"long gaps that are the code's own",
       {16648, 5689, 5634, 5663, 5637, 5664, 11538, 5690, 11536},
       RepeatWord1,
       "0000 0005",
       RawClosingGapMicroseconds},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.Name);
    const TIRStreamData stream = CaptureStream(38000, c.Capture);
    EXPECT_EQ(stream.Format, c.Format);
    EXPECT_EQ(stream.Status(), QStringLiteral("OK"));
    EXPECT_EQ(HexCodeOf(stream).mid(10, 9), QString::fromLatin1(c.Counts));
    const TPeriodID lastGap = stream.Pairs[static_cast<std::size_t>(stream.GetEndPos(false))].OffID;
    EXPECT_NEAR(stream.Lengths[lastGap] * WordEndLengthUnit * 1e6, c.LastGap, 100);
  }
  const TCapture held = Capture("Projectors__NEC__NEC_RU_M124/HDMI1");
  EXPECT_EQ(CaptureStream(held.Frequency, held.Microseconds).Status(), "OK");
  EXPECT_THROW(CaptureStream(38000, {}), ENorvaError);
  EXPECT_THROW(CaptureStream(38000, {500, 40000, -1}), ENorvaError);
}
