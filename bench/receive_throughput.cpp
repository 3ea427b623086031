// Receive throughput of the bus packet engine: text parsing, status-report coalescing, echo
// recognition and delivery to users, fed in 1024-byte arrivals as a serial receive worker delivers
// them. The mix per cycle: status reports for many zones, key presses, acknowledgements and the
// echoes of the commands sent in that cycle.
#include <NorvaBusComms/NorvaBusComms.h>
#include <NorvaGlobal/NorvaGlobal.h>

#include <benchmark/benchmark.h>

#include <vector>

namespace norva {
namespace {

constexpr int SendsPerCycle = 8;
constexpr int LinesPerCycle = 400;
constexpr int ArrivalBytes = 1024;

// An open serial link whose transmit side discards everything.
class TDiscardTransport : public TBusTransport {
 public:
  bool IsOpen() const override { return true; }
  bool SendPacketText(const QByteArray&) override { return true; }
  bool EchoesPackets(TCommsDeviceType) const override { return true; }
  void Send(const TTXItem&) override {}
  bool Sending() const override { return false; }
  void TakeReceivedBytes(int, QByteArray&) override {}
  void FlushReceived() override {}
};

class TCountingUser : public TNorvaBusUser {
 public:
  explicit TCountingUser(const TNorvaPacketEngine& engine) : mEngine(engine) {}
  void ProcessCommand(const TCommandPacket& packet) override {
    ++Delivered;
    Echoes += mEngine.ProcessingEcho() ? 1 : 0;
    benchmark::DoNotOptimize(packet.Data.data());
  }
  std::int64_t Delivered = 0;
  std::int64_t Echoes = 0;

 private:
  const TNorvaPacketEngine& mEngine;
};

TCommandPacket SentCommand(int i) {
  return BuildCommandPacket(0x12, EncodeZone(static_cast<std::int8_t>(i * 11 % 96), false, false),
                            {i, 0x40});
}

QByteArray CycleText() {
  QByteArray text;
  for (int i = 0; i < LinesPerCycle; ++i) {
    const auto zone = EncodeZone(static_cast<std::int8_t>(i * 7 % 96), false, false);
    TCommandPacket packet;
    switch (i % 10) {
      case 6:
      case 7: packet = BuildCommandPacket(KeypressCommand, zone, {i % 32}); break;
      case 8:
        packet = i / 10 < SendsPerCycle ? SentCommand(i / 10) : BuildCommandPacket(0x92, zone, {1});
        break;
      case 9: packet = BuildCommandPacket(0x8B, zone, {i % 32}); break;
      default:
        packet = BuildCommandPacket(static_cast<TCommand>(4 + i % 4), zone, {i % 256, 0x3C, 0x0A});
    }
    text += PacketText(packet);
  }
  return text;
}

void BM_ReceiveMix(benchmark::State& state) {
  TDiscardTransport transport;
  TNorvaPacketEngine engine;
  engine.SetTransport(&transport);
  engine.SetSelectedCommsInterface(RS232Interface);
  engine.SetConnectedDeviceType(NorvaAmp);
  TCountingUser user(engine);
  engine.AddUser(&user);
  const QByteArray text = CycleText();

  for (auto _ : state) {
    for (int i = 0; i < SendsPerCycle; ++i) engine.SendCmd(SentCommand(i));
    for (qsizetype offset = 0; offset < text.size(); offset += ArrivalBytes)
      engine.ReceiveBytes(SerialRXKind,
                          QByteArrayView(text.constData() + offset,
                                         std::min<qsizetype>(ArrivalBytes, text.size() - offset)));
  }
  state.SetItemsProcessed(state.iterations() * LinesPerCycle);
  state.SetBytesProcessed(state.iterations() * text.size());
  state.counters["delivered/cycle"] =
      static_cast<double>(user.Delivered) / static_cast<double>(state.iterations());
  state.counters["echoes/cycle"] =
      static_cast<double>(user.Echoes) / static_cast<double>(state.iterations());
}
BENCHMARK(BM_ReceiveMix);

// The text parser alone, for comparison.
void BM_ParseBusText(benchmark::State& state) {
  const QByteArray text = CycleText();
  std::vector<TCommandPacket> packets;
  for (auto _ : state) {
    packets.clear();
    benchmark::DoNotOptimize(ParseBusText(text, 0, packets));
  }
  state.SetItemsProcessed(state.iterations() * LinesPerCycle);
}
BENCHMARK(BM_ParseBusText);

// USB notification frames carrying the same packets.
void BM_NotificationFrames(benchmark::State& state) {
  std::vector<TCommandPacket> source;
  ParseBusText(CycleText(), 0, source);
  QByteArray frames;
  for (const TCommandPacket& packet : source) {
    frames.append(char(usb_norva_command));
    frames.append(char(2 + packet.Data.size()));
    frames.append(char(packet.Cmd));
    frames.append(char(packet.Zone));
    frames.append(packet.GetDataBytes());
  }
  std::vector<TCommandPacket> packets;
  const TNotificationHandler ignore = [](TUSBNotification, const QByteArray&) {};
  for (auto _ : state) {
    QByteArray buffer = frames;
    packets.clear();
    CutNotificationFrames(buffer, 0, packets, ignore);
    benchmark::DoNotOptimize(packets.data());
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(source.size()));
}
BENCHMARK(BM_NotificationFrames);

}  // namespace
}  // namespace norva
