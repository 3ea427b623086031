// The arithmetic of infra-red streams: the period analysis, where a stream ends and whether it is
// valid, its text forms, hex codes and the native frames, on the cases where a slip shows.

#include "FailureOf.h"

#include <IR/IRHexCode.h>
#include <IR/NorvaCodes.h>
#include <NorvaGlobal/Exceptions.h>
#include <support/QtPrinters.h>

#include <gtest/gtest.h>

using namespace norva;

namespace {

// A one-word stream of `pairs` pairs of IDs 0/1 ending on ID 14.
TIRStreamData OneWordStream(int pairs) {
  TIRStreamData stream;
  stream.ModulationPeriod = 316;
  stream.Lengths[0] = 1000;
  stream.Lengths[1] = 2000;
  stream.Lengths[FirstWordEndID] = 500;
  for (int i = 0; i < pairs; ++i) stream.Pairs[static_cast<std::size_t>(i)] = {0, 1};
  stream.Pairs[static_cast<std::size_t>(pairs - 1)].OffID = FirstWordEndID;
  return stream;
}

}  // namespace

TEST(IRPeriods, ToleranceComesFromTheNewDurationAndLimitsAreFailures) {
  TIRPeriodsLoadHelper periods;
  EXPECT_EQ(periods.FindID(1000), 0);
  EXPECT_EQ(periods.FindID(1066), 0);
  EXPECT_EQ(periods.GetPeriodLength(0), 1033);
  for (const auto& [d, id] : {std::pair{1067u, 1}, {942u, 0}, {941u, 1}}) {
    periods.Clear();
    periods.FindID(1000);
    EXPECT_EQ(periods.FindID(d), id) << d;
  }

  TIRPeriodsLoadHelper lengths;
  for (std::uint32_t i = 0; i < 14; ++i) EXPECT_EQ(lengths.FindID(100 + 1000 * i), i);
  EXPECT_EQ(FailureOf([&] { lengths.FindID(60000); }),
            "Too many different period lengths in infra-red stream.");

  TIRPeriodsLoadHelper pairs;
  for (int i = 0; i < MaxPeriodIDPairs; ++i) pairs.AddOnOffPeriod(300, 600, false);
  EXPECT_EQ(FailureOf([&] { pairs.AddOnOffPeriod(300, 600, false); }),
            "Infra-red stream is too long.");

  // Durations that would wrap their 16-bit slots fail instead of being stored.
  TIRPeriodsLoadHelper wide;
  EXPECT_EQ(FailureOf([&] { wide.AddOnOffPeriod(65536, 100, false); }),
            "Infra-red period of 21845 us is too long (at most 21845 us).");
  EXPECT_EQ(FailureOf([&] { wide.AddOnOffPeriod(100, 65535u * 256 + 256, true); }),
            "Infra-red word gap of 5592405 us is too long (at most 5592405 us).");
  EXPECT_EQ(wide.GetPairCount(), 0);
  wide.AddOnOffPeriod(100, 65535u * 256 + 255, true);
  EXPECT_EQ(wide.GetPeriodLength(FirstWordEndID), 65535);
  // 255 samples of one length is all an 8-bit count holds.
  TIRPeriodsLoadHelper same;
  EXPECT_EQ(FailureOf([&] {
              for (int i = 0; i < 130; ++i) same.AddOnOffPeriod(500, 500, false);
            }),
            "Too many pulses of one period length in infra-red stream.");
}

TEST(IRPeriods, FirstWordEndingIsRepairedWhenItsGapWasTakenForAnOrdinaryOne) {
  TIRPeriodsLoadHelper periods;
  periods.AddOnOffPeriod(900, 900, false);
  periods.AddOnOffPeriod(900, 40000, false);  // the real first word gap
  periods.AddOnOffPeriod(900, 900, false);
  periods.AddOnOffPeriod(900, 256 * 200, true);
  periods.FixFirstWordEnding();
  EXPECT_EQ(periods.GetPeriodLength(FirstWordEndID), 40000 / 256);
  EXPECT_EQ(periods.GetPeriodLength(SecondWordEndID), 200);
  EXPECT_EQ(periods.GetPeriodLength(1), 0);
  EXPECT_EQ(periods.GetPairs()[1].OffID, FirstWordEndID);
  EXPECT_EQ(periods.GetPairs()[3].OffID, SecondWordEndID);
}

TEST(IRStreamData, StatusNamesTheFirstBrokenRule) {
  const auto with = [](std::function<void(TIRStreamData&)> change) {
    TIRStreamData stream = OneWordStream(4);
    change(stream);
    return stream.Status();
  };
  EXPECT_EQ(with([](TIRStreamData&) {}), "OK");
  EXPECT_EQ(TIRStreamData().Status(), "Undefined");
  EXPECT_EQ(with([](TIRStreamData& s) { s.Lengths[1] = 0; }), "Cycle 1: off time has zero length");
  EXPECT_EQ(with([](TIRStreamData& s) { s.Pairs[2].OnID = 14; }),
            "Cycle 3: ID 14 or 15 cannot be used for on time");
  EXPECT_EQ(with([](TIRStreamData& s) {
              s.Lengths[15] = 9;
              s.Pairs[1].OffID = 15;
            }),
            "Cycle 2: ID 14 must be used before 15");
  EXPECT_EQ(with([](TIRStreamData& s) { s.Pairs[5] = {0, 14}; }), "Cycle 6: ID 14 already used");
  EXPECT_EQ(with([](TIRStreamData& s) { s.Lengths[0] = 0; }), "Cycle 1: on time has zero length");
  EXPECT_EQ(with([](TIRStreamData& s) { s.Format = RepeatWord2; }),
            "One word found but format specifies two");
  EXPECT_EQ(with([](TIRStreamData& s) { s.Pairs[3].OffID = 1; }), "No word endings (ID 14 or 15)");
  EXPECT_EQ(OneWordStream(3).Status(), "Too short to have meaning");
  // Slots past the end are pairs of ID 0, so they count too.
  TIRStreamData stream = OneWordStream(4);
  stream.Pairs[0] = {1, 1};
  stream.Pairs[1] = {1, 1};
  stream.Pairs[2] = {1, 1};
  stream.Pairs[3] = {1, 14};
  stream.Lengths[0] = 0;
  EXPECT_EQ(stream.Status(), "Cycle 5: on time has zero length");
}

TEST(IRStreamData, EndAndTextFormsFollowTheirOddRules) {
  TIRStreamData stream = OneWordStream(4);
  stream.Lengths[5] = 777;  // no pair uses it
  EXPECT_EQ(stream.GetPeriodLengthsString(), "1000,2000,0,0,0,0,0,0,0,0,0,0,0,0,500,0");
  EXPECT_EQ(stream.GetPeriodIDPairsString(), "01,01,01,0E");
  stream.Pairs[0].OnID = SecondWordEndID;  // skips itself and the next two pairs
  EXPECT_EQ(stream.GetEndPos(false), 3);
  stream.Pairs[3].OnID = SecondWordEndID;
  EXPECT_EQ(stream.GetEndPos(false), -1);
  EXPECT_EQ(stream.GetPeriodIDPairsString(), "");

  TIRStreamData read;
  read.SetPeriodLengthsString(u"1,2,3");
  EXPECT_EQ(read.Lengths[3], 1);
  EXPECT_EQ(read.Lengths[15], 1);
  EXPECT_THROW(read.SetPeriodLengthsString(u"1,,3"), ENorvaError);
  EXPECT_THROW(read.SetPeriodLengthsString(u"1,70000"), ENorvaError);
  EXPECT_EQ(read.Lengths[1], 2);
  read.SetPeriodIDPairsString(u"1a,xE,F");
  EXPECT_EQ(read.Pairs[0], (TPeriodIDPair{1, 10}));
  EXPECT_EQ(read.Pairs[1], (TPeriodIDPair{0, 14}));
  EXPECT_EQ(read.Pairs[2], TPeriodIDPair{});
}

TEST(IRHexCode, ReadsCountsFormatsAndFailures) {
  const auto parsed = ParseHexCode(u" 0000 006D 0000 0001 0010 0020 ");
  ASSERT_TRUE(parsed);
  EXPECT_EQ(parsed->ModulationPeriod, 316);
  EXPECT_EQ(parsed->Format, RepeatWord1);
  EXPECT_EQ(parsed->GetEndPos(false), 0);
  EXPECT_FALSE(ParseHexCode(u"0000 006D 0000 0001"));
  // Preamble 0100: no carrier; the frequency word still gives the time base.
  const auto unmodulated = ParseHexCode(u"0100 006D 0000 0001 0010 0020");
  ASSERT_TRUE(unmodulated);
  EXPECT_EQ(unmodulated->ModulationPeriod, 0);
  EXPECT_EQ(unmodulated->Lengths, parsed->Lengths);
  EXPECT_EQ(unmodulated->Pairs, parsed->Pairs);

  const struct {
    const char16_t* Code;
    const char* Failure;
  } failures[] = {
      {u"0000  006D 0000 0001 0010 0020", "Invalid hex code string."},
      {u"0000\t006D 0000 0001 0010 0020", "Invalid hex code string."},
      {u"0000 006D 0000 0000 0010 0020", "Stream has zero length"},
      {u"0000 006D 0001 0001 0010 0020 0010 0020 0010", "Invalid Total number of tokens detected."},
      {u"0000 FFFF 0000 0001 0010 0020",
       "Carrier frequency word FFFF is out of range (at most 586D)."},
      {u"0000 006D 0000 0003 0010 0400 0010 0400 0010 0020",
       "Infra-red period of 26927 us is too long (at most 21845 us)."},
  };
  for (const auto& c : failures)
    EXPECT_EQ(FailureOf([&] { ParseHexCode(c.Code); }), c.Failure)
        << QString::fromUtf16(c.Code).toStdString();

  // 159 pairs in all: N = 321.
  QString longCode = QStringLiteral("0000 006D 0001 009E");
  for (int i = 0; i < 159; ++i) longCode += QStringLiteral(" 0010 0020");
  EXPECT_EQ(FailureOf([&] { ParseHexCode(longCode); }), "Hex code is too long.");
}

TEST(IRHexCode, SplitsAtLongGapsAndWritesBackTheCounts) {
  // Once 2 + repeat 2 pairs; and one sequence of 4 pairs whose second gap (0x400 periods at
  // 109 x 0.241 us, 26 ms) splits it into two words.
  const QString twoWords = "0000 006D 0002 0002 0016 0016 0016 0400 0016 0016 0016 0400";
  const QString split = "0000 006D 0000 0004 0016 0016 0016 0400 0016 0016 0016 0400";
  const auto a = ParseHexCode(twoWords);
  const auto b = ParseHexCode(split);
  ASSERT_TRUE(a && b);
  EXPECT_EQ(a->Format, RepeatWord2);
  EXPECT_EQ(b->Format, RepeatBothWords);
  EXPECT_EQ(a->Status(), "OK");
  // Word gaps are kept in whole units of 256/3 us: 0x400 periods come back as 0x3FE.
  EXPECT_EQ(HexCodeOf(*a), "0000 006D 0002 0002 0016 0016 0016 03FE 0016 0016 0016 03FE");
  EXPECT_EQ(HexCodeOf(*b).left(20), split.left(20));
  EXPECT_EQ(HexCodeOf(TIRStreamData()), "");
  TIRStreamData baseband = *a;
  baseband.ModulationPeriod = 0;
  EXPECT_EQ(FailureOf([&] { HexCodeOf(baseband); }),
            "Hex code unavailable for non-modulated IR codes.");
}

TEST(NorvaCodes, FramesCarryTheirBytesChecksumAndGap) {
  const struct {
    int Zone;
    TNorvaCommand Command;
    TNorvaCommandType Type;
    const char* Bytes;
    std::uint8_t Checksum;
    const char* Category;
  } cases[] = {
      {-1, nvStandbyCmd, AmpCommand, "01 FF 04", 0xFC, "Norva, all zones"},
      {3, nvSrc1Cmd, PreampCommand, "03 43 05", 0xB5, "Norva, zone 3 (preamp)"},
      {40, nvVolUpCmd, AmpCommand, "11 88", 0x67, "Norva, zone 40"},
      {70, nvSrcMediaAudioCmd, IntegraAmpCommand, "03 C6 52", 0xE5, "Quil-2.3, zone 70"},
      {-1, nvAlarmSleep, AmpCommand, "23 FF FF 02 00", 0xDD, "Norva, all zones"},
      {5, nvSelectPreset14Cmd, AmpCommand, "1E 05 8F", 0x4E, "Norva, zone 5 (amp)"},
      {1, nvOffCmd, VideoSwitcherCommand, "01 01 00", 0xFE, "Norva, zone 1"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.Bytes);
    const TIRStreamData frame = NorvaFrame(c.Zone, c.Command, c.Type);
    EXPECT_EQ(frame.Status(), "OK");
    EXPECT_EQ(NorvaFrameText(frame), c.Bytes);
    EXPECT_EQ(NorvaCategory(c.Zone, c.Type), c.Category);
    const int end = frame.GetEndPos(true);
    int checksum = 0;
    for (int i = end - 8; i < end; ++i)
      checksum =
          checksum << 1 | (frame.Lengths[frame.Pairs[static_cast<std::size_t>(i)].OffID] == 6000);
    EXPECT_EQ(checksum, c.Checksum);
    const bool volume = c.Command == nvVolUpCmd;
    EXPECT_EQ(frame.Lengths[FirstWordEndID], volume ? 938 : 176);
    // On the bus the frame is its group, zone byte and command bytes, checksum left out.
    const std::optional<TCommandPacket> packet = NorvaFramePacket(frame);
    ASSERT_TRUE(packet.has_value());
    EXPECT_EQ(PacketText(*packet), QByteArray(c.Bytes).replace(" ", "") + "\r\n");
  }
  const TIRStreamData relay = LegacyRelayFrame(7, 'C');
  EXPECT_FALSE(NorvaFramePacket(relay)) << "the older relay frame has no bus packet";
  TIRStreamData spoilt = NorvaFrame(3, nvMuteCmd, AmpCommand);
  spoilt.Pairs[9].OffID = spoilt.Pairs[9].OffID == 2 ? 3 : 2;  // one bit flipped
  EXPECT_FALSE(NorvaFramePacket(spoilt)) << "the checksum no longer adds up";
  EXPECT_FALSE(NorvaFramePacket(TIRStreamData{})) << "an empty stream";
  EXPECT_EQ(relay.Lengths[FirstWordEndID], 973);
  EXPECT_EQ(relay.GetEndPos(false), 15);
  EXPECT_EQ(relay.Status(), "OK");
}

TEST(NorvaCodes, NamesAndUsefulnessFollowTheirTables) {
  EXPECT_EQ(NorvaFunctionName(nvSrcMediaAudioCmd), "Audio source Media");
  EXPECT_EQ(NorvaFunctionName(nvOnSrc16Cmd), "On and Source 16");
  EXPECT_EQ(NorvaFunctionName(nvAlarmSleep), "Alarm sleep");
  EXPECT_EQ(Sw6CommandName('A'), "Relay 1 off");
  EXPECT_EQ(Sw6CommandName('M'), "Relay 1 toggle");
  EXPECT_EQ(Sw6CommandName('\\'), "Relay 5/6 -1");
  EXPECT_EQ(Sw6CommandName('X'), "Relay 4 on, 3 off");
  EXPECT_FALSE(NorvaFunctionUseful(nvSelectPreset7Cmd, -1, IntegraAmpCommand));
  EXPECT_TRUE(NorvaFunctionUseful(nvSelectPreset7Cmd, -1, AmpCommand));
  EXPECT_FALSE(NorvaFunctionUseful(nvSelectPreset1Cmd, 3, AmpCommand));
  EXPECT_FALSE(NorvaFunctionUseful(nvVolUpCmd, -1, PreampCommand));
  EXPECT_FALSE(NorvaFunctionUseful(nvMuteCmd, 32, PreampCommand));
  EXPECT_TRUE(NorvaFunctionUseful(nvMuteCmd, 32, AmpCommand));
  EXPECT_FALSE(NorvaFunctionUseful(nvMuteCmd, 32, IntegraAmpCommand));
  EXPECT_TRUE(NorvaFunctionUseful(nvSrc16VideoCmd, 3, VideoSwitcherCommand));
  EXPECT_FALSE(NorvaFunctionUseful(nvMuteCmd, 3, Sw6Command));
  EXPECT_EQ(NorvaCommandButtonClass(nvSrc9Cmd), TButtonClass(NorvaClassGroup, 40));
  EXPECT_FALSE(NorvaCommandButtonClass(nvSrc1AudioCmd));
}
