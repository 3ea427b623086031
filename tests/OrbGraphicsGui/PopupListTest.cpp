// The pop-up list as a user meets it: it opens under its widget (or above, with no room below),
// takes a choice by mouse or keys, and closes without one on Escape or a click elsewhere.

#include <OrbGraphics/OrbGraphics.h>

#include <QGuiApplication>
#include <QLineEdit>
#include <QListWidget>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>

#include <gtest/gtest.h>

namespace norva {
namespace {

// A form with the list's source field at its top, or at its bottom.
struct TForm {
  explicit TForm(QPoint at = QPoint(100, 100), bool fieldAtBottom = false) {
    auto* layout = new QVBoxLayout(&window);
    source = new QLineEdit(&window);
    if (fieldAtBottom) layout->addStretch();
    layout->addWidget(source);
    if (!fieldAtBottom) layout->addStretch();
    window.setGeometry(QRect(at, QSize(300, 200)));
    window.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
    popup.SetItems({QStringLiteral("CD"), QStringLiteral("Tuner"), QStringLiteral("Aux")});
  }
  QWidget window;
  QLineEdit* source;
  TPopupList popup;
};

TEST(PopupList, OpensUnderItsWidgetAndTakesAClickOrArrowKeysAndReturn) {
  TForm form;
  QSignalSpy chosen(&form.popup, &TPopupList::ItemChosen);
  QSignalSpy cancelled(&form.popup, &TPopupList::Cancelled);
  form.popup.PopupUnder(form.source);
  ASSERT_TRUE(form.popup.isVisible());
  const QPoint corner = form.source->mapToGlobal(QPoint(0, form.source->height()));
  EXPECT_EQ(form.popup.geometry().topLeft(), corner);
  EXPECT_GE(form.popup.width(), form.source->width());

  QListWidget* list = form.popup.List();
  QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                    list->visualItemRect(list->item(1)).center());
  EXPECT_FALSE(form.popup.isVisible());
  ASSERT_EQ(chosen.count(), 1);
  EXPECT_EQ(chosen.at(0).at(0).toInt(), 1);
  EXPECT_EQ(chosen.at(0).at(1).toString(), QStringLiteral("Tuner"));
  EXPECT_EQ(cancelled.count(), 0);

  form.popup.SetItemIndex(-1);  // none: opening starts at the first
  form.popup.PopupUnder(form.source);
  QTest::keyClick(form.popup.List(), Qt::Key_Down);
  QTest::keyClick(form.popup.List(), Qt::Key_Down);
  QTest::keyClick(form.popup.List(), Qt::Key_Return);
  ASSERT_EQ(chosen.count(), 2);
  EXPECT_EQ(chosen.at(1).at(1).toString(), QStringLiteral("Aux"));
  EXPECT_EQ(form.popup.GetItemIndex(), 2);
}

TEST(PopupList, EscapeOrAClickElsewhereClosesWithoutAChoice) {
  TForm form;
  QSignalSpy chosen(&form.popup, &TPopupList::ItemChosen);
  QSignalSpy cancelled(&form.popup, &TPopupList::Cancelled);
  form.popup.PopupUnder(form.source);
  QTest::keyClick(form.popup.List(), Qt::Key_Escape);
  EXPECT_FALSE(form.popup.isVisible());
  EXPECT_EQ(cancelled.count(), 1);

  form.popup.PopupUnder(form.source);
  ASSERT_TRUE(form.popup.isVisible());
  // Through the window system, as a real click arrives, so that the open popup sees it first.
  QTest::mouseClick(form.window.windowHandle(), Qt::LeftButton, {}, QPoint(250, 180));
  EXPECT_FALSE(form.popup.isVisible());
  EXPECT_EQ(cancelled.count(), 2);
  EXPECT_EQ(chosen.count(), 0);
}

TEST(PopupList, OpensAboveWhenTheScreenEndsBelow) {
  const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
  TForm form(QPoint(100, screen.bottom() - 200), true);
  form.popup.PopupUnder(form.source);
  EXPECT_LE(form.popup.geometry().bottom(), form.source->mapToGlobal(QPoint(0, 0)).y());
}

}  // namespace
}  // namespace norva
