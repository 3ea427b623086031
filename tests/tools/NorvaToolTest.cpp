// The norva tool as an installer runs it: real process, real files, exit codes and messages.
#include "NorvaRun.h"

#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QThread>

#include <gtest/gtest.h>

namespace {

// The packet part of each receive-trace line (the tick count in front varies).
QStringList TracedPackets(const QString& out) {
  QStringList packets;
  for (const QString& line : out.split(u'\n', Qt::SkipEmptyParts))
    packets << line.section(QStringLiteral(" Receive: "), 1);
  return packets;
}

// Commands that print their answer: the exact output and exit code of each.
TEST(NorvaTool, AnswersWithItsExactOutputAndExitCode) {
  const struct {
    QStringList Call;
    int ExitCode;
    QString Out;
  } cases[] = {
      {{"packet", "encode", "0x0B", "5", "0x23"}, 0, "0B0523\n"},
      {{"packet", "encode", "11", "40", "-1", "--preamp"}, 0, "0B88FF\n"},
      {{"zone", "encode", "70", "--page-preset"}, 0, "0xE6\n"},
      {{"zone", "decode", "0x45"}, 0, "zone 5, preamp output\n"},
      {{"zone", "decode", "255"}, 0, "no zone\n"},
      {{"error", "errEEPROMFull", "3", "7"}, 0, "Memory full. (3, 7)\n"},
      {{"error", "8"}, 0, "Error 0x08\n"},
      {{"button", "find", "Power", "OK", "--", "-ch"},
       0,
       "Power\tSystemClassGroup\tButtonClass_Standby\tStandby\n"
       "OK\tCursorClassGroup\tButtonClass_Enter2\tEnter\n"
       "-ch\tNumericClassGroup\tButtonClass_PrevChannel\tChannel-\n"},
      {{"button", "find", "Vol+", "Input HDMI"},
       1,
       "Vol+\tSystemClassGroup\tButtonClass_VolumeUp\tVol Up\nInput HDMI\tno class fits\n"},
      {{"button", "ordinal", "wk3", "1503"},
       0,
       "CBusLightingClassGroup\tButtonClass_CBus_LoadUp\tLoad +\n"},
      {{"button", "ordinal", "zr900", "108"}, 0, "none\n"},
      {{"button", "ordinal", "IntegraTunerClassGroup", "ButtonClass_IntegraTuner_Preset1"},
       0,
       "wk3 208\n"},
      {{"button", "ordinal", "22", "16"}, 0, "zr900 215\n"},
      {{"button", "ordinal", "TransportClassGroup", "1"},
       0,
       "none: no keypad holds a generic class\n"},
  };
  for (const auto& c : cases) {
    const TRun run = Norva(c.Call);
    EXPECT_EQ(run.ExitCode, c.ExitCode) << c.Call.join(' ').toStdString();
    EXPECT_EQ(run.Out, c.Out) << c.Call.join(' ').toStdString();
  }
  const QStringList groups = Norva({"button", "list"}).Out.split(u'\n', Qt::SkipEmptyParts);
  ASSERT_EQ(groups.size(), 31);
  EXPECT_EQ(groups[6], "6\tIntegraTunerClassGroup\tIntegra Tuner\twk3 200..228");
  const QStringList tuner = Norva({"button", "list", "6"}).Out.split(u'\n', Qt::SkipEmptyParts);
  ASSERT_EQ(tuner.size(), 29);
  EXPECT_EQ(tuner.last(), "228\t29\tButtonClass_IntegraTuner_Enter\tEnter");
}

TEST(NorvaTool, ReadsBuildsAndShowsInfraRedCodes) {
  const TRun native = Norva({"ir", "native", "3", "nvSrc1Cmd", "--type", "PreampCommand"});
  EXPECT_EQ(native.ExitCode, 0);
  EXPECT_TRUE(
      native.Out.startsWith("name: Source 1\ncategory: Norva, zone 3 (preamp)\n"
                            "useful: yes\nframe: 03 43 05\nhex: 0000 005E 0000 0025 "))
      << native.Out.toStdString();
  const TRun relay = Norva({"ir", "native", "--sw6", "2", "B"});
  EXPECT_TRUE(relay.Out.startsWith("name: Relay 2 off\ncategory: Norva Sw6, zone 2\n"))
      << relay.Out.toStdString();

  // The hex code that native code printed reads back; a bad code fails.
  const QString hex = native.Out.section("hex: ", 1).trimmed();
  const TRun read = Norva({"ir", "hex", "-"}, ("Source 1\t" + hex +
                                               "\n0000 006D 0000\n"
                                               "0000 006D 0001 0001 0010 0020 0010\n")
                                                  .toUtf8());
  EXPECT_EQ(read.ExitCode, 1);
  EXPECT_TRUE(read.Out.contains("name: Source 1\ncode: " + hex +
                                "\nstatus: OK\n"
                                "format: RepeatWord1\ncarrier: 44118 Hz"))
      << read.Out.toStdString();
  // Word gaps are kept in coarse units: only the last word may come back a little shorter.
  EXPECT_TRUE(read.Out.contains("hex: " + hex.chopped(4))) << read.Out.toStdString();
  EXPECT_TRUE(read.Out.contains("ignored: fewer than five words")) << read.Out.toStdString();
  EXPECT_TRUE(read.Out.contains("error: Invalid Total number of tokens detected."))
      << read.Out.toStdString();

  // A learnt signal as capture tools write it, signs and all.
  const TRun raw = Norva({"ir", "raw", "--frequency", "38000", "+9000", "-4500", "+560", "-560",
                          "+560", "-1690", "+560"});
  EXPECT_EQ(raw.ExitCode, 0);
  EXPECT_TRUE(raw.Out.contains(
      "periods: 0: 8999.9 us, 1: 4500.0 us, 2: 560.0 us, 3: 1690.0 us, 14: 99924.9 us"))
      << raw.Out.toStdString();
  // A long gap ends a first word; a gap as long inside a word is refused.
  EXPECT_EQ(Norva({"ir", "raw", "--frequency", "38000", "500", "30000", "500", "500", "500", "500",
                   "500"})
                .ExitCode,
            0);
  EXPECT_EQ(
      Norva({"ir", "raw", "--frequency", "38000", "500", "9000", "500", "30000", "500"}).ExitCode,
      1);
}

TEST(NorvaTool, DecodeCoalescesAsTheReceivePathDoes) {
  const TRun run =
      Norva({"packet", "decode"}, "050101\r\n050102\r\nzz05\r\n0B0523\r\n050201\r\n0B05");
  EXPECT_EQ(run.ExitCode, 0);
  EXPECT_EQ(TracedPackets(run.Out), (QStringList{"05,01,02", "0B,05,23", "05,02,01"}));
  EXPECT_TRUE(run.Err.contains("4 bytes at the end were incomplete")) << run.Err.toStdString();

  // One byte per arrival: every report is its own batch, so none is coalesced.
  const TRun bytewise = Norva({"packet", "decode", "--chunk", "1"}, "050101\r\n050102\r\n");
  EXPECT_EQ(TracedPackets(bytewise.Out), (QStringList{"05,01,01", "05,01,02"}));
}

TEST(NorvaTool, DecodesNotificationFramesFromAFile) {
  QTemporaryDir folder;
  WriteFile(folder.filePath("capture"), QByteArray("\x05hello\x00\x04\x03\x0B\x05\x23", 12));
  const TRun run = Norva({"packet", "decode", "--usb-notifications", folder.filePath("capture")});
  EXPECT_EQ(run.ExitCode, 0);
  EXPECT_TRUE(run.Out.contains("Notification: usb_log_event \"hello\"")) << run.Out.toStdString();
  EXPECT_TRUE(run.Out.contains("Receive: 0B,05,23")) << run.Out.toStdString();
}

// Bad input is one line on standard error and exit code 2. Whatever the user typed, the error stays
// one line: the value is quoted with its line breaks and control characters escaped.
TEST(NorvaTool, BadInputIsOneLineAndExitCodeTwo) {
  const struct {
    QStringList Call;
    QString Err = {};  // the exact line, where it matters
  } cases[] = {
      {{"packet", "encode", "256", "1"}},
      {{"packet", "encode", "1", "96"}},
      {{"packet", "encode", "1"}},
      {{"packet", "encode", "1", "2", "x"}},
      {{"zone", "decode", "0x100"}},
      {{"error", "errNoSuchThing"}},
      {{"error", "1", "2"}},
      {{"packet", "decode", "/no/such/capture"}},
      {{"packet", "decode", "--chunk", "0"}},
      {{"packet", "decode", "--chunk"}},
      {{"packet", "encode", "1", "2", "--x"}},
      {{"frobnicate"}},
      {{"button", "find"}},
      {{"button", "find", "-ch"}},
      {{"button", "list", "NoSuchClassGroup"}},
      {{"button", "list", "31"}},
      {{"button", "ordinal", "wk3", "65536"}},
      {{"button", "ordinal", "CursorClassGroup", "ButtonClass_Play"}},
      {{"button", "ordinal", "dummy_group_1", "1"}},
      {{"ir", "hex"}},
      {{"ir", "native", "96", "nvMuteCmd"}},
      {{"ir", "native", "3", "nvNoSuchCmd"}},
      {{"ir", "native", "3", "90"}},
      {{"ir", "native", "3", "nvMuteCmd", "--type", "Amp"}},
      {{"ir", "native", "--sw6", "3", "]"}},
      {{"ir", "raw", "500", "500"}},
      {{"ir", "raw", "--frequency", "38k", "500"}},
      {{"ir", "raw", "--frequency", "38000", "500", "0"}},
      {{"irdb", "/tmp/none.xml"}},
      {{"irdb", "/tmp/none.xml", "frob"}},
      {{"irdb", "/tmp/none.xml", "name", "0000 006D"}},
      {{"irdb", "/tmp/none.xml", "import", "/no/such.tsv", "--make", "A", "--model", "B"}},
      {{"irdb", "/tmp/none.xml", "--public", "import", "x.tsv", "--make", "A", "--model", "B"}},
      {{"irdb", "/tmp/none.xml", "import", "x.tsv", "--make", "A"}},
      {{"irdb", "/tmp/none.xml", "export", "--format", "csv"}},
      {{"irdb", "/tmp/none.xml", "list", "--format", "girr"}},
      {{"send", "--serial", "ttyUSB0", "--usb-serial", "1", "2"}},
      {{"monitor", "--usb", "--tcp", "x:1"}},
      {{"send", "--serial", "/dev/x", "--simulated", "1", "2"}},
      {{"packet", "encode", "1\n2", "3"},
       R"(norva: CMD must be a number from 0 to 255, not "1\n2")"},
      {{"zone", "decode", "\r\n0x10"},
       R"(norva: BYTE must be a number from 0 to 255, not "\r\n0x10")"},
      {{"error", "err\tQuote\"Back\\slash\x01"},
       R"(norva: CODE must be a number from 0 to 255, not "err\tQuote\"Back\\slash\x01")"},
      {{"packet", "encode", "1", "2", "--x\n"}, R"(norva: unknown option "--x\n")"},
      {{"frob\nnicate", "x"}, R"(norva: unknown command "frob\nnicate x" (see norva --help))"},
      {{"packet", "decode", "/no/such\ncapture"},
       R"(norva: cannot read "/no/such\ncapture": No such file or directory)"},
      {{"zone", "encode", QString::fromUtf8("5\u2028")},
       R"(norva: ZONE must be a number from -1 to 95, not "5\u2028")"},
  };
  for (const auto& [call, err] : cases) {
    SCOPED_TRACE(call.join(' ').toStdString());
    const TRun run = Norva(call);
    EXPECT_EQ(run.ExitCode, 2);
    EXPECT_TRUE(run.Out.isEmpty()) << run.Out.toStdString();
    EXPECT_EQ(run.Err.count(u'\n'), 1) << run.Err.toStdString();
    EXPECT_TRUE(run.Err.startsWith("norva: ")) << run.Err.toStdString();
    if (!err.isEmpty()) {
      EXPECT_EQ(run.Err.toStdString(), (err + u'\n').toStdString());
    }
  }
}

// One reading of numbers everywhere: what the option check lets through as a negative number, the
// number parser reads, and what it refuses is refused wherever it stands.
TEST(NorvaTool, NumbersAreReadTheSameWherever) {
  const struct {
    const char* Text;
    const char* DataByte;  // the byte encoded, or nullptr when refused
  } cases[] = {
      {"0x1F", "1F"},      {"0X1f", "1F"},     {"-0x1", "FF"},    {"-0x10", "F0"},
      {"-1", "FF"},        {"-010", "F6"},     {"010", "0A"},     {"-0", "00"},
      {"255", "FF"},       {"0x-1", nullptr},  {"0x+1", nullptr}, {"0x", nullptr},
      {"-0x", nullptr},    {"1x", nullptr},    {"+1", nullptr},   {" 1", nullptr},
      {"1 ", nullptr},     {"0x0x1", nullptr}, {"0x 1", nullptr}, {"--1", nullptr},
      {"-", nullptr},      {"", nullptr},      {"1e2", nullptr},  {"256", nullptr},
      {"-0x100", nullptr},
  };
  for (const auto& [text, byte] : cases) {
    const TRun run = Norva({"packet", "encode", "1", "2", text});
    if (byte) {
      EXPECT_EQ(run.ExitCode, 0) << text << ": " << run.Err.toStdString();
      EXPECT_EQ(run.Out, QStringLiteral("0102%1\n").arg(byte)) << text;
    } else {
      EXPECT_EQ(run.ExitCode, 2) << text << ": " << run.Out.toStdString();
      EXPECT_EQ(run.Err.count(u'\n'), 1) << text << ": " << run.Err.toStdString();
      EXPECT_TRUE(run.Err.endsWith(QStringLiteral("\"%1\"\n").arg(text))) << run.Err.toStdString();
    }
  }
}

// The usage lines of the README's norva section.
QStringList ReadmeUsageLines() {
  QStringList usage;
  for (const QString& line :
       QString::fromUtf8(FileBytes(QStringLiteral(NORVA_SOURCE_DIR "/README.md"))).split(u'\n'))
    if (line.startsWith("norva ")) usage << line;
  return usage;
}

// Bare norva is bad input with a one-line usage; --help shows every usage the README shows.
TEST(NorvaTool, BareNorvaGivesAShortUsageAndHelpTheReadmesFullOne) {
  const TRun bare = Norva({});
  EXPECT_EQ(bare.ExitCode, 2);
  EXPECT_TRUE(bare.Out.isEmpty()) << bare.Out.toStdString();
  EXPECT_EQ(bare.Err, "norva: usage: norva COMMAND [ARGUMENTS] (norva --help lists them)\n");

  const TRun help = Norva({"--help"});
  EXPECT_EQ(help.ExitCode, 0);
  EXPECT_TRUE(help.Err.isEmpty()) << help.Err.toStdString();
  for (const char* command : {"packet encode", "packet decode", "zone encode", "zone decode",
                              "error", "ports", "usb", "monitor", "send", "keypress"})
    EXPECT_TRUE(help.Out.contains(QStringLiteral("norva ") + command)) << command;
  const QStringList usage = ReadmeUsageLines();
  ASSERT_GE(usage.size(), 10);
  for (const QString& line : usage)
    EXPECT_TRUE(help.Out.contains(QStringLiteral("\n  ") + line)) << line.toStdString();
}

// The live commands against the simulator, as the main job runs them.
using NorvaToolLive = NorvaSimulatorTest;

// On serial the echo comes first; over TCP there is no echo, but the answers come.
TEST_F(NorvaToolLive, SendWaitsForTheEchoOnSerialAndPrintsTheAnswers) {
  const TRun run = Norva({"send", "--serial", pty, "0x20", "5", "1"});
  EXPECT_EQ(run.ExitCode, 0) << run.Err.toStdString();
  EXPECT_EQ(TracedPackets(run.Out.section(u'\n', 1)), (QStringList{"20,05,01 (echo)", "A0,05,01"}));

  const TRun keypress = Norva({"keypress", "--serial", pty, "--usb-serial", "5", "3", "1"});
  EXPECT_EQ(keypress.ExitCode, 0);
  EXPECT_TRUE(keypress.Out.contains("0B,05,23 (echo)")) << keypress.Out.toStdString();

  const TRun overTcp = Norva({"send", "--tcp", tcp, "0x03", "40"});
  EXPECT_EQ(overTcp.ExitCode, 0) << overTcp.Err.toStdString();
  const QStringList packets = TracedPackets(overTcp.Out.section(u'\n', 1));
  EXPECT_EQ(packets.size(), 4);  // the four status reports of zone 40
  EXPECT_TRUE(packets.value(0).startsWith("04,88"));
}

TEST_F(NorvaToolLive, MonitorPrintsWhatTheDeviceSends) {
  QProcess monitor;
  monitor.start(QStringLiteral(NORVA_BINARY_DIR "/tools/norva/norva"),
                {"monitor", "--tcp", tcp, "--count", "2", "--seconds", "20"});
  ASSERT_TRUE(monitor.waitForStarted());
  QThread::msleep(500);  // let it connect before the keys are pressed
  Tell("keypress 3 4\nkeypress 17 9 1\n");
  ASSERT_TRUE(monitor.waitForFinished(20000));
  EXPECT_EQ(monitor.exitCode(), 0);
  EXPECT_EQ(TracedPackets(QString::fromUtf8(monitor.readAllStandardOutput())),
            (QStringList{"0B,03,04", "0B,11,29"}));
}

TEST_F(NorvaToolLive, MissingEchoesAndDeadLinksAreReportedByExitCode) {
  Tell("silent on\n");
  const TRun silent = Norva({"send", "--serial", pty, "1", "2", "--timeout", "300"});
  EXPECT_EQ(silent.ExitCode, 3);
  EXPECT_TRUE(silent.Err.contains("no echo within 300 ms")) << silent.Err.toStdString();

  const TRun missing = Norva({"send", "--serial", "/dev/no-such-port", "1", "2"});
  EXPECT_EQ(missing.ExitCode, 1);
  EXPECT_EQ(missing.Err,
            "norva: Cannot open port /dev/no-such-port: Error: No such file or directory (2)\n");

  const TRun refused = Norva({"send", "--tcp", "127.0.0.1:1", "1", "2"});
  EXPECT_EQ(refused.ExitCode, 1);
  EXPECT_TRUE(refused.Err.contains("cannot connect to \"127.0.0.1:1\""))
      << refused.Err.toStdString();
}

// Whichever way the exchange failed, the tool does not claim to have sent the packet.
TEST_F(NorvaToolLive, ADeviceThatClosesAtOnceFailsTheSendAndIsWatchedCalmly) {
  Tell("busy on\n");
  const TRun send = Norva({"send", "--tcp", tcp, "0x21", "7", "9"});
  EXPECT_EQ(send.ExitCode, 1);
  EXPECT_FALSE(send.Out.contains("sent")) << send.Out.toStdString();
  // Whether the close came before the bytes left or after, the exchange failed.
  static const QRegularExpression closed(
      QStringLiteral("^norva: (The connection closed before 8 bytes were sent|the device closed "
                     "the connection; the packet may not have arrived)$"),
      QRegularExpression::MultilineOption);
  EXPECT_TRUE(send.Err.contains(closed)) << send.Err.toStdString();

  const TRun monitor = Norva({"monitor", "--tcp", tcp, "--seconds", "2"});
  EXPECT_EQ(monitor.ExitCode, 0);
  const qsizetype drops = monitor.Err.count("connection lost; waiting for the device");
  EXPECT_GE(drops, 1) << monitor.Err.toStdString();
  EXPECT_LE(drops, 12);  // backed off, not thousands a second
  EXPECT_GE(monitor.Err.count("connected again"), drops - 1);
}

// The USB path of the tool, against the simulated amplifier plugged into its own process.
TEST(NorvaToolUsb, ListsMonitorsAndSendsToTheSimulatedAmplifier) {
  const TRun list = Norva({"usb", "--simulated"});
  EXPECT_EQ(list.ExitCode, 0);
  EXPECT_EQ(list.Out, "sim-usb:1\tNorvaAmp\tUSB\\VID_1781&PID_07DA&REV_0100\n");

  const TRun monitor =
      Norva({"monitor", "--usb", "--simulated", "--count", "1", "--seconds", "20"});
  EXPECT_EQ(monitor.ExitCode, 0);
  EXPECT_TRUE(monitor.Out.contains("Notification: usb_log_event \"Amplifier started\""))
      << monitor.Out.toStdString();
  EXPECT_TRUE(monitor.Out.contains("Receive: 0B,05,03")) << monitor.Out.toStdString();

  const TRun send = Norva({"send", "--usb", "--simulated", "0x20", "5", "1"});
  EXPECT_EQ(send.ExitCode, 0) << send.Err.toStdString();
  EXPECT_TRUE(send.Out.contains("Receive: 20,05,01 (echo)")) << send.Out.toStdString();
  EXPECT_TRUE(send.Out.contains("Receive: A0,05,01")) << send.Out.toStdString();

  EXPECT_TRUE(send.Err.startsWith("opened sim-usb:1 (NorvaAmp)\n")) << send.Err.toStdString();

  // A named device that is not there is never replaced by the one that is.
  const TRun absent =
      Norva({"send", "--usb", "--usb-device", "sim-usb:2", "--simulated", "0x20", "5", "1"});
  EXPECT_EQ(absent.ExitCode, 1);
  EXPECT_TRUE(absent.Err.startsWith("norva: USB device sim-usb:2 is not connected"))
      << absent.Err.toStdString();
  EXPECT_EQ(absent.Out, "");

  const TRun none = Norva({"monitor", "--usb", "--usb-device", "usb:999:999", "--seconds", "1"});
  EXPECT_EQ(none.ExitCode, 1);
}

}  // namespace
