#include "TextFieldKeys.h"

#include "KeypadView.h"

#include <IR/IRStream.h>
#include <NorvaGlobal/UIServices.h>

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>

namespace studio {

TTextFieldKeys::TTextFieldKeys(QWidget* window) : QObject(window), mWindow(window) {
  qApp->installEventFilter(this);
}

bool TTextFieldKeys::FieldKeeps(const QLineEdit& field, const QKeyEvent& key) {
  if (key.matches(QKeySequence::Undo) || key.matches(QKeySequence::Redo)) return field.isModified();
  if (key.matches(QKeySequence::Cut) || key.matches(QKeySequence::Copy))
    return field.hasSelectedText();
  if (key.matches(QKeySequence::Paste))
    return !field.isReadOnly() && !norva::UIServices().ClipboardText().isEmpty() &&
           !TKeypadView::ButtonInClipboard() && !norva::HexCodeInClipboard();
  if (key.matches(QKeySequence::Delete)) return !field.isReadOnly() && !field.text().isEmpty();
  return true;
}

bool TTextFieldKeys::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::ShortcutOverride) return false;
  const auto* field = qobject_cast<QLineEdit*>(watched);
  if (!field || !mWindow->isAncestorOf(field)) return false;
  if (FieldKeeps(*field, *static_cast<QKeyEvent*>(event))) return false;
  // Left unclaimed, the key goes to the window's command on it.
  event->ignore();
  return true;
}

}  // namespace studio
