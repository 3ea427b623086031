// Talking to an amplifier: a bus object on a serial line, a client that receives what the device
// sends, a command sent and its echo awaited, and failures heard through OnError. The device here
// is the simulated amplifier on a pseudo-terminal; with real hardware, pass the port instead.
#include <NorvaBusComms/Devices/BusClient.h>
#include <NorvaBusComms/Devices/BusComms.h>
#include <Simulation/Simulation.h>

#include <QCoreApplication>
#include <QElapsedTimer>

#include <cstdio>

namespace example {

// A client prints every packet; the bus object is freed when its last client lets go.
class TPrintingClient : public norva::TNorvaBusClient {
 public:
  using TNorvaBusClient::TNorvaBusClient;
  int Answers = 0;

  void ProcessCommand(const norva::TCommandPacket& packet) override {
    const bool echo = BusComms()->ProcessingEcho();
    std::printf("received %s%s\n", norva::PacketText(packet).trimmed().constData(),
                echo ? " (echo of ours)" : "");
    if (!echo) ++Answers;
  }
  void ConnectionChange() override { std::printf("connection changed\n"); }
};

// Lets events run until `done` or `ms` passed.
template <typename Predicate>
void PumpUntil(Predicate done, int ms) {
  QElapsedTimer timer;
  timer.start();
  while (!done() && timer.elapsed() < ms)
    QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
}

}  // namespace example

int main(int argc, char** argv) {
  QCoreApplication application(argc, argv);
  norva::sim::TDeviceSimulator amplifier;
  const QString port = amplifier.ServePty();

  auto* bus = new norva::TNorvaBusComms(port, nullptr);  // RS232, talking to an amplifier
  bus->SetOnError([](norva::TNorvaBusComms&, const QString& text, bool& handled) {
    std::fprintf(stderr, "link failure: %s\n", qPrintable(text));
    handled = true;  // told here; no message box
  });
  example::TPrintingClient client(bus);
  client.SetConnected(true);
  if (!client.GetConnected()) return 1;

  // A status request for zone 5: the device echoes it, then answers with four status reports.
  bus->SendCmd(norva::BuildCommandPacket(0x03, 5));
  const bool echoed = bus->WaitUntilEchoReceived(2000);
  example::PumpUntil([&] { return client.Answers >= 4; }, 2000);
  std::printf("echo %s, %d answers\n", echoed ? "seen" : "missing", client.Answers);
  return echoed && client.Answers >= 4 ? 0 : 1;
}
