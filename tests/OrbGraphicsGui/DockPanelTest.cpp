// Captioned dock panels as a user meets them: clicking the pin hides a panel at its window's edge
// behind a tab and pins it back, the close button hides it, and the main window's saved state
// brings panels back as they were.

#include <OrbGraphics/OrbGraphics.h>

#include <QApplication>
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

TEST(DockPanel, ThePinHidesThePanelAtItsWindowEdgeAndItsTabShowsIt) {
  TWindow w;
  ASSERT_TRUE(w.left->IsPinned());
  EXPECT_TRUE(w.left->PinButton()->isChecked());
  EXPECT_TRUE(w.window.rect().contains(w.left->geometry())) << "docked inside the window";
  const int centralPinned = w.CentralWidth();

  QSignalSpy pinned(w.left, &TCaptionedDockPanel::PinnedChanged);
  QTest::mouseClick(w.left->PinButton(), Qt::LeftButton);
  EXPECT_FALSE(w.left->IsPinned());
  EXPECT_FALSE(w.left->isVisible());
  EXPECT_FALSE(w.left->PinButton()->isChecked());
  ASSERT_EQ(pinned.count(), 1);
  EXPECT_EQ(pinned.at(0).at(0).toBool(), false);
  EXPECT_GT(w.CentralWidth(), centralPinned) << "the room it took goes to the central area";
  QToolButton* tab = w.left->Tab();
  ASSERT_NE(tab, nullptr);
  ASSERT_TRUE(tab->isVisible());
  EXPECT_LT(tab->mapTo(&w.window, QPoint()).x(), w.window.centralWidget()->x())
      << "at the left edge, where the panel was";

  // The pointer over the tab shows it; away from tab and panel, it hides again.
  QEvent enter(QEvent::Enter);
  QEvent leave(QEvent::Leave);
  QApplication::sendEvent(tab, &enter);
  EXPECT_TRUE(w.left->isVisible());
  QApplication::sendEvent(tab, &leave);
  QApplication::sendEvent(w.left, &enter);  // on to the panel
  QTest::qWait(2 * TCaptionedDockPanel::HideDelayMs);
  EXPECT_TRUE(w.left->isVisible()) << "the pointer is over the panel";
  QApplication::sendEvent(w.left, &leave);
  EXPECT_TRUE(QTest::qWaitFor([&] { return !w.left->isVisible(); }));

  QApplication::sendEvent(tab, &enter);
  QTest::mouseClick(w.left->PinButton(), Qt::LeftButton);
  EXPECT_TRUE(w.left->IsPinned());
  EXPECT_FALSE(tab->isVisible());
  QApplication::sendEvent(w.left, &leave);
  QTest::qWait(2 * TCaptionedDockPanel::HideDelayMs);
  EXPECT_TRUE(w.left->isVisible()) << "pinned, it stays";
  EXPECT_EQ(w.window.dockWidgetArea(w.left), Qt::LeftDockWidgetArea) << "where it was";
  EXPECT_EQ(w.CentralWidth(), centralPinned);
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
  EXPECT_FALSE(restored.left->isVisible()) << "hidden at the edge";
  EXPECT_TRUE(restored.left->Tab()->isVisible());
  EXPECT_FALSE(restored.right->isVisible());
}

}  // namespace
}  // namespace norva
