// From the simulator's write to the client's ProcessCommand, over a pseudo-terminal and over
// loopback TCP: latency per packet (median and 99th percentile) and sustained throughput with
// every packet accounted for. The whole real path runs: receive worker, posted message, parser,
// echo check, delivery.
#include <NorvaBusComms/Devices/BusClient.h>
#include <NorvaBusComms/Devices/BusComms.h>

#include <Simulation/DeviceSimulator.h>

#include <QCoreApplication>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <vector>

namespace norva {
namespace {

using Clock = std::chrono::steady_clock;

// Counts burst packets and checks that their sequence numbers arrive complete and in order.
class TCountingClient : public TNorvaBusClient {
 public:
  using TNorvaBusClient::TNorvaBusClient;
  void ProcessCommand(const TCommandPacket& packet) override {
    LastArrival = Clock::now();
    if (packet.Cmd != sim::BurstCommand || packet.Data.size() != 3) return;
    const int sequence = packet.Data[0] << 16 | packet.Data[1] << 8 | packet.Data[2];
    if (sequence != Expected) OutOfOrder = true;
    Expected = sequence + 1;
    ++Received;
  }
  Clock::time_point LastArrival;
  int Received = 0;
  int Expected = 0;
  bool OutOfOrder = false;
};

struct TLink {
  sim::TDeviceSimulator Simulator;
  TNorvaBusComms* Bus = nullptr;
  std::unique_ptr<TCountingClient> Client;

  explicit TLink(bool tcp) {
    const QString path =
        tcp ? QStringLiteral("127.0.0.1:%1").arg(Simulator.ServeTcp()) : Simulator.ServePty();
    Bus = new TNorvaBusComms(tcp ? EthernetInterface : USBInterface, {NorvaAmp}, path, nullptr);
    Client = std::make_unique<TCountingClient>(Bus);
    Client->SetConnected(true);
    while (tcp && !Bus->EthernetConnected()) QCoreApplication::processEvents();
    for (int i = 0; i < 20; ++i)
      QCoreApplication::processEvents();  // the server takes the client in
  }
  bool Ready() const { return Client->GetConnected(); }
};

void BM_Latency(benchmark::State& state) {
  TLink link(state.range(0) == 1);
  if (!link.Ready()) return state.SkipWithError("link did not open");
  std::vector<double> micros;
  for (auto _ : state) {
    const int before = link.Client->Received;
    link.Client->Expected = 0;
    const auto sent = Clock::now();
    link.Simulator.SendPacket(BuildCommandPacket(sim::BurstCommand, 0, {0, 0, 0}));
    while (link.Client->Received == before) QCoreApplication::processEvents();
    const std::chrono::duration<double> elapsed = link.Client->LastArrival - sent;
    micros.push_back(elapsed.count() * 1e6);
    state.SetIterationTime(elapsed.count());
  }
  std::sort(micros.begin(), micros.end());
  state.counters["median_us"] = micros[micros.size() / 2];
  state.counters["p99_us"] = micros[std::min(micros.size() - 1, micros.size() * 99 / 100)];
}
BENCHMARK(BM_Latency)->Arg(0)->Arg(1)->ArgName("tcp")->UseManualTime()->Iterations(2000);

void BM_Throughput(benchmark::State& state) {
  constexpr int BurstSize = 100000;
  TLink link(state.range(0) == 1);
  if (!link.Ready()) return state.SkipWithError("link did not open");
  for (auto _ : state) {
    link.Client->Received = 0;
    link.Client->Expected = 0;
    link.Client->OutOfOrder = false;
    const auto start = Clock::now();
    link.Simulator.SendBurst(BurstSize);
    const auto deadline = start + std::chrono::seconds(30);
    while (link.Client->Received < BurstSize && Clock::now() < deadline)
      QCoreApplication::processEvents();
    const std::chrono::duration<double> elapsed = link.Client->LastArrival - start;
    state.SetIterationTime(elapsed.count());
    if (link.Client->Received != BurstSize || link.Client->OutOfOrder)
      return state.SkipWithError("packets lost or out of order");
  }
  state.SetItemsProcessed(state.iterations() * BurstSize);
}
BENCHMARK(BM_Throughput)
    ->Arg(0)
    ->Arg(1)
    ->ArgName("tcp")
    ->UseManualTime()
    ->Iterations(5)
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace norva
