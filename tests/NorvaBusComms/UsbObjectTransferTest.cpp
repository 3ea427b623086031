// The USB object exchange: who hears of status changes, and how the waits end.
#include <NorvaBusComms/PacketEngine.h>
#include <Testing/RecordingUIServices.h>

#include "support/FakeClock.h"
#include "support/RecordingTransport.h"

#include <QTimer>

#include <gtest/gtest.h>

namespace norva {
namespace {

using testing::TFakeClock;
using testing::TRecordingTransport;

class TRecordingExchange : public TIUSBCommandUser {
 public:
  struct TChange {
    TUSBCommandStatus New;
    TUSBCommandStatus Old;
  };
  QList<TChange> Changes;
  void USBCommandStatusChange(TNorvaPacketEngine&, TUSBCommandStatus newStatus,
                              TUSBCommandStatus oldStatus) override {
    Changes.append({newStatus, oldStatus});
  }
};

class UsbObjectTransferTest : public ::testing::Test {
 protected:
  UsbObjectTransferTest() {
    engine.SetTransport(&transport);
    engine.SetSelectedCommsInterface(USBInterface);
    engine.SetConnectedDeviceType(NorvaAmp_Zr900);
  }

  // Every pass of the wait loop moves the clock on by `stepMs` and runs `step` (a device).
  void EveryWaitStep(TTickCount stepMs, std::function<void()> step) {
    ticker.setInterval(0);
    QObject::connect(&ticker, &QTimer::timeout, [this, stepMs, step] {
      clock.Advance(stepMs);
      if (step) step();
    });
    ticker.start();
  }

  TFakeClock clock;
  TRecordingTransport transport;
  TNorvaPacketEngine engine;
  TRecordingUIServices ui;
  TScopedUIServices scope{ui};
  QTimer ticker;
};

TEST_F(UsbObjectTransferTest, TheUserThatStartedHearsEveryChangeOnce) {
  auto exchange = std::make_shared<TRecordingExchange>();
  engine.SetUSBCommandStatus(EnumeratingObjects, exchange);
  EXPECT_TRUE(exchange->Changes.isEmpty());  // nobody was registered before
  EXPECT_EQ(engine.USBCommandUser(), exchange);
  engine.SetUSBCommandStatus(EnumeratingObjects, exchange);    // the same status: nobody is told
  engine.SetUSBCommandStatus(EndEnumeratingObjects, nullptr);  // another party moves it on
  engine.SetUSBCommandStatus(NoUSBCommand, nullptr);
  ASSERT_EQ(exchange->Changes.size(), 1);
  EXPECT_EQ(exchange->Changes[0].New, EndEnumeratingObjects);
  EXPECT_EQ(exchange->Changes[0].Old, EnumeratingObjects);
  EXPECT_EQ(engine.USBCommandUser(), nullptr);
  EXPECT_EQ(exchange.use_count(), 1);  // the bus holds no reference once idle
}

TEST_F(UsbObjectTransferTest, WaitEndsWithTheDevicesAnswer) {
  EXPECT_TRUE(engine.WaitUSBCommandResponse(1000, false));  // idle: at once
  auto exchange = std::make_shared<TRecordingExchange>();
  engine.SetUSBCommandStatus(FetchingDeviceInfo, exchange);
  int steps = 0;
  EveryWaitStep(10, [&] {
    if (++steps == 5) {
      engine.SetUSBCommandResult(USBCommand_Success);
      engine.SetUSBCommandStatus(NoUSBCommand, nullptr);
    }
  });
  EXPECT_TRUE(engine.WaitUSBCommandResponse(1000, false));
  EXPECT_EQ(engine.USBCommandResult(), USBCommand_Success);
  ASSERT_EQ(exchange->Changes.size(), 1);
  EXPECT_EQ(exchange->Changes[0].New, NoUSBCommand);
  EXPECT_TRUE(ui.Messages().isEmpty());
}

TEST_F(UsbObjectTransferTest, DataThatKeepsComingNeverTimesOut) {
  engine.SetUSBCommandStatus(DownloadObject_data, std::make_shared<TRecordingExchange>());
  int steps = 0;
  EveryWaitStep(100, [&] {
    QByteArray chunk(64, 'd');
    engine.ProcessRawData(chunk);  // a download's data on the data pipe
    if (++steps == 200) engine.SetUSBCommandStatus(NoUSBCommand, nullptr);  // 20 s later
  });
  EXPECT_TRUE(engine.WaitUSBCommandResponse(1000, false));
  EXPECT_EQ(steps, 200);
  EXPECT_TRUE(ui.Messages().isEmpty());
}

TEST_F(UsbObjectTransferTest, SilenceTimesOutAndTheUserMayContinue) {
  auto exchange = std::make_shared<TRecordingExchange>();
  engine.SetUSBCommandStatus(EnumeratingFragments, exchange);
  EveryWaitStep(100, nullptr);
  EXPECT_FALSE(engine.WaitUSBCommandResponse(1000, false));
  EXPECT_EQ(engine.USBCommandStatus(), NoUSBCommand);
  EXPECT_EQ(engine.USBCommandResult(), USBCommand_Failure);
  ASSERT_EQ(ui.Messages().size(), 1);
  EXPECT_EQ(ui.Messages()[0].Text, "Timeout waiting for response.");
  EXPECT_EQ(ui.Messages()[0].Icon, TMessageIcon::Exclamation);
  EXPECT_EQ(exchange->Changes.last().New, NoUSBCommand);

  engine.SetUSBCommandStatus(EnumeratingFragments, exchange);
  ui.ScriptAnswers({TMessageResult::Yes});
  EXPECT_TRUE(engine.WaitUSBCommandResponse(1000, true));
  EXPECT_EQ(ui.Messages().last().Text, "Timeout waiting for response.\r\n\r\nTry to continue?");
  EXPECT_EQ(ui.Messages().last().Buttons, TMessageButtons::YesNo);
  engine.SetUSBCommandStatus(EnumeratingFragments, exchange);
  EXPECT_FALSE(engine.WaitUSBCommandResponse(1000, true));  // unattended answer: No
}

TEST_F(UsbObjectTransferTest, ALostLinkEndsTheWait) {
  engine.SetUSBCommandStatus(UploadingObject, std::make_shared<TRecordingExchange>());
  EveryWaitStep(10, [&] { transport.Open = false; });
  EXPECT_FALSE(engine.WaitUSBCommandResponse(100000, false));
  EXPECT_EQ(engine.USBCommandResult(), USBCommand_Failure);
  ASSERT_EQ(ui.Messages().size(), 1);
  EXPECT_EQ(ui.Messages()[0].Text, "Connection lost.");
}

TEST_F(UsbObjectTransferTest, WaitingForCommandsLastsUntilTheDeviceIsSilent) {
  engine.SetSelectedCommsInterface(EthernetInterface);  // no echoes to tell apart
  int steps = 0;
  EveryWaitStep(100, [&] {
    if (++steps <= 10) engine.ReceiveBytes(SerialRXKind, "0C0101\r\n");
  });
  engine.WaitForCommands(500, true);
  // Ten reports 100 ms apart keep it waiting; then 500 ms of silence end it.
  EXPECT_GE(steps, 15);
  EXPECT_LE(steps, 16);
}

}  // namespace
}  // namespace norva
