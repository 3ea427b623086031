#include <NorvaGlobal/UIServices.h>

#include <QRegularExpression>
#include <QTextStream>

#include <atomic>

namespace norva {

TMessageResult UnattendedAnswer(TMessageButtons buttons) {
  switch (buttons) {
    case TMessageButtons::OK:
    case TMessageButtons::OKCancel: return TMessageResult::OK;
    case TMessageButtons::YesNo: return TMessageResult::No;
    case TMessageButtons::YesNoCancel: return TMessageResult::Cancel;
  }
  return TMessageResult::Cancel;
}

QString MessageOnOneLine(const QString& text) {
  static const QRegularExpression lineBreak(QStringLiteral("\r\n|\r|\n"));
  QString joined;
  bool paragraphEnded = false;
  for (const QString& line : text.split(lineBreak)) {
    const QString trimmed = line.trimmed();
    if (trimmed.isEmpty()) {
      paragraphEnded = !joined.isEmpty();
      continue;
    }
    if (!joined.isEmpty()) {
      const bool sentenceEnded = QStringView(u".!?:").contains(joined.back());
      joined += sentenceEnded ? QStringLiteral(" ")
                              : (paragraphEnded ? QStringLiteral(": ") : QStringLiteral("; "));
    }
    joined += trimmed;
    paragraphEnded = false;
  }
  return joined;
}

TMessageResult THeadlessUIServices::MessageBox(const QString& text, const QString& caption,
                                               TMessageIcon /*icon*/, TMessageButtons buttons) {
  QTextStream err(stderr);
  err << caption << ": " << MessageOnOneLine(text) << Qt::endl;
  return UnattendedAnswer(buttons);
}

void THeadlessUIServices::SetBusyCursor(bool /*busy*/) {}

void THeadlessUIServices::EmptyClipboard() {
  mClipboard.clear();
  mClipboardSet = false;
}

bool THeadlessUIServices::ClipboardHoldsData() { return mClipboardSet; }

QString THeadlessUIServices::ClipboardText() { return mClipboard; }

void THeadlessUIServices::SetClipboardText(const QString& text) {
  mClipboard = text;
  mClipboardSet = true;
}

namespace {
THeadlessUIServices& HeadlessServices() {
  static THeadlessUIServices services;
  return services;
}
std::atomic<TUIServices*> gInstalled{nullptr};
}  // namespace

TUIServices& UIServices() {
  TUIServices* installed = gInstalled.load();
  return installed ? *installed : HeadlessServices();
}

TUIServices* SetUIServices(TUIServices* services) { return gInstalled.exchange(services); }

}  // namespace norva
