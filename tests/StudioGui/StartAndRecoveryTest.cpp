// The window before anything is open: the first page says what to do, its buttons do it, and it
// lists the libraries and keypads used last, remembered between runs; on start an auto-saved copy
// newer than its configuration file is offered once.

#include "StudioFixture.h"

#include <StartPage.h>

#include <QListWidget>
#include <QPushButton>

namespace studio {
namespace {

class FirstPage : public Studio {
 protected:
  static QPushButton* ButtonOf(const TStudioWindow& window, const QString& text) {
    for (QPushButton* button : window.StartPage()->findChildren<QPushButton*>())
      if (button->text().startsWith(text)) return button;
    return nullptr;
  }
};

TEST_F(FirstPage, LeadsToALibraryAndTheSimulatorAndRemembersWhatWasOpened) {
  auto window = OpenWindow(false);
  ASSERT_TRUE(window->ShowsStartPage());
  EXPECT_TRUE(window->StartPage()->isVisible());
  EXPECT_FALSE(window->KeypadView()->isVisible());
  EXPECT_EQ(window->StartPage()->RecentLibraries()->count(), 0);

  QPushButton* simulator = ButtonOf(*window, "Connect to the simulator");
  ASSERT_NE(simulator, nullptr);
  QTest::mouseClick(simulator, Qt::LeftButton);
  EXPECT_NE(window->Link().Simulator(), nullptr);
  QPushButton* library = ButtonOf(*window, "Open or create library");
  ASSERT_NE(library, nullptr);
  QTest::mouseClick(library, Qt::LeftButton);
  ASSERT_NE(window->Library()->Database(), nullptr);
  EXPECT_FALSE(window->ShowsStartPage());
  EXPECT_TRUE(window->KeypadView()->isVisible());
  ASSERT_TRUE(window->FileSave());
  EXPECT_TRUE(window->close());
  window.reset();

  // The next run lists both; choosing them opens them.
  window = OpenWindow(false);
  QListWidget* libraries = window->StartPage()->RecentLibraries();
  QListWidget* keypads = window->StartPage()->RecentKeypads();
  ASSERT_EQ(libraries->count(), 1);
  ASSERT_EQ(keypads->count(), 1);
  EXPECT_TRUE(keypads->item(0)->text().startsWith("Lounge.keycfg"));
  emit keypads->itemActivated(keypads->item(0));
  EXPECT_EQ(window->Keypad().GetName(), mFolder.filePath("Lounge.keycfg"));
  emit libraries->itemActivated(libraries->item(0));
  ASSERT_NE(window->Library()->Database(), nullptr);
  EXPECT_EQ(window->Library()->Database()->GetFilename(), mFolder.filePath("IR.xml"));
}

class Recovery : public Studio {
 protected:
  // Lounge.keycfg saved a minute ago, then captioned and auto-saved, then the studio stopped
  // without closing.
  void SetUp() override {
    Studio::SetUp();
    mWindow = OpenWindow();
    ASSERT_TRUE(mWindow->FileSave());
    QFile saved(mFolder.filePath("Lounge.keycfg"));
    ASSERT_TRUE(saved.open(QIODevice::ReadWrite));
    ASSERT_TRUE(saved.setFileTime(QDateTime::currentDateTime().addSecs(-60),
                                  QFileDevice::FileModificationTime));
    saved.close();
    mWindow->KeypadView()->SetCaption(2, "Louder");
    ASSERT_TRUE(mWindow->Keypad().FileAutoSave());
    mWindow.reset();
  }
};

TEST_F(Recovery, OffersANewerAutoSavedCopyOnceAndOpensItUnderItsFilesName) {
  const struct {
    norva::TMessageResult Answer;
    bool Recovered;
  } cases[] = {{norva::TMessageResult::No, false}, {norva::TMessageResult::Yes, true}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.Recovered);
    mServices.ClearMessages();
    QSettings settings = StudioSettings();
    settings.remove("autoSavesSeenAt");  // as after a crash
    settings.sync();
    auto window = OpenWindow();
    mServices.ScriptAnswers({c.Answer});
    window->OfferRecovery();
    ASSERT_EQ(mServices.Messages().size(), 1);
    EXPECT_TRUE(mServices.Messages().first().Text.contains("Lounge.keycfg"));
    EXPECT_EQ(window->Keypad().Button(2).GetCaption(), c.Recovered ? "Louder" : "");
    EXPECT_EQ(window->isWindowModified(), c.Recovered);
    EXPECT_EQ(window->Keypad().GetName(), c.Recovered ? mFolder.filePath("Lounge.keycfg") : "");

    mServices.ClearMessages();
    window->OfferRecovery();
    EXPECT_TRUE(mServices.Messages().isEmpty()) << "offered once";
    window->setWindowModified(false);
    window->Keypad().SetNeedsSaving(false);
  }
}

TEST_F(Recovery, OffersNothingWhenTheFileWasSavedAfterTheCopy) {
  QSettings settings = StudioSettings();
  settings.remove("autoSavesSeenAt");
  settings.sync();
  auto window = OpenWindow();
  ASSERT_TRUE(window->OpenKeypad(mFolder.filePath("Lounge.keycfg")));
  ASSERT_TRUE(window->FileSave());
  window->OfferRecovery();
  EXPECT_TRUE(mServices.Messages().isEmpty());
}

}  // namespace
}  // namespace studio
