#include "TracePrinter.h"

#include <NorvaGlobal/EnumNames.h>

namespace norva::cli {

namespace {
// A log event as its text; anything else as hex bytes.
QString DescribeNotification(TUSBNotification kind, const QByteArray& data) {
  if (kind == usb_log_event) {
    QByteArray text = data;
    if (text.endsWith('\0')) text.chop(1);
    return QStringLiteral("\"%1\"").arg(QString::fromLatin1(text));
  }
  return QString::fromLatin1(data.toHex(' ').toUpper());
}
}  // namespace

void TTracePrinter::ProcessCommand(const TCommandPacket& packet) {
  mOut << ReceiveTraceLine(packet, mEngine.ProcessingEcho(), packet.Timestamp);
  EndLine();
  ++mPackets;
}

bool TTracePrinter::ProcessNotification(TUSBNotification kind, const QByteArray& data) {
  mOut << GetTickCount() << " Notification: " << EnumName(kind) << ' '
       << DescribeNotification(kind, data);
  EndLine();
  ++mNotifications;
  return false;
}

void TTracePrinter::EndLine() {
  if (mLive)
    mOut << Qt::endl;
  else
    mOut << '\n';
}

}  // namespace norva::cli
