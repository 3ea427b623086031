#pragma once
// UI services for tests: records every message box and answers from a script.

#include <NorvaGlobal/UIServices.h>

#include <QList>

#include <deque>

namespace norva {

class TRecordingUIServices : public TUIServices {
 public:
  struct TAskedMessage {
    QString Text;
    QString Caption;
    TMessageIcon Icon;
    TMessageButtons Buttons;
    TMessageResult Answer;
  };

  // The next boxes are answered with these, in order; once used up, boxes get the unattended
  // answer.
  void ScriptAnswers(std::initializer_list<TMessageResult> answers);

  TMessageResult MessageBox(const QString& text, const QString& caption, TMessageIcon icon,
                            TMessageButtons buttons) override;
  void SetBusyCursor(bool busy) override;
  void EmptyClipboard() override;
  bool ClipboardHoldsData() override;
  QString ClipboardText() override;
  void SetClipboardText(const QString& text) override;

  const QList<TAskedMessage>& Messages() const { return mMessages; }
  void ClearMessages() { mMessages.clear(); }
  int BusyDepth() const { return mBusyDepth; }
  int ClipboardEmptied() const { return mClipboardEmptied; }

 private:
  QList<TAskedMessage> mMessages;
  std::deque<TMessageResult> mScript;
  int mBusyDepth = 0;
  int mClipboardEmptied = 0;
  THeadlessUIServices mClipboard;
};

}  // namespace norva
