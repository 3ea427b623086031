#include <NorvaBusComms/NotificationFraming.h>
#include <NorvaGlobal/DebugOutput.h>

namespace norva {

namespace {
enum class TCut { Consumed, Wait, Unknown };

std::uint8_t ByteAt(const QByteArray& buffer, qsizetype index) {
  return static_cast<std::uint8_t>(buffer[index]);
}

bool StartsFrame(std::uint8_t code) {
  switch (code) {
    case usb_log_event_old:
    case usb_ir_learn_event:
    case usb_norva_command:
    case usb_log_event: return true;
    default: return false;
  }
}

TCut CutCommandFrame(const QByteArray& buffer, qsizetype start, TTickCount now,
                     std::vector<TCommandPacket>& packets, qsizetype& length) {
  const qsizetype available = buffer.size() - start;
  if (available < 2) return TCut::Wait;
  const int n = ByteAt(buffer, start + 1);
  length = n + 2;
  if (available < length) return TCut::Wait;
  if (n >= 2) {
    TCommandPacket packet;
    packet.Cmd = ByteAt(buffer, start + 2);
    packet.Zone = ByteAt(buffer, start + 3);
    packet.Timestamp = now;
    packet.Data.reserve(static_cast<std::size_t>(n - 2));
    for (qsizetype i = start + 4; i < start + length; ++i) packet.Data.push_back(ByteAt(buffer, i));
    packets.push_back(std::move(packet));
  }
  return TCut::Consumed;
}

TCut CutLogFrame(const QByteArray& buffer, qsizetype start, const TNotificationHandler& notify,
                 qsizetype& length) {
  const bool oldStyle = ByteAt(buffer, start) == usb_log_event_old;
  qsizetype end = start + 1;
  while (end < buffer.size() && ByteAt(buffer, end) >= 4) ++end;
  qsizetype bodyEnd = end;
  if (end < buffer.size()) {
    // A zero ends the message and belongs to it; a byte 1 to 3 starts the next message.
    if (ByteAt(buffer, end) == 0) bodyEnd = end + 1;
  } else if (!oldStyle) {
    if (end - start <= MaxHeldNotificationBytes) return TCut::Wait;
    DebugOutput(BusLog(),
                QStringLiteral("USB notifications: dropped a log text of %1 bytes without its end")
                    .arg(end - start - 1));
    length = end - start;
    return TCut::Consumed;
  }
  length = bodyEnd - start;
  notify(usb_log_event, buffer.mid(start + 1, bodyEnd - start - 1));
  return TCut::Consumed;
}

// Nothing can be read from `start`: the bytes up to the next known code go.
qsizetype SkipToNextFrame(const QByteArray& buffer, qsizetype start) {
  qsizetype next = start + 1;
  while (next < buffer.size() && !StartsFrame(ByteAt(buffer, next))) ++next;
  return next - start;
}
}  // namespace

void CutNotificationFrames(QByteArray& buffer, TTickCount now, std::vector<TCommandPacket>& packets,
                           const TNotificationHandler& notify) {
  qsizetype start = 0;
  qsizetype skipped = 0;
  while (start < buffer.size()) {
    qsizetype length = 0;
    TCut cut = TCut::Unknown;
    switch (ByteAt(buffer, start)) {
      case usb_norva_command: cut = CutCommandFrame(buffer, start, now, packets, length); break;
      case usb_ir_learn_event:
        if (buffer.size() - start < 3) {
          cut = TCut::Wait;
        } else {
          length = buffer.size() - start;
          notify(usb_ir_learn_event, buffer.mid(start + 1));
          cut = TCut::Consumed;
        }
        break;
      case usb_log_event_old:
      case usb_log_event: cut = CutLogFrame(buffer, start, notify, length); break;
      default: break;
    }
    if (cut == TCut::Wait) break;
    if (cut == TCut::Unknown) {
      length = SkipToNextFrame(buffer, start);
      skipped += length;
    }
    start += length;
  }
  if (skipped > 0)
    DebugOutput(
        BusLog(),
        QStringLiteral("USB notifications: dropped %1 bytes that start no frame").arg(skipped));
  buffer.remove(0, start);
}

QByteArray EncodeCommandFrame(const TCommandPacket& packet) {
  if (packet.Data.size() > MaxCommandFrameData) return {};
  QByteArray frame;
  frame.append(static_cast<char>(usb_norva_command));
  frame.append(static_cast<char>(2 + packet.Data.size()));
  frame.append(static_cast<char>(packet.Cmd));
  frame.append(static_cast<char>(packet.Zone));
  frame.append(packet.GetDataBytes());
  return frame;
}

QByteArray EncodeLogFrame(const QByteArray& text) {
  QByteArray frame(1, static_cast<char>(usb_log_event));
  frame += text;
  frame.append('\0');
  return frame;
}

}  // namespace norva
