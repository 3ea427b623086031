// Data-pipe throughput of a USB link: bytes pushed by the simulated device on pipe 0x82, read by
// the receive worker, handed over to the UI thread and offered to the users through
// ProcessRawData, every byte accounted for.
#include <NorvaBusComms/Devices/BusClient.h>
#include <NorvaBusComms/Devices/BusComms.h>

#include <Simulation/SimulatedUsb.h>

#include <QCoreApplication>

#include <benchmark/benchmark.h>

#include <chrono>

namespace norva {
namespace {

class TRawCounter : public TNorvaBusClient {
 public:
  using TNorvaBusClient::TNorvaBusClient;
  bool ProcessRawData(QByteArray& bytes) override {
    Bytes += bytes.size();
    Checksum += static_cast<unsigned char>(bytes.back());
    bytes.clear();
    return true;
  }
  std::int64_t Bytes = 0;
  std::uint64_t Checksum = 0;
};

void BM_UsbDataPipe(benchmark::State& state) {
  const int transferSize = static_cast<int>(state.range(0));
  constexpr std::int64_t TotalBytes = 16 << 20;
  TSimulatedUsbBackend backend;
  TUsbBackend* previous = SetUsbBackend(&backend);
  auto device = backend.AddDevice("usb:1", "USB\\VID_1781&PID_07DA&REV_0100");
  {
    auto* bus = new TNorvaBusComms(TCommsDeviceTypes{NorvaAmp}, nullptr);
    TRawCounter client(bus);
    client.SetConnected(true);
    if (!client.GetConnected()) state.SkipWithError("the device did not open");
    const QByteArray transfer(transferSize, 'x');
    for (auto _ : state) {
      client.Bytes = 0;
      const auto start = std::chrono::steady_clock::now();
      std::int64_t pushed = 0;
      while (client.Bytes < TotalBytes) {
        // Keep a few transfers queued ahead of the host, as a device's buffers would.
        while (pushed < TotalBytes && device->PendingIn(0x82) < 8) {
          device->PushIn(0x82, transfer);
          pushed += transferSize;
        }
        // Sleep until the worker posts: the UI thread leaves the core to the worker meanwhile.
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
      }
      const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
      state.SetIterationTime(elapsed.count());
    }
    state.SetBytesProcessed(state.iterations() * TotalBytes);
  }
  SetUsbBackend(previous);
}
BENCHMARK(BM_UsbDataPipe)
    ->Arg(64)
    ->Arg(1024)
    ->Arg(16384)
    ->UseManualTime()
    ->Iterations(3)
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace norva
