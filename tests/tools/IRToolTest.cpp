// norva ir hex tells the truth by its exit code: 0 only when every code read into a valid stream.
#include "NorvaRun.h"

#include <gtest/gtest.h>

namespace {

const QString Valid = QStringLiteral(
    "0000 0073 0000 000A 0020 0020 0020 0020 0040 0020 0020 0020 0020 0020 0020 0040 0040 0040 "
    "0040 0040 0020 0020 0040 0CC8");

}  // namespace

TEST(NorvaIRTool, HexExitsZeroOnlyForCodesThatReadIntoValidStreams) {
  const struct {
    const char* What;
    QString Input;
    int ExitCode;
    QString Says;
  } cases[] = {
      {"valid", Valid, 0, "status: OK\n"},
      {"too few words", "0000 006D 0000 0001", 1, "ignored: fewer than five words"},
      {"not valid", "0000 006D 0000 0001 0010 0020", 1, "status: Too short to have meaning\n"},
      {"one of several ignored", Valid + "\n0000 006D", 1, "ignored: fewer than five words"},
      {"one of several not valid", "0000 006D 0000 0001 0010 0020\n" + Valid, 1,
       "status: Too short to have meaning\n"},
      {"refused", "0000 006D 0000 0000 0010 0020", 1, "error: Stream has zero length"},
      {"unmodulated", "0100" + Valid.mid(4), 0, "carrier: none (unmodulated)\n"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.What);
    const TRun run = Norva({"ir", "hex", "-"}, c.Input.toUtf8());
    EXPECT_EQ(run.ExitCode, c.ExitCode) << run.Out.toStdString();
    EXPECT_TRUE(run.Out.contains(c.Says)) << run.Out.toStdString();
  }
  // A code given as arguments is judged alike.
  EXPECT_EQ(Norva({"ir", "hex", "0000", "006D", "0000"}).ExitCode, 1);
}

// norva ir raw - reads one signal a line, as ir hex - reads codes: a line that holds no signal
// says why and fails the command, the others are still shown.
TEST(NorvaIRTool, RawReadsOneSignalALine) {
  const struct {
    const char* What;
    QByteArray Input;
    int ExitCode;
    QString Says;
  } cases[] = {
      {"named", "Power\t38000 9000 4500 560 560 560 1690 560 40000\n", 0,
       "name: Power\nstatus: OK\nformat: RepeatWord1\ncarrier: 37975 Hz"},
      {"unnamed, signed", "36000 +889 -889 +1778 -889\n", 0, "carrier: 36036 Hz"},
      {"no durations", "38000 9000 4500\n38000\n", 1, "error: ir raw needs DURATIONS"},
      {"no frequency", "Mute\tfast 500 500\n", 1, "error: HZ must be a frequency in hertz"},
      {"refused", "38000 500 -9000 500 30000 500\n", 1, "error: Infra-red period of 30000 us"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.What);
    const TRun run = Norva({"ir", "raw", "-"}, c.Input);
    EXPECT_EQ(run.ExitCode, c.ExitCode) << run.Out.toStdString();
    EXPECT_TRUE(run.Out.contains(c.Says)) << run.Out.toStdString();
  }
}
