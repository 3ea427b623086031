// The window driven by seeded random input, as an impatient installer would: clicks, keys, typing,
// drags of commands and buttons, menu commands, undo and redo, saves, connects and disconnects
// against the simulator and what the simulator sends back. Nothing may crash, and every keypad
// and library file the run saved must load again. The test suite makes a short run; a long one
// under AddressSanitizer is
//   NORVA_STUDIO_RANDOM_SECONDS=300 build/asan/tests/StudioGui/test_StudioGui
//       --gtest_filter='RandomInput.*'
// and NORVA_STUDIO_RANDOM_SEED repeats a run.

#include "StudioFixture.h"

#include <KeypadView.h>
#include <OrbGraphics/OrbGraphics.h>
#include <Simulation/Simulation.h>

#include <QDialog>
#include <QMenuBar>
#include <QRandomGenerator>
#include <QTimer>
#include <QToolButton>

#include <functional>
#include <set>

namespace studio {
namespace {

int EnvironmentNumber(const char* name, int fallback) {
  bool ok = false;
  const int value = qEnvironmentVariableIntValue(name, &ok);
  return ok ? value : fallback;
}

class RandomInput : public Studio {
 protected:
  void SetUp() override {
    Studio::SetUp();
    WriteFile("remote.tsv",
              "Vol+\t" + VolumeUp.toUtf8() + "\nPower\t0000 006D 0000 0002 0157 00AC 0015 05ED\n");
    mWindow = OpenWindow();
    mWindow->SetFileChooser([this](TFileRole role) { return ChosenFile(role); });
    mWindow->SetTextAsker([this](const QString&, const QString&) {
      static const QStringList answers = {"", "Acme", "TV", "Lounge", "x"};
      return answers.at(Pick(answers.size()));
    });
    // A dialog of the window's own (a code from a protocol) is dismissed as an installer would.
    QObject::connect(&mDismisser, &QTimer::timeout, [] {
      if (auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget()))
        dialog->reject();
    });
    mDismisser.start(20);
    for (QAction* menu : mWindow->menuBar()->actions()) {
      for (QAction* action : menu->menu()->actions()) {
        if (!action->menu() && !action->isSeparator() && !action->text().contains("xit"))
          mMenuCommands.push_back(action);
      }
    }
  }

  int Pick(qsizetype count) { return static_cast<int>(mRandom.bounded(static_cast<int>(count))); }

  QString ChosenFile(TFileRole role) {
    switch (role) {
      case TFileRole::ImportCodes: return mFolder.filePath("remote.tsv");
      case TFileRole::ExportBusLog: return mFolder.filePath("bus.tsv");
      case TFileRole::ExportCodes: return mFolder.filePath(Pick(2) ? "codes.girr" : "codes.ir");
      case TFileRole::OpenLibrary:
      case TFileRole::OpenPublicLibrary:
      case TFileRole::SaveLibrary: return mFolder.filePath(Pick(2) ? "IR.xml" : "Other.xml");
      default: {
        const QString keypad = mFolder.filePath(QStringLiteral("Keypad%1").arg(Pick(3)));
        mKeypads.insert(WithKeypadExtension(keypad));
        return keypad;
      }
    }
  }

  // One random thing an installer does.
  void Act() {
    TKeypadView& view = *mWindow->KeypadView();
    QWidget* focus = QApplication::focusWidget() ? QApplication::focusWidget() : mWindow.get();
    const std::function<void()> acts[] = {
        [&] {
          QTest::mouseClick(view.Tile(Pick(norva::TWallKeypad::ButtonCount)), Qt::LeftButton);
        },
        [&] {
          static const std::pair<Qt::Key, Qt::KeyboardModifiers> keys[] = {
              {Qt::Key_F5, {}},
              {Qt::Key_Z, Qt::ControlModifier},
              {Qt::Key_Y, Qt::ControlModifier},
              {Qt::Key_Delete, {}},
              {Qt::Key_C, Qt::ControlModifier},
              {Qt::Key_X, Qt::ControlModifier},
              {Qt::Key_V, Qt::ControlModifier},
              {Qt::Key_Return, {}},
              {Qt::Key_Tab, {}}};
          const auto& [key, modifiers] = keys[Pick(std::size(keys))];
          QTest::keyClick(focus, key, modifiers);
        },
        [&] {
          view.CaptionEditor()->setFocus();
          QTest::keyClicks(view.CaptionEditor(), QStringLiteral("ab").repeated(Pick(3)));
        },
        [&] {
          const QList<QTreeWidgetItem*> commands =
              mWindow->Library()->findItems("*", Qt::MatchWildcard | Qt::MatchRecursive);
          for (int tries = 0; tries < 5 && !commands.isEmpty(); ++tries) {
            mWindow->Library()->setCurrentItem(commands.at(Pick(commands.size())));
            if (norva::TCommandObject* command = mWindow->Library()->CurrentCommand()) {
              DropOnButton(*mWindow, *command, Pick(norva::TWallKeypad::ButtonCount));
              return;
            }
          }
        },
        [&] { view.MoveButton(Pick(6), Pick(6)); },
        [&] { mMenuCommands.at(static_cast<std::size_t>(Pick(mMenuCommands.size())))->trigger(); },
        [&] { mServices.SetClipboardText(Pick(2) ? VolumeUp : QStringLiteral("0000 006D 00")); },
        [&] {
          if (Pick(2))
            mWindow->Link().ConnectSimulator();
          else
            mWindow->Link().Close();
        },
        [&] {
          if (norva::sim::TDeviceSimulator* simulator = mWindow->Link().Simulator()) {
            if (Pick(8) == 0)
              simulator->HangUp();
            else
              simulator->SendKeypress(static_cast<std::uint8_t>(Pick(96)), 3, 0);
          }
        },
        [&] { QTest::mouseClick(mWindow->LibraryPanel()->PinButton(), Qt::LeftButton); },
        [&] {
          QToolButton* buttons[] = {mWindow->BusView()->PauseButton(),
                                    mWindow->BusView()->ClearButton(),
                                    mWindow->BusView()->ExportButton()};
          QTest::mouseClick(buttons[Pick(std::size(buttons))], Qt::LeftButton);
        },
        [&] {
          if (mWindow->FileSave()) mKeypads.insert(mWindow->Keypad().GetName());
        },
    };
    acts[Pick(std::size(acts))]();
    QApplication::processEvents();
  }

  QRandomGenerator mRandom{static_cast<quint32>(EnvironmentNumber("NORVA_STUDIO_RANDOM_SEED", 27))};
  std::vector<QAction*> mMenuCommands;
  QTimer mDismisser;
  std::set<QString> mKeypads;  // every keypad file the run may have written
};

TEST_F(RandomInput, LeavesEveryFileItSavedReadable) {
  const int seconds = EnvironmentNumber("NORVA_STUDIO_RANDOM_SECONDS", 2);
  QElapsedTimer running;
  running.start();
  int actions = 0;
  while (running.elapsed() < seconds * 1000) {
    Act();
    ++actions;
    if (actions % 200 == 0) mServices.ClearMessages();
  }
  mWindow->SaveLibrary();
  mWindow.reset();
  int saved = 0;
  for (const QString& path : mKeypads) {
    if (!QFile::exists(path)) continue;
    norva::TWallKeypad keypad;
    EXPECT_TRUE(keypad.LoadFile(path)) << path.toStdString();
    ++saved;
  }
  std::printf("%d random actions in %d s, %d keypad files saved\n", actions, seconds, saved);
  for (const char* library : {"IR.xml", "Other.xml"}) {
    if (!QFile::exists(mFolder.filePath(library))) continue;
    norva::TIRDB database(mFolder.filePath(library), false, nullptr);
    EXPECT_TRUE(database.GetLoadFailure().isEmpty()) << library;
  }
}

}  // namespace
}  // namespace studio
