#include <Testing/RecordingUIServices.h>

namespace norva {

void TRecordingUIServices::ScriptAnswers(std::initializer_list<TMessageResult> answers) {
  mScript.insert(mScript.end(), answers.begin(), answers.end());
}

TMessageResult TRecordingUIServices::MessageBox(const QString& text, const QString& caption,
                                                TMessageIcon icon, TMessageButtons buttons) {
  TMessageResult answer = UnattendedAnswer(buttons);
  if (!mScript.empty()) {
    answer = mScript.front();
    mScript.pop_front();
  }
  mMessages.append({text, caption, icon, buttons, answer});
  return answer;
}

void TRecordingUIServices::SetBusyCursor(bool busy) { mBusyDepth += busy ? 1 : -1; }

void TRecordingUIServices::EmptyClipboard() {
  ++mClipboardEmptied;
  mClipboard.EmptyClipboard();
}

bool TRecordingUIServices::ClipboardHoldsData() { return mClipboard.ClipboardHoldsData(); }

QString TRecordingUIServices::ClipboardText() { return mClipboard.ClipboardText(); }

void TRecordingUIServices::SetClipboardText(const QString& text) {
  mClipboard.SetClipboardText(text);
}

}  // namespace norva
