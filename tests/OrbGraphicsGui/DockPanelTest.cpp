// Captioned dock panels as a user meets them: clicking the pin floats and docks a panel, the
// close button hides it, and the main window's saved state brings panels back as they were.

#include <OrbGraphics/OrbGraphics.h>

#include <QLabel>
#include <QMainWindow>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>

#include <gtest/gtest.h>

#include <memory>

namespace norva {
namespace {

// A main window with a central area and two panels, left and right, shown on screen.
struct TWindow {
  TWindow() {
    window.resize(900, 600);
    window.setCentralWidget(new QLabel(QStringLiteral("keypad")));
    left = new TCaptionedDockPanel(QStringLiteral("Commands"), QStringLiteral("commands"));
    right = new TCaptionedDockPanel(QStringLiteral("Properties"), QStringLiteral("properties"));
    left->setWidget(new QLabel(QStringLiteral("Lamp on")));
    right->setWidget(new QLabel(QStringLiteral("Caption")));
    window.addDockWidget(Qt::LeftDockWidgetArea, left);
    window.addDockWidget(Qt::RightDockWidgetArea, right);
    window.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
  }
  int CentralWidth() {
    QCoreApplication::processEvents();
    return window.centralWidget()->width();
  }

  QMainWindow window;
  TCaptionedDockPanel* left;
  TCaptionedDockPanel* right;
};

TEST(DockPanel, ThePinFloatsAndDocksThePanel) {
  TWindow w;
  ASSERT_TRUE(w.left->IsPinned());
  EXPECT_TRUE(w.left->PinButton()->isChecked());
  EXPECT_FALSE(w.left->isWindow());
  EXPECT_TRUE(w.window.rect().contains(w.left->geometry())) << "docked inside the window";
  const int centralDocked = w.CentralWidth();

  QSignalSpy pinned(w.left, &TCaptionedDockPanel::PinnedChanged);
  QTest::mouseClick(w.left->PinButton(), Qt::LeftButton);
  EXPECT_FALSE(w.left->IsPinned());
  EXPECT_TRUE(w.left->isWindow()) << "a window of its own";
  EXPECT_TRUE(w.left->isVisible());
  EXPECT_FALSE(w.left->PinButton()->isChecked());
  ASSERT_EQ(pinned.count(), 1);
  EXPECT_EQ(pinned.at(0).at(0).toBool(), false);
  EXPECT_GT(w.CentralWidth(), centralDocked) << "the room it took goes to the central area";

  QTest::mouseClick(w.left->PinButton(), Qt::LeftButton);
  EXPECT_TRUE(w.left->IsPinned());
  EXPECT_FALSE(w.left->isWindow());
  EXPECT_EQ(w.window.dockWidgetArea(w.left), Qt::LeftDockWidgetArea) << "back where it was";
  EXPECT_EQ(w.CentralWidth(), centralDocked);
  EXPECT_EQ(pinned.count(), 2);
}

TEST(DockPanel, TheCloseButtonHidesThePanelUntilItsMenuEntryShowsIt) {
  TWindow w;
  QAction* entry = w.right->toggleViewAction();
  QTest::mouseClick(w.right->CloseButton(), Qt::LeftButton);
  EXPECT_FALSE(w.right->isVisible());
  EXPECT_FALSE(entry->isChecked());
  entry->trigger();
  EXPECT_TRUE(w.right->isVisible());
  EXPECT_TRUE(w.right->IsPinned());
}

TEST(DockPanel, TheSavedWindowStateBringsPanelsBackAsTheyWere) {
  QByteArray state;
  {
    TWindow w;
    w.left->SetPinned(false);
    w.right->close();
    state = w.window.saveState();
  }
  TWindow restored;
  ASSERT_TRUE(restored.window.restoreState(state));
  QCoreApplication::processEvents();
  EXPECT_FALSE(restored.left->IsPinned());
  EXPECT_FALSE(restored.left->PinButton()->isChecked()) << "the button shows the restored state";
  EXPECT_FALSE(restored.right->isVisible());
}

}  // namespace
}  // namespace norva
