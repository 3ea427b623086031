#include <NorvaGlobal/NorvaGlobal.h>
#include <Testing/RecordingUIServices.h>

#include <gtest/gtest.h>

namespace norva {
namespace {

// Each bank's byte, and its text naming the zone and its flags; the round trip below reads the
// bytes back.
TEST(Zones, EachBankEncodesToItsByteAndText) {
  const struct {
    std::int8_t Zone;
    bool Preamp;
    bool PagePreset;
    std::uint8_t Byte;
    const char* Text;
  } cases[] = {
      {-1, true, true, 0xFF, "no zone"},
      {0, false, false, 0x00, "zone 0"},
      {5, true, false, 0x45, "zone 5, preamp output"},
      {5, true, true, 0x65, "zone 5, preamp output, page preset"},
      {31, false, true, 0x3F, "zone 31, page preset"},
      {32, false, false, 0x80, "zone 32"},
      {32, false, true, 0xA0, "zone 32, page preset"},
      {40, true, false, 0x88, "zone 40"},  // only zones 0-31 have a preamp form
      {64, false, false, 0xC0, "zone 64"},
      {70, false, true, 0xE6, "zone 70, page preset"},
      {95, false, false, 0xDF, "zone 95"},
      {95, true, true, 0xFF, "no zone"},  // zone 95 page-preset collides with "no zone"
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.Text);
    EXPECT_EQ(EncodeZone(c.Zone, c.Preamp, c.PagePreset), c.Byte);
    EXPECT_EQ(ZoneByteText(c.Byte), c.Text);
  }
  EXPECT_EQ(GetDecodedZone(0xFF), -1);
  EXPECT_FALSE(IsPreampZone(0xFF));
  EXPECT_FALSE(IsPagePresetZone(0xFF));
}

TEST(Zones, EveryZoneSurvivesTheRoundTrip) {
  for (int zone = 0; zone <= 94; ++zone) {
    for (int flags = 0; flags < 4; ++flags) {
      const bool preamp = flags & 1;
      const bool pagePreset = flags & 2;
      const std::uint8_t byte = EncodeZone(static_cast<std::int8_t>(zone), preamp, pagePreset);
      EXPECT_EQ(GetDecodedZone(byte), zone) << zone << " flags " << flags;
      EXPECT_EQ(IsPreampZone(byte), preamp && zone <= 31) << zone;
      EXPECT_EQ(IsPagePresetZone(byte), pagePreset) << zone;
    }
  }
}

TEST(NorvaErrorMsg, TextsAndNumbers) {
  EXPECT_EQ(NorvaErrorMsg(errNoAck, -1, -1), "Error 0x01");
  EXPECT_EQ(NorvaErrorMsg(errBusReceiveError, -1, -1), "Error 0x08");
  EXPECT_EQ(NorvaErrorMsg(err_unused_12, -1, -1), "Error 0x17");
  EXPECT_EQ(NorvaErrorMsg(static_cast<TError>(200), -1, -1), "Error 0xC8");
  EXPECT_EQ(NorvaErrorMsg(errEEPROMFull, 3, 7), "Memory full. (3, 7)");
  EXPECT_EQ(NorvaErrorMsg(errBufferOverflow, 3, -1), "Buffer overflow in amplifier.");
  EXPECT_EQ(NorvaErrorMsg(errBusNotFree, 0, 0), "Expansion bus is not free. (0, 0)");
  EXPECT_EQ(NorvaErrorMsg(errTooManyPeriodLengths, -1, 2),
            "Too many different period lengths in infra-red stream.");
  EXPECT_EQ(NorvaErrorMsg(errReceiveAborted, -1, -1),
            "Received packet on expansion bus was incomplete.");
}

TEST(UIServices, CommErrorAsksThroughTheSeam) {
  TRecordingUIServices ui;
  TScopedUIServices scope(ui);
  EXPECT_TRUE(CommError("Port vanished"));
  ASSERT_EQ(ui.Messages().size(), 1);
  const auto& asked = ui.Messages().front();
  EXPECT_EQ(asked.Text, "Port vanished");
  EXPECT_EQ(asked.Caption, "Error");
  EXPECT_EQ(asked.Icon, TMessageIcon::Exclamation);
  EXPECT_EQ(asked.Buttons, TMessageButtons::OK);
}

TEST(UIServices, ScriptedAnswersThenUnattendedOnes) {
  TRecordingUIServices ui;
  ui.ScriptAnswers({TMessageResult::Yes});
  EXPECT_EQ(ui.MessageBox("a", "c", TMessageIcon::Question, TMessageButtons::YesNo),
            TMessageResult::Yes);
  EXPECT_EQ(ui.MessageBox("b", "c", TMessageIcon::Question, TMessageButtons::YesNo),
            TMessageResult::No);
  EXPECT_EQ(ui.MessageBox("c", "c", TMessageIcon::Question, TMessageButtons::YesNoCancel),
            TMessageResult::Cancel);
  EXPECT_EQ(ui.MessageBox("d", "c", TMessageIcon::Stop, TMessageButtons::OKCancel),
            TMessageResult::OK);

  // The scope restores whatever was installed before.
  TUIServices* before = &UIServices();
  {
    TScopedUIServices scope(ui);
    EXPECT_EQ(&UIServices(), &ui);
  }
  EXPECT_EQ(&UIServices(), before);
}

TEST(UIServices, HeadlessClipboardHoldsDataOnlyOnceSet) {
  THeadlessUIServices headless;
  EXPECT_FALSE(headless.ClipboardHoldsData());
  headless.SetClipboardText("");
  EXPECT_TRUE(headless.ClipboardHoldsData());
  headless.EmptyClipboard();
  EXPECT_FALSE(headless.ClipboardHoldsData());
}

TEST(TickCount, DifferencesSurviveTheWrap) {
  EXPECT_EQ(TicksBetween(0xFFFFFF00u, 0x00000100u), 0x200u);
  EXPECT_EQ(TicksBetween(1000u, 6001u), 5001u);
}

}  // namespace
}  // namespace norva
