#include <NorvaGlobal/Gui/QtUIServices.h>

#include <QApplication>
#include <QClipboard>
#include <QGuiApplication>
#include <QMessageBox>
#include <QMimeData>

namespace norva {

namespace {

QMessageBox::Icon IconOf(TMessageIcon icon) {
  switch (icon) {
    case TMessageIcon::None: return QMessageBox::NoIcon;
    case TMessageIcon::Information: return QMessageBox::Information;
    case TMessageIcon::Exclamation: return QMessageBox::Warning;
    case TMessageIcon::Stop: return QMessageBox::Critical;
    case TMessageIcon::Question: return QMessageBox::Question;
  }
  return QMessageBox::NoIcon;
}

QMessageBox::StandardButtons ButtonsOf(TMessageButtons buttons) {
  switch (buttons) {
    case TMessageButtons::OK: return QMessageBox::Ok;
    case TMessageButtons::OKCancel: return QMessageBox::Ok | QMessageBox::Cancel;
    case TMessageButtons::YesNo: return QMessageBox::Yes | QMessageBox::No;
    case TMessageButtons::YesNoCancel:
      return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
  }
  return QMessageBox::Ok;
}

TMessageResult ResultOf(int clicked, TMessageButtons buttons) {
  switch (clicked) {
    case QMessageBox::Ok: return TMessageResult::OK;
    case QMessageBox::Cancel: return TMessageResult::Cancel;
    case QMessageBox::Yes: return TMessageResult::Yes;
    case QMessageBox::No: return TMessageResult::No;
    default: return UnattendedAnswer(buttons);
  }
}

}  // namespace

TQtUIServices::~TQtUIServices() {
  while (mBusyDepth > 0) SetBusyCursor(false);
}

TMessageResult TQtUIServices::MessageBox(const QString& text, const QString& caption,
                                         TMessageIcon icon, TMessageButtons buttons) {
  QMessageBox box(IconOf(icon), caption, text, ButtonsOf(buttons), QApplication::activeWindow());
  return ResultOf(box.exec(), buttons);
}

void TQtUIServices::SetBusyCursor(bool busy) {
  if (busy) {
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    ++mBusyDepth;
  } else if (mBusyDepth > 0) {
    QGuiApplication::restoreOverrideCursor();
    --mBusyDepth;
  }
}

void TQtUIServices::EmptyClipboard() { QGuiApplication::clipboard()->clear(); }

bool TQtUIServices::ClipboardHoldsData() {
  const QMimeData* data = QGuiApplication::clipboard()->mimeData();
  return data && !data->formats().isEmpty();
}

QString TQtUIServices::ClipboardText() { return QGuiApplication::clipboard()->text(); }

void TQtUIServices::SetClipboardText(const QString& text) {
  QGuiApplication::clipboard()->setText(text);
}

}  // namespace norva
