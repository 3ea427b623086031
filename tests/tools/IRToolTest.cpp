// norva ir tells the truth by its exit code: 0 only when every code or signal read into a valid
// stream.
#include "NorvaRun.h"

#include <gtest/gtest.h>

namespace {

const QString Valid = QStringLiteral(
    "0000 0073 0000 000A 0020 0020 0020 0020 0040 0020 0020 0020 0020 0020 0020 0040 0040 0040 "
    "0040 0040 0020 0020 0040 0CC8");

}  // namespace

// ir hex - reads one code a line and ir raw - one signal a line: a line that holds none says why
// and fails the command, the others are still shown.
TEST(NorvaIRTool, HexAndRawExitZeroOnlyWhenEveryLineReadsIntoAValidStream) {
  const struct {
    const char* What;
    const char* Command;
    QString Input;
    int ExitCode;
    QString Says;
  } cases[] = {
      {"valid", "hex", Valid, 0, "status: OK\n"},
      {"too few words", "hex", "0000 006D 0000 0001", 1, "ignored: fewer than five words"},
      {"not valid", "hex", "0000 006D 0000 0001 0010 0020", 1,
       "status: Too short to have meaning\n"},
      {"one of several ignored", "hex", Valid + "\n0000 006D", 1, "ignored: fewer than five words"},
      {"one of several not valid", "hex", "0000 006D 0000 0001 0010 0020\n" + Valid, 1,
       "status: Too short to have meaning\n"},
      {"refused", "hex", "0000 006D 0000 0000 0010 0020", 1, "error: Stream has zero length"},
      {"unmodulated", "hex", "0100" + Valid.mid(4), 0, "carrier: none (unmodulated)\n"},
      {"raw, named", "raw", "Power\t38000 9000 4500 560 560 560 1690 560 40000\n", 0,
       "name: Power\nstatus: OK\nformat: RepeatWord1\ncarrier: 37975 Hz"},
      {"raw, unnamed, signed", "raw", "36000 +889 -889 +1778 -889 +889 -889 +889\n", 0,
       "carrier: 36036 Hz"},
      {"raw, not valid", "raw", "36000 +889 -889 +1778 -889\n", 1,
       "status: Too short to have meaning\n"},
      {"raw, no durations", "raw", "38000 9000 4500\n38000\n", 1, "error: ir raw needs DURATIONS"},
      {"raw, no frequency", "raw", "Mute\tfast 500 500\n", 1,
       "error: HZ must be a frequency in hertz"},
      {"raw, refused", "raw", "38000 500 -9000 500 30000 500\n", 1,
       "error: Infra-red period of 30000 us"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.What);
    const TRun run = Norva({"ir", c.Command, "-"}, c.Input.toUtf8());
    EXPECT_EQ(run.ExitCode, c.ExitCode) << run.Out.toStdString();
    EXPECT_TRUE(run.Out.contains(c.Says)) << run.Out.toStdString();
  }
  // A code given as arguments is judged alike.
  EXPECT_EQ(Norva({"ir", "hex", "0000", "006D", "0000"}).ExitCode, 1);
}

namespace {

// RC5 D=1 F=12 T=1, as a remote's file writes it.
const QString Rc5 = QStringLiteral(
    "0000 0073 0000 000B 0020 0020 0020 0020 0040 0020 0020 0020 0020 0020 0020 0040 0040 0020 "
    "0020 0040 0020 0020 0040 0020 0020 0CC8");
// Durations that follow no bit coding.
const QString Unexplained = QStringLiteral(
    "0000 006D 0000 0006 0050 0030 0010 0060 0030 0020 0070 0010 0010 0045 0025 0400");

}  // namespace

TEST(NorvaIRTool, DecodePrintsOneLinePerCodeInInputOrder) {
  const QStringList rc5Signal = {"--frequency", "36000", "889",  "-889", "889", "-889",
                                 "1778",        "-889",  "889",  "-889", "889", "-889",
                                 "889",         "-1778", "1778", "-889", "889", "-1778",
                                 "889",         "-889",  "1778", "-889", "889"};
  const struct {
    const char* What;
    QStringList Arguments;
    QString Input;
    int ExitCode;
    QString Out;
  } cases[] = {
      {"a code as arguments",
       QStringList{"ir", "decode"} + Rc5.split(' '),
       {},
       0,
       "RC5 D=1 F=12 T=1\n"},
      {"named lines, one unreadable",
       {"ir", "decode", "-"},
       "Power\t" + Rc5 + "\nbad\t0000 006D\n" + Rc5,
       1,
       "Power\tRC5 D=1 F=12 T=1\nbad\terror: fewer than five words\nRC5 D=1 F=12 T=1\n"},
      {"json",
       {"ir", "decode", "--json", "-"},
       "Power\t" + Rc5,
       0,
       "{\"D\":1,\"F\":12,\"T\":1,\"name\":\"Power\",\"protocol\":\"RC5\"}\n"},
      {"json, a line that cannot be read",
       {"ir", "decode", "--json", "-"},
       "x\t0000 006D 0000 0000 0010 0020",
       1,
       "{\"error\":\"Stream has zero length\",\"name\":\"x\"}\n"},
      {"a raw signal", QStringList{"ir", "decode"} + rc5Signal, {}, 0, "RC5 D=1 F=12 T=1\n"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.What);
    const TRun run = Norva(c.Arguments, c.Input.toUtf8());
    EXPECT_EQ(run.ExitCode, c.ExitCode) << run.Err.toStdString();
    EXPECT_EQ(run.Out, c.Out);
  }
  // A code no protocol explains is described, not refused.
  const TRun unknown = Norva({"ir", "decode", "--json", Unexplained});
  EXPECT_EQ(unknown.ExitCode, 0);
  EXPECT_TRUE(unknown.Out.startsWith("{\"generic\":\"") &&
              unknown.Out.endsWith("\",\"protocol\":null}\n"))
      << unknown.Out.toStdString();
}

TEST(NorvaIRTool, EncodeBuildsWhatDecodeReadsBack) {
  const TRun hex = Norva({"ir", "encode", "nec1", "D=4", "F=8", "--hex"});
  ASSERT_EQ(hex.ExitCode, 0) << hex.Err.toStdString();
  EXPECT_EQ(hex.Out.count('\n'), 1);
  const TRun decoded = Norva({"ir", "decode", "--json", hex.Out.trimmed()});
  EXPECT_TRUE(decoded.Out.contains("\"D\":4,") && decoded.Out.contains("\"F\":8,") &&
              decoded.Out.contains("\"protocol\":\"NEC1\""))
      << decoded.Out.toStdString();
  const TRun stream = Norva({"ir", "encode", "RC5", "D=1", "F=12", "T=1"});
  EXPECT_EQ(stream.ExitCode, 0);
  EXPECT_TRUE(stream.Out.contains("status: OK\n")) << stream.Out.toStdString();
  const struct {
    QStringList Arguments;
    int ExitCode;
    QString Says;
  } refused[] = {
      {{"NoSuch", "D=1", "F=1"}, 1, "NoSuch"},
      {{"NEC1", "D=4", "F=300"}, 1, "F=300"},
      {{"NEC1", "D=4", "X=8"}, 2, "\"X=8\""},
      {{"NEC1", "D=4", "D=5", "F=1"}, 2, "D is given twice"},
      {{"NEC1", "D=four", "F=1"}, 2, "\"D=four\""},
  };
  for (const auto& r : refused) {
    const TRun run = Norva(QStringList{"ir", "encode"} + r.Arguments);
    EXPECT_EQ(run.ExitCode, r.ExitCode) << r.Arguments.join(' ').toStdString();
    EXPECT_TRUE(run.Out.isEmpty());
    EXPECT_EQ(run.Err.count('\n'), 1);
    EXPECT_TRUE(run.Err.contains(r.Says)) << run.Err.toStdString();
  }
}
