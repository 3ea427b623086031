// Received bus text: the parser alone, then the whole receive path with the input cut into
// arrivals at the positions its first byte chooses. Checks what must hold for any bytes.
#include <NorvaBusComms/NorvaBusComms.h>

#include <cstdlib>
#include <vector>

namespace {
class TCheckingUser : public norva::TNorvaBusUser {
 public:
  void ProcessCommand(const norva::TCommandPacket& packet) override {
    for (std::int32_t value : packet.Data)
      if (value < 0 || value > 255) std::abort();
  }
};
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace norva;
  const QByteArrayView text(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));

  std::vector<TCommandPacket> packets;
  const qsizetype consumed = ParseBusText(text, 0, packets);
  if (consumed < 0 || consumed > text.size()) std::abort();
  if (consumed > 0 && text[consumed - 1] != '\n') std::abort();
  if (text.sliced(consumed).contains('\n')) std::abort();

  TNorvaPacketEngine engine;
  engine.SetSelectedCommsInterface(RS232Interface);
  engine.SetConnectedDeviceType(NorvaAmp);
  TCheckingUser user;
  engine.AddUser(&user);
  const qsizetype step = size ? 1 + data[0] % 64 : 1;
  for (qsizetype offset = 0; offset < text.size(); offset += step)
    engine.ReceiveBytes(SerialRXKind, text.sliced(offset, std::min(step, text.size() - offset)));
  // Whatever is left is exactly the unfinished last line, unless that is too long to be one.
  const QByteArrayView tail = text.sliced(consumed);
  const QByteArrayView expected = tail.size() <= MaxBusTextLine ? tail : QByteArrayView();
  if (engine.PendingRawData() != expected) std::abort();
  if (engine.InProcessCmd() != 0) std::abort();
  return 0;
}
