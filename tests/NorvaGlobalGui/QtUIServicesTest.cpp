// The widget implementation of the UI services: box icons and buttons, the nested busy cursor and
// the system clipboard.
#include <NorvaGlobal/Gui/QtUIServices.h>
#include <support/gui/OffscreenPlatform.h>

#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>
#include <QGuiApplication>
#include <QMessageBox>
#include <QTimer>

#include <gtest/gtest.h>

#include <functional>

namespace norva {
namespace {

struct TSeenBox {
  QMessageBox::Icon icon = QMessageBox::NoIcon;
  QMessageBox::StandardButtons buttons;
  QString caption;
  QString text;
};

// Waits for the modal box, notes what it shows and clicks `answer`.
void AnswerNextBox(QMessageBox::StandardButton answer, TSeenBox& seen) {
  QTimer::singleShot(10, [answer, &seen] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (!box) {
      AnswerNextBox(answer, seen);
      return;
    }
    seen = {box->icon(), box->standardButtons(), box->windowTitle(), box->text()};
    box->button(answer)->click();
  });
}

TEST(QtUIServices, MessageBoxesShowTheIconAndButtonsAndReturnTheChoice) {
  TQtUIServices services;
  struct TCase {
    TMessageIcon icon;
    TMessageButtons buttons;
    QMessageBox::Icon shownIcon;
    QMessageBox::StandardButtons shownButtons;
    QMessageBox::StandardButton clicked;
    TMessageResult result;
  };
  const TCase cases[] = {
      {TMessageIcon::Stop, TMessageButtons::OK, QMessageBox::Critical, QMessageBox::Ok,
       QMessageBox::Ok, TMessageResult::OK},
      {TMessageIcon::Exclamation, TMessageButtons::OKCancel, QMessageBox::Warning,
       QMessageBox::Ok | QMessageBox::Cancel, QMessageBox::Cancel, TMessageResult::Cancel},
      {TMessageIcon::Question, TMessageButtons::YesNo, QMessageBox::Question,
       QMessageBox::Yes | QMessageBox::No, QMessageBox::Yes, TMessageResult::Yes},
      {TMessageIcon::Information, TMessageButtons::YesNoCancel, QMessageBox::Information,
       QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel, QMessageBox::No,
       TMessageResult::No},
      {TMessageIcon::None, TMessageButtons::OK, QMessageBox::NoIcon, QMessageBox::Ok,
       QMessageBox::Ok, TMessageResult::OK},
  };
  for (const TCase& c : cases) {
    TSeenBox seen;
    AnswerNextBox(c.clicked, seen);
    const TMessageResult result =
        services.MessageBox(QStringLiteral("Text"), QStringLiteral("Caption"), c.icon, c.buttons);
    EXPECT_EQ(result, c.result);
    EXPECT_EQ(seen.icon, c.shownIcon);
    EXPECT_EQ(seen.buttons, c.shownButtons);
    EXPECT_EQ(seen.caption, QStringLiteral("Caption"));
    EXPECT_EQ(seen.text, QStringLiteral("Text"));
  }
}

Qt::CursorShape OverrideShape() {
  const QCursor* cursor = QGuiApplication::overrideCursor();
  return cursor ? cursor->shape() : Qt::BitmapCursor;  // BitmapCursor: none set
}

TEST(QtUIServices, BusyCursorNestsAndLeavesOtherOverridesAlone) {
  QGuiApplication::setOverrideCursor(Qt::PointingHandCursor);
  {
    TQtUIServices services;
    services.SetBusyCursor(false);  // no "on" yet: the other override stays
    EXPECT_EQ(OverrideShape(), Qt::PointingHandCursor);
    services.SetBusyCursor(true);
    services.SetBusyCursor(true);
    EXPECT_EQ(OverrideShape(), Qt::WaitCursor);
    services.SetBusyCursor(false);
    EXPECT_EQ(OverrideShape(), Qt::WaitCursor);
    services.SetBusyCursor(false);
    EXPECT_EQ(OverrideShape(), Qt::PointingHandCursor);
    services.SetBusyCursor(true);
  }  // the services take their cursor back when they go
  EXPECT_EQ(OverrideShape(), Qt::PointingHandCursor);
  QGuiApplication::restoreOverrideCursor();
  EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST(QtUIServices, ClipboardHoldsDataUntilEmptied) {
  TQtUIServices services;
  services.SetClipboardText(QStringLiteral("0000 006D"));
  EXPECT_TRUE(services.ClipboardHoldsData());
  EXPECT_EQ(services.ClipboardText(), QStringLiteral("0000 006D"));
  services.EmptyClipboard();
  EXPECT_FALSE(services.ClipboardHoldsData());
  EXPECT_TRUE(services.ClipboardText().isEmpty());
}

}  // namespace
}  // namespace norva
