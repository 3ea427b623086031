#pragma once
// Which of the document's keys a text field of the window may keep. A line edit claims Undo, Cut,
// Copy, Paste and Delete for itself even when it has nothing to do with them, and the keypad's
// commands on those keys then never run while the caption or the filter has the keyboard. The
// field keeps such a key only while it has its own use for it: typing not yet taken into the
// document to undo, selected text to cut or copy, text to paste that is no button and no hex code,
// text to delete. Every other key stays the field's.

#include <QObject>

class QKeyEvent;
class QLineEdit;

namespace studio {

class TTextFieldKeys : public QObject {
  Q_OBJECT

 public:
  // Watches the line edits inside `window` (those added later too).
  explicit TTextFieldKeys(QWidget* window);

  // Whether `field` has its own use for the document key `key`.
  static bool FieldKeeps(const QLineEdit& field, const QKeyEvent& key);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QWidget* mWindow;
};

}  // namespace studio
