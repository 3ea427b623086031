// USB notification frames: the framing alone, then through the engine in arrivals of varying size.
// What is held for the next arrival never exceeds its bound.
#include <NorvaBusComms/NorvaBusComms.h>

#include <cstdlib>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace norva;
  const QByteArray input(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));

  QByteArray buffer = input;
  std::vector<TCommandPacket> packets;
  qsizetype notified = 0;
  CutNotificationFrames(buffer, 0, packets, [&](TUSBNotification kind, const QByteArray& body) {
    if (kind != usb_log_event && kind != usb_ir_learn_event) std::abort();
    notified += body.size();
  });
  // Nothing is invented: what was delivered and what is left never exceed the input.
  if (buffer.size() + notified > input.size()) std::abort();
  if (!input.endsWith(buffer)) std::abort();
  if (buffer.size() > MaxHeldNotificationBytes) std::abort();
  for (const TCommandPacket& packet : packets)
    for (std::int32_t value : packet.Data)
      if (value < 0 || value > 255) std::abort();

  TNorvaPacketEngine engine;
  engine.SetSelectedCommsInterface(USBInterface);
  engine.SetConnectedDeviceType(NorvaAmp);
  const qsizetype step = size ? 1 + data[0] % 16 : 1;
  for (qsizetype offset = 0; offset < input.size(); offset += step)
    engine.ReceiveBytes(NotificationPipeRXKind, QByteArrayView(input).sliced(
                                                    offset, std::min(step, input.size() - offset)));
  const QByteArray& left = engine.PendingNotificationData();
  if (left.size() > MaxHeldNotificationBytes || !input.endsWith(left)) std::abort();
  return 0;
}
