// The studio's main window as an installer uses it, on the offscreen platform: a code pasted into
// the library, a command dropped on a button, the binding undone and redone, the keypad saved,
// the window closed with and without saving, the file opened again; a native code sent to the
// simulator and its echo in the bus view; codes imported and renamed; the panels remembered.

#include "StudioFixture.h"

#include <OrbGraphics/OrbGraphics.h>
#include <PacketLog.h>
#include <Simulation/Simulation.h>

#include <QFileInfo>
#include <QProcess>
#include <QStatusBar>
#include <QToolButton>

#include <functional>

namespace studio {
namespace {

// A whole code pasted goes into User / Learnt codes (see ALearntCodeOnAButton); one cut short not.
TEST_F(Studio, PasteTakesNoCodeCutShort) {
  auto window = OpenWindow();
  window->ShowState();
  EXPECT_FALSE(window->PasteAction()->isEnabled()) << "nothing to paste yet";
  mServices.SetClipboardText("0000 006D 0000 0022 0157 00AC");
  window->ShowState();
  ASSERT_TRUE(window->PasteAction()->isEnabled());
  window->PasteAction()->trigger();
  EXPECT_EQ(mServices.Messages().size(), 1);
  EXPECT_TRUE(window->Library()->findItems("Learnt codes", Qt::MatchRecursive).isEmpty());
}

// The volume-up code pasted into User / Learnt codes and dropped on button 2.
class ALearntCodeOnAButton : public Studio {
 protected:
  void SetUp() override {
    Studio::SetUp();
    mWindow = OpenWindow();
    mServices.SetClipboardText(VolumeUp);
    mWindow->ShowState();
    mWindow->PasteAction()->trigger();
    const norva::TModel* learnt =
        mWindow->Library()->Database()->GetMakeByName("User")->GetModelByName("Learnt codes");
    ASSERT_EQ(learnt->GetCommandCount(), 1);
    mCode = learnt->GetCommand(0);
    DropOnButton(*mWindow, *mCode, 2);
  }
  norva::TCommandObject* mCode = nullptr;
};

TEST_F(ALearntCodeOnAButton, IsNamedCodeNBoundUndoneAndRedoneAndHasNoBusPacketToSend) {
  EXPECT_EQ(mCode->GetName(), "Code 1") << "the library did not know it";
  EXPECT_NE(mWindow->Library()->ItemOf(mCode), nullptr) << "it shows in the tree";
  EXPECT_TRUE(mServices.Messages().isEmpty());
  const norva::TWallKeypadButton& button = mWindow->Keypad().Button(2);
  EXPECT_EQ(button.GetCommandGUID(), mCode->GetGUIDString());
  EXPECT_EQ(mWindow->KeypadView()->Tile(2)->CommandText(), mCode->GetName());
  EXPECT_TRUE(mWindow->isWindowModified());

  mWindow->UndoAction()->trigger();
  EXPECT_TRUE(button.GetCommandGUID().isEmpty());
  EXPECT_EQ(mWindow->KeypadView()->Tile(2)->CommandText(), "no command");
  mWindow->RedoAction()->trigger();
  EXPECT_EQ(button.GetCommandGUID(), mCode->GetGUIDString());

  mWindow->KeypadView()->Select(2);
  EXPECT_FALSE(mWindow->SendSelectedCommand()) << "a learnt code has no bus packet to send";
  ASSERT_FALSE(mServices.Messages().isEmpty());
  EXPECT_TRUE(mServices.Messages().last().Text.contains("no native code"));
}

TEST_F(ALearntCodeOnAButton, TravelsToAnotherButtonThroughTheClipboardAndUndoBringsACutBack) {
  mWindow->KeypadView()->Select(2);
  mWindow->CopyAction()->trigger();
  mWindow->KeypadView()->Select(4);
  mWindow->ShowState();
  ASSERT_TRUE(mWindow->PasteAction()->isEnabled()) << "a button waits in the clipboard";
  mWindow->PasteAction()->trigger();
  EXPECT_EQ(mWindow->Keypad().Button(4).GetCommandGUID(), mCode->GetGUIDString());
  mWindow->CutAction()->trigger();
  EXPECT_TRUE(mWindow->Keypad().Button(4).IsBlank());
  mWindow->UndoAction()->trigger();
  EXPECT_EQ(mWindow->Keypad().Button(4).GetCommandGUID(), mCode->GetGUIDString());
}

TEST_F(ALearntCodeOnAButton, IsSavedAndOpensAgainNamedFromTheLibrary) {
  const QString guid = mCode->GetGUIDString();  // the code goes with the window
  ASSERT_TRUE(mWindow->FileSave());
  EXPECT_FALSE(mWindow->isWindowModified());
  EXPECT_TRUE(mWindow->close()) << "nothing to ask";
  mWindow.reset();

  auto reopened = OpenWindow();
  ASSERT_TRUE(reopened->FileOpen());
  EXPECT_EQ(reopened->Keypad().Button(2).GetCommandGUID(), guid);
  EXPECT_EQ(reopened->KeypadView()->Tile(2)->CommandText(), "Code 1");
}

TEST_F(Studio, ClosingWithChangesAsksAndSavesDropsOrStaysAsAnswered) {
  const struct {
    norva::TMessageResult Answer;
    bool Closes;
    bool Kept;
  } cases[] = {
      {norva::TMessageResult::Cancel, false, false},
      {norva::TMessageResult::No, true, false},
      {norva::TMessageResult::Yes, true, true},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(static_cast<int>(c.Answer));
    QFile::remove(mFolder.filePath("Lounge.keycfg"));
    auto window = OpenWindow();
    ASSERT_TRUE(window->FileSave());
    window->KeypadView()->SetCaption(2, "Louder");
    mServices.ScriptAnswers({c.Answer});
    EXPECT_EQ(window->close(), c.Closes);
    norva::TWallKeypad saved;
    ASSERT_TRUE(saved.LoadFile(mFolder.filePath("Lounge.keycfg")));
    EXPECT_EQ(saved.Button(2).GetCaption().toStdString(), c.Kept ? "Louder" : "");
  }
}

// Committed as one undo step, and saved, whatever the installer does next.
TEST_F(Studio, ACaptionTypedWithoutEnterIsKeptWhateverTheInstallerDoesNext) {
  auto window = OpenWindow();
  const struct {
    int Button;
    const char* Caption;
    std::function<void()> Next;
  } cases[] = {
      {1, "Lounge on",
       [&] {
         QTest::mouseClick(window->KeypadView()->Tile(5), Qt::LeftButton);
         EXPECT_EQ(window->KeypadView()->Tile(1)->CaptionText(), "Lounge on");
         EXPECT_EQ(window->KeypadView()->Selected(), 5);
         EXPECT_TRUE(window->KeypadView()->CaptionEditor()->text().isEmpty())
             << "the field shows the newly selected button";
         window->UndoAction()->trigger();
         EXPECT_TRUE(window->Keypad().Button(1).GetCaption().isEmpty()) << "one undo step";
         window->RedoAction()->trigger();
       }},
      {5, "Lounge off", [&] { ASSERT_TRUE(window->FileSave()); }},
      {3, "Kitchen",
       [&] {
         window->Library()->setFocus(Qt::TabFocusReason);
         EXPECT_EQ(window->KeypadView()->Tile(3)->CaptionText(), "Kitchen");
       }},
      {4, "Mute",
       [&] {
         mServices.ScriptAnswers({norva::TMessageResult::Yes});  // save the changes on closing
         EXPECT_TRUE(window->close());
       }},
  };
  for (const auto& c : cases) {
    TypeCaption(*window, c.Button, c.Caption);
    c.Next();
  }
  window.reset();

  auto reopened = OpenWindow();
  ASSERT_TRUE(reopened->FileOpen());
  for (const auto& c : cases)
    EXPECT_EQ(reopened->Keypad().Button(c.Button).GetCaption(), c.Caption) << c.Caption;
}

class ALibraryThatDidNotLoad : public Studio {
 protected:
  // Well-formed, but holding a value no command can hold.
  void SetUp() override {
    Studio::SetUp();
    QFile file(mBroken);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(Content);
  }
  static inline const QByteArray Content =
      "<?xml version=\"1.0\"?>\r\n<ir_database>\r\n\t<make name=\"Acme\">\r\n"
      "\t\t<model name=\"TV\">\r\n\t\t\t<rs232_command name=\"Power\">"
      "<parity>parity_purple</parity></rs232_command>\r\n\t\t</model>\r\n\t</make>\r\n"
      "</ir_database>\r\n";
  const QString mBroken = mFolder.filePath("Broken.xml");
};

TEST_F(ALibraryThatDidNotLoad, IsToldInOneBoxOpenedReadOnlyTakesNoCodeAndIsLeftUntouched) {
  auto window = OpenWindow();
  mServices.ClearMessages();
  mServices.ScriptAnswers({norva::TMessageResult::No});
  window->OpenLibrary(mBroken, false);
  ASSERT_EQ(mServices.Messages().size(), 1) << "one box: why, and what can be done";
  EXPECT_TRUE(mServices.Messages().first().Text.contains(mBroken));
  EXPECT_TRUE(mServices.Messages().first().Text.contains("read-only"));
  EXPECT_TRUE(window->LibraryPanel()->windowTitle().contains("did not load"));
  EXPECT_FALSE(window->LibraryPanel()->toolTip().isEmpty()) << "the reason, at hand";

  mServices.SetClipboardText(VolumeUp);
  window->ShowState();
  EXPECT_FALSE(window->PasteAction()->isEnabled()) << "no code goes into it";
  EXPECT_EQ(window->Library()->AddModel("User", "Codes"), nullptr);
  window->SaveLibrary();
  window.reset();
  QFile file(mBroken);
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  EXPECT_EQ(file.readAll(), Content);
}

TEST_F(ALibraryThatDidNotLoad, IsSavedUnderAnotherNameOnRequestAndEditableThere) {
  auto window = std::make_unique<TStudioWindow>();
  window->SetFileChooser([this](TStudioWindow::TFileRole role) {
    return role == TStudioWindow::TFileRole::SaveLibrary ? mFolder.filePath("Rescued.xml")
                                                         : QString();
  });
  mServices.ScriptAnswers({norva::TMessageResult::Yes});
  window->OpenLibrary(mBroken, false);
  ASSERT_TRUE(QFile::exists(mFolder.filePath("Rescued.xml")));
  norva::TIRDB* library = window->Library()->Database();
  EXPECT_EQ(QFileInfo(library->GetFilename()).fileName(), "Rescued.xml");
  EXPECT_FALSE(library->IsReadOnly());
  EXPECT_NE(window->Library()->AddModel("User", "Codes"), nullptr);
  EXPECT_FALSE(window->LibraryPanel()->windowTitle().contains("read-only"));
}

TEST_F(Studio, ANativeCodeShowsItsFrameReachesTheSimulatorFromAButtonAndItsAnswersShowOnTheBus) {
  auto window = OpenWindow();
  const norva::TIRStream* code = ChooseBuiltInStandby(*window);
  ASSERT_NE(code, nullptr) << "the public library shows the built-in makes";
  EXPECT_TRUE(window->statusBar()->currentMessage().contains("native frame 01 FF 04"))
      << window->statusBar()->currentMessage().toStdString() << ": the frame of the chosen code";
  const std::optional<norva::TCommandPacket> expected = norva::NorvaFramePacket(code->Data());
  ASSERT_TRUE(expected.has_value());

  ASSERT_TRUE(window->Link().ConnectSimulator());
  ASSERT_TRUE(WaitFor([&] { return window->Link().Bus()->LinkUp(); }));
  window->BusView()->Log().Clear();  // the link's own rows: the packets start at row 0
  EXPECT_TRUE(window->LinkStateText().startsWith("Connected to the simulator"))
      << window->LinkStateText().toStdString();
  DropOnButton(*window, *code, 0);
  EXPECT_EQ(window->KeypadView()->Tile(0)->CommandText(), "Standby");
  window->KeypadView()->Select(0);
  window->ShowState();
  ASSERT_TRUE(window->SendAction()->isEnabled());
  window->SendAction()->trigger();

  const norva::sim::TDeviceSimulator& simulator = *window->Link().Simulator();
  ASSERT_TRUE(WaitFor([&] { return !simulator.Received().empty(); }));
  EXPECT_TRUE(simulator.Received().front().SameContent(*expected));
  // Sent, echoed by the serial line, acknowledged (command + 0x80): three rows, the echo marked.
  TPacketLog& log = window->BusView()->Log();
  ASSERT_TRUE(WaitFor([&] { return log.rowCount() >= 3; }));
  const auto cell = [&](int row, int column) { return log.index(row, column).data().toString(); };
  EXPECT_EQ(cell(0, TPacketLog::EchoColumn), "sent");
  EXPECT_EQ(cell(1, TPacketLog::EchoColumn), "echo");
  EXPECT_EQ(cell(1, TPacketLog::DataColumn), "04");
  EXPECT_EQ(cell(1, TPacketLog::ZoneColumn), "no zone");
  EXPECT_EQ(cell(2, TPacketLog::CommandColumn), "81");
  window->BusView()->Filter()->setText("echo");
  EXPECT_EQ(window->BusView()->ShownRows(), 1);

  // The device goes away, as an unplugged adapter does: the link is down, nothing can be sent.
  window->Link().Simulator()->HangUp();
  ASSERT_TRUE(WaitFor([&] { return !window->Link().Bus()->LinkUp(); }));
  window->ShowState();
  EXPECT_FALSE(window->SendAction()->isEnabled());
  EXPECT_TRUE(window->LinkStateText().startsWith("Not connected"))
      << window->LinkStateText().toStdString();
}

TEST_F(Studio, AUsbAmplifierIsFoundAndAnswersOverItsPipes) {
  norva::TSimulatedUsbBackend backend;
  norva::TUsbBackend* const previous = norva::SetUsbBackend(&backend);
  {
    norva::sim::TUsbAmplifier amplifier(backend);
    auto window = OpenWindow();  // gone before the amplifier and the backend
    const std::vector<norva::TUSBDevice> devices = TStudioLink::UsbDevices().Devices;
    ASSERT_EQ(devices.size(), 1U);
    EXPECT_EQ(devices[0].Path, norva::sim::TUsbAmplifier::DevicePath);
    EXPECT_EQ(devices[0].DeviceType, norva::NorvaAmp);
    ASSERT_TRUE(window->Link().ConnectUsb(devices[0].Path));
    ASSERT_TRUE(WaitFor([&] { return window->Link().Bus()->LinkUp(); }));
    window->BusView()->Log().Clear();
    ASSERT_TRUE(window->BusView()->Send(norva::BuildCommandPacket(0x02, 7, {2})));
    TPacketLog& log = window->BusView()->Log();
    ASSERT_TRUE(WaitFor([&] { return log.rowCount() >= 3; }));
    EXPECT_EQ(log.index(1, TPacketLog::EchoColumn).data(), "echo");
    EXPECT_EQ(log.index(2, TPacketLog::CommandColumn).data(), "82");
  }
  norva::SetUsbBackend(previous);
}

TEST_F(Studio, AnEthernetDeviceThatHangsUpAtOnceIsNotConnectedAndOneThatAnswersIsHeard) {
  norva::sim::TDeviceSimulator device;
  const quint16 port = device.ServeTcp();
  ASSERT_NE(port, 0);
  const QString address = QStringLiteral("127.0.0.1:%1").arg(port);
  auto window = OpenWindow();
  device.SetBusy(true);
  window->Link().ConnectEthernet(address);
  // The library keeps trying; each try is turned away.
  ASSERT_TRUE(WaitFor([&] { return device.TcpConnections() >= 2; }));
  // Between two tries the window shows the link down, and nothing can be sent.
  EXPECT_TRUE(WaitFor([&] {
    window->ShowState();
    return !window->SendAction()->isEnabled() &&
           window->LinkStateText().startsWith("Not connected to " + address);
  })) << window->LinkStateText().toStdString();

  device.SetBusy(false);
  window->Link().ConnectEthernet(address);
  ASSERT_TRUE(WaitFor([&] { return window->Link().Bus()->LinkUp(); }));
  window->BusView()->Log().Clear();
  EXPECT_EQ(window->LinkStateText(), "Connected to " + address);
  ASSERT_TRUE(window->BusView()->Send(norva::BuildCommandPacket(0x02, 7, {2})));
  TPacketLog& log = window->BusView()->Log();
  ASSERT_TRUE(WaitFor([&] { return log.rowCount() >= 2; }));
  EXPECT_EQ(log.index(1, TPacketLog::CommandColumn).data(), "82") << "no echo on the network";
}

// remote.tsv (two codes and a line without a TAB) imported into the new model Acme / TV.
class ImportedCodes : public Studio {
 protected:
  void SetUp() override {
    Studio::SetUp();
    QFile codes(mFolder.filePath("remote.tsv"));
    ASSERT_TRUE(codes.open(QIODevice::WriteOnly));
    codes.write("Vol+\t" + VolumeUp.toUtf8() + "\nno tab here\nPower\t" +
                "0000 006D 0000 0002 0157 00AC 0015 05ED\n");
    codes.close();
    mWindow = OpenWindow();
    mAnswers = {"Acme", "TV"};
    mWindow->AddModel();
    const QList<QTreeWidgetItem*> tv = mWindow->Library()->findItems("TV", Qt::MatchRecursive);
    ASSERT_EQ(tv.size(), 1);
    mWindow->Library()->setCurrentItem(tv.first());
    mWindow->ImportCodes();
    mModel = mWindow->Library()->Database()->GetMakeByName("Acme")->GetModelByName("TV");
    ASSERT_EQ(mModel->GetCommandCount(), 2);
  }

  const norva::TModel* mModel = nullptr;
};

TEST_F(ImportedCodes, GoIntoTheChosenModelWithButtonClassesAndRenameAndImportAreEachOneUndoStep) {
  ASSERT_EQ(mServices.Messages().size(), 1);
  EXPECT_EQ(mServices.Messages().first().Text,
            "added 2, skipped 0, refused 1\nline 2: no TAB between name and code");
  QTreeWidgetItem* volume = mWindow->Library()->ItemOf(mModel->GetCommand(0));
  ASSERT_NE(volume, nullptr);
  EXPECT_FALSE(volume->text(2).isEmpty()) << "a volume code gets its button class";

  mWindow->Library()->setCurrentItem(mWindow->Library()->ItemOf(mModel->GetCommand(1)));
  mAnswers = {"TV power"};
  mWindow->RenameCode();
  EXPECT_EQ(mModel->GetCommand(1)->GetName(), "TV power");
  mWindow->UndoAction()->trigger();
  EXPECT_EQ(mModel->GetCommand(1)->GetName(), "Power");
  ASSERT_TRUE(WaitFor([&] {
    return mWindow->Library()->findItems("Power", Qt::MatchRecursive | Qt::MatchExactly).size() ==
           1;
  })) << "the tree shows the undone name";
  mWindow->UndoAction()->trigger();
  EXPECT_EQ(mModel->GetCommandCount(), 0) << "the import undone";
}

TEST_F(ImportedCodes, AreInTheLibraryTheNextWindowOpens) {
  EXPECT_TRUE(mWindow->close());
  mWindow.reset();
  auto reopened = OpenWindow();
  EXPECT_EQ(reopened->Library()->findItems("Vol+", Qt::MatchRecursive).size(), 1)
      << "the library was saved";
}

TEST_F(Studio, ThePacketLogKeepsTheNewestRowsOnly) {
  TPacketLog log;
  const int total = TPacketLog::MaxRows + 1234;
  for (int i = 0; i < total; ++i)
    log.Append(norva::BuildCommandPacket(0x0C, 1, {i >> 16 & 0xFF, i >> 8 & 0xFF, i & 0xFF}),
               TPacketLog::TOrigin::Received);
  log.Flush();
  EXPECT_EQ(log.Total(), total);
  ASSERT_EQ(log.rowCount(), TPacketLog::MaxRows);
  const int last = total - 1;
  const char lastData[] = {char(last >> 16), char(last >> 8), char(last)};
  EXPECT_EQ(log.index(TPacketLog::MaxRows - 1, TPacketLog::DataColumn).data().toString(),
            QString::fromLatin1(QByteArray(lastData, 3).toHex(' ').toUpper()));
  log.Append(norva::BuildCommandPacket(0x0D, 1), TPacketLog::TOrigin::Sent);
  log.Flush();
  EXPECT_EQ(log.rowCount(), TPacketLog::MaxRows) << "one in, the oldest out";
  EXPECT_EQ(log.index(TPacketLog::MaxRows - 1, TPacketLog::CommandColumn).data(), "0D");
}

TEST_F(Studio, ThePanelLayoutIsRememberedBetweenRuns) {
  {
    auto window = OpenWindow();
    QTest::mouseClick(window->LibraryPanel()->PinButton(), Qt::LeftButton);
    ASSERT_FALSE(window->LibraryPanel()->IsPinned());
    EXPECT_TRUE(window->close());
  }
  auto window = OpenWindow();
  EXPECT_FALSE(window->LibraryPanel()->IsPinned());
}

// The program itself: bad options are told in one line with exit code 2, as the norva tool does.
TEST(StudioProgram, RefusesBadOptionsAndListsTheGoodOnes) {
  const auto run = [](const QStringList& arguments) {
    QProcess process;
    process.start(QStringLiteral(NORVA_BINARY_DIR "/apps/norva-studio/norva-studio"), arguments);
    process.waitForFinished(30000);
    return std::pair(process.exitCode(), QString::fromUtf8(process.readAllStandardOutput() +
                                                           process.readAllStandardError()));
  };
  for (const QStringList& bad : {QStringList{"--bogus"}, QStringList{"--serial", "/dev/x", "--usb"},
                                 QStringList{"extra"}, QStringList{"--public"}}) {
    const auto [code, output] = run(bad);
    EXPECT_EQ(code, 2) << bad.join(' ').toStdString();
    EXPECT_TRUE(output.contains("norva-studio: ")) << output.toStdString();
  }
  const auto [code, output] = run({"--help"});
  EXPECT_EQ(code, 0);
  EXPECT_TRUE(output.contains("--serial <DEVICE>")) << output.toStdString();
}

}  // namespace
}  // namespace studio
