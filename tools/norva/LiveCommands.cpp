// norva ports / monitor / send / keypress: talking to a device (or norva-sim) for real.
#include "LinkWatch.h"
#include "Subcommands.h"
#include "TracePrinter.h"

#include <NorvaBusComms/Devices/BusClient.h>
#include <NorvaBusComms/Devices/BusComms.h>
#include <NorvaGlobal/NorvaGlobal.h>

#include <Simulation/UsbAmplifier.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QThread>
#include <QTimer>

#include <functional>
#include <vector>

namespace norva::cli {

namespace {

constexpr int ConnectTimeoutMs = 3000;
constexpr int DefaultEchoTimeoutMs = 2000;
constexpr int DefaultListenMs = 300;
constexpr int CheckConnectionsEveryMs = 500;

// A connection that could not be made, or failed on the way: reported as the library words it,
// exit code 1.
class EConnection : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The library's failure texts on one line (they may quote what the user typed).
QString OneLine(const QString& text) { return Escaped(MessageOnOneLine(text)); }

void PumpWhile(const std::function<bool()>& condition, int timeoutMs) {
  QElapsedTimer timer;
  timer.start();
  while (condition() && timer.elapsed() < timeoutMs) {
    QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    QThread::msleep(1);
  }
}

struct TLinkOptions {
  TCommsInterface Link = NoCommsInterface;
  QString Path;            // for USB: empty picks the first recognised device
  bool Simulated = false;  // USB: talk to the simulated amplifier in this process
};

// Takes --serial DEV [--usb-serial], --tcp HOST:PORT, or --usb [--usb-device PATH] [--simulated].
TLinkOptions TakeLinkOptions(TArguments& arguments) {
  const auto serial = arguments.TakeOption(QStringLiteral("--serial"));
  const bool usbSerial = arguments.TakeFlag(QStringLiteral("--usb-serial"));
  const auto tcp = arguments.TakeOption(QStringLiteral("--tcp"));
  const bool usb = arguments.TakeFlag(QStringLiteral("--usb"));
  const auto usbDevice = arguments.TakeOption(QStringLiteral("--usb-device"));
  const bool simulated = arguments.TakeFlag(QStringLiteral("--simulated"));
  if (int(serial.has_value()) + int(tcp.has_value()) + int(usb) != 1)
    throw EUsage(QStringLiteral("name one link: --serial DEVICE, --tcp HOST:PORT or --usb"));
  if (usbSerial && !serial) throw EUsage(QStringLiteral("--usb-serial goes with --serial"));
  if ((usbDevice || simulated) && !usb)
    throw EUsage(QStringLiteral("--usb-device and --simulated go with --usb"));
  // Anything else would be taken for a native USB device.
  if (usbSerial && !serial->startsWith(u'/'))
    throw EUsage(QStringLiteral("--usb-serial needs the adapter's device path, starting with /"));
  if (tcp) return {EthernetInterface, *tcp};
  if (usb) return {USBInterface, usbDevice.value_or(QString()), simulated};
  return {usbSerial ? USBInterface : RS232Interface, *serial};
}

// The simulated USB amplifier, plugged into this process for as long as it lives. It announces
// itself and presses a key every second, so that a monitor has something to show.
class TSimulatedUsbSession {
 public:
  TSimulatedUsbSession() : mPrevious(SetUsbBackend(&mBackend)), mAmplifier(mBackend) {
    QObject::connect(&mKeys, &QTimer::timeout, [this] { mAmplifier.SendKeypress(5, 3, 0); });
  }
  ~TSimulatedUsbSession() { SetUsbBackend(mPrevious); }
  TSimulatedUsbSession(const TSimulatedUsbSession&) = delete;
  TSimulatedUsbSession& operator=(const TSimulatedUsbSession&) = delete;

  void Start() {
    mAmplifier.SendLog("Amplifier started");
    mKeys.start(1000);
  }

 private:
  TSimulatedUsbBackend mBackend;
  TUsbBackend* mPrevious;
  sim::TUsbAmplifier mAmplifier;
  QTimer mKeys;
};

// What the open link is, for the line that says which device the tool talks to.
QString LinkDescription(const TNorvaBusComms& bus) {
  if (bus.ConnectedCommsInterface() == EthernetInterface)
    return QStringLiteral("connected to ") + bus.DevicePath();
  QString text = QStringLiteral("opened ") + bus.DevicePath();
  if (bus.ConnectedUSBDeviceType() != NoCommsDevice)
    text += QStringLiteral(" (") + EnumName(bus.ConnectedUSBDeviceType()) + u')';
  return text;
}

TNorvaBusComms* OpenLink(const TLinkOptions& options, QStringList& failures) {
  const TCommsDeviceTypes types =
      options.Link == USBInterface ? RecognisedUsbDeviceTypes() : TCommsDeviceTypes{NorvaAmp};
  auto* bus = new TNorvaBusComms(options.Link, types, options.Path, nullptr);
  // Every failure the library reports, while opening and later, is the tool's to tell.
  bus->SetOnError([&failures](TNorvaBusComms&, const QString& text, bool& handled) {
    failures << OneLine(text);
    handled = true;
  });
  bus->SetConnected(true);
  if (options.Link == EthernetInterface && failures.isEmpty())
    PumpWhile([bus] { return !bus->EthernetConnected(); }, ConnectTimeoutMs);
  if (failures.isEmpty() && bus->LinkUp()) {
    QTextStream(stderr) << LinkDescription(*bus) << Qt::endl;
    return bus;
  }
  delete bus;
  if (failures.isEmpty())
    failures << (options.Path.isEmpty()
                     ? QStringLiteral("no recognised USB device found")
                     : QStringLiteral("cannot connect to ") + Quoted(options.Path));
  throw EConnection(failures.front().toStdString());
}

// A run over an open link: what the subcommand does, and the failures the library reported.
struct TLinkSession {
  TNorvaBusComms& Bus;
  const QStringList& Failures;
};

int RunWithLink(const TLinkOptions& options, const std::function<int(TLinkSession&)>& run) {
  try {
    std::unique_ptr<TSimulatedUsbSession> simulation;  // outlives the bus and its workers
    if (options.Simulated) simulation = std::make_unique<TSimulatedUsbSession>();
    QStringList failures;
    TNorvaBusClient keeper(OpenLink(options, failures));  // the bus lives as long as this client
    if (simulation) simulation->Start();
    TLinkSession session{*keeper.BusComms(), failures};
    return run(session);
  } catch (const EConnection& error) {
    QTextStream(stderr) << "norva: " << error.what() << Qt::endl;
    return 1;
  }
}

// Sends one packet, waits for its echo where the link echoes, and prints what comes back. A link
// that failed or dropped on the way fails the exchange: the device may never have read the packet,
// so "sent" is printed only for an exchange whose link held. The answers are held back until then
// and follow it.
int SendAndListen(TLinkSession& session, const TCommandPacket& packet, int echoTimeoutMs,
                  int listenMs, QTextStream& out) {
  TNorvaBusComms& bus = session.Bus;
  QString answers;
  QTextStream answersOut(&answers);
  TTracePrinter printer(bus, answersOut, false);
  bus.AddUser(&printer);
  TLinkWatch watch(bus, nullptr);
  bus.SendCmd(packet);
  const bool echoed = bus.WaitUntilEchoReceived(static_cast<TTickCount>(echoTimeoutMs));
  PumpWhile([&bus] { return bus.Sending(); }, echoTimeoutMs);
  PumpWhile([] { return true; }, listenMs);
  watch.Check();
  bus.RemoveUser(&printer);
  answersOut.flush();
  const bool linkHeld = session.Failures.isEmpty() && watch.Drops() == 0;
  if (linkHeld) out << "sent " << PacketText(packet).trimmed() << '\n';
  out << answers << Qt::flush;
  if (!session.Failures.isEmpty()) {
    QTextStream(stderr) << "norva: " << session.Failures.front() << Qt::endl;
    return 1;
  }
  if (watch.Drops() > 0) {
    QTextStream(stderr) << "norva: the device closed the connection; the packet may not have "
                           "arrived"
                        << Qt::endl;
    return 1;
  }
  if (!echoed) {
    QTextStream(stderr) << "norva: no echo within " << echoTimeoutMs << " ms" << Qt::endl;
    return 3;
  }
  return 0;
}

int TimeoutOption(TArguments& arguments, const QString& option, int fallback) {
  const auto value = arguments.TakeOption(option);
  return value ? ParseInteger(*value, 0, 600000, option) : fallback;
}

}  // namespace

int RunUsb(TArguments& arguments, QTextStream& out) {
  const bool simulated = arguments.TakeFlag(QStringLiteral("--simulated"));
  arguments.Positional();
  std::unique_ptr<TSimulatedUsbSession> simulation;
  if (simulated) simulation = std::make_unique<TSimulatedUsbSession>();
  const TUsbDeviceSearch search = SearchUsbDevices(RecognisedUsbDeviceTypes());
  if (!search.Result.Ok()) {
    QTextStream(stderr) << "norva: " << OneLine(search.Result.Text) << Qt::endl;
    return 1;
  }
  for (const TUSBDevice& device : search.Devices)
    out << device.Path << '\t' << EnumName(device.DeviceType) << '\t' << device.HardwareId << '\n';
  if (search.Devices.empty()) QTextStream(stderr) << "no recognised USB devices found" << Qt::endl;
  return 0;
}

int RunPorts(TArguments& arguments, QTextStream& out) {
  arguments.Positional();
  const QStringList ports = TNorvaBusComms::GetComPorts();
  for (const QString& port : ports) out << port << '\n';
  if (ports.isEmpty()) QTextStream(stderr) << "no serial ports found" << Qt::endl;
  return 0;
}

int RunMonitor(TArguments& arguments, QTextStream& out) {
  const auto count = arguments.TakeOption(QStringLiteral("--count"));
  const int limit = count ? ParseInteger(*count, 1, 1 << 30, QStringLiteral("--count")) : 0;
  const auto seconds = arguments.TakeOption(QStringLiteral("--seconds"));
  const int durationMs =
      seconds ? ParseInteger(*seconds, 1, 86400, QStringLiteral("--seconds")) * 1000 : 0;
  TLinkOptions link = TakeLinkOptions(arguments);
  const QStringList rest = arguments.Positional();
  if (rest.size() > 1 || (rest.size() == 1 && link.Link != USBInterface))
    throw EUsage(
        QStringLiteral("monitor takes no arguments besides the link (--usb may name a device)"));
  if (!rest.isEmpty()) link.Path = rest.front();
  return RunWithLink(link, [&](TLinkSession& session) {
    TNorvaBusComms& bus = session.Bus;
    TTracePrinter printer(bus, out, true);
    bus.AddUser(&printer);
    TLinkWatch watch(bus, [](bool up) {
      QTextStream(stderr) << (up ? "connected again" : "connection lost; waiting for the device")
                          << Qt::endl;
    });
    QElapsedTimer timer;
    timer.start();
    qint64 lastCheck = 0;
    qsizetype failuresTold = 0;
    while ((limit == 0 || printer.Packets() < limit) &&
           (durationMs == 0 || timer.elapsed() < durationMs)) {
      QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
      QThread::msleep(1);
      for (; failuresTold < session.Failures.size(); ++failuresTold)
        QTextStream(stderr) << "norva: " << session.Failures[failuresTold] << Qt::endl;
      if (timer.elapsed() - lastCheck < CheckConnectionsEveryMs) continue;
      lastCheck = timer.elapsed();
      bus.CheckConnections();  // comes back by itself when the device returns
      watch.Check();
    }
    bus.RemoveUser(&printer);
    return 0;
  });
}

int RunSend(TArguments& arguments, QTextStream& out) {
  const int echoTimeout =
      TimeoutOption(arguments, QStringLiteral("--timeout"), DefaultEchoTimeoutMs);
  const int listen = TimeoutOption(arguments, QStringLiteral("--listen"), DefaultListenMs);
  const TLinkOptions link = TakeLinkOptions(arguments);
  const TCommandPacket packet = TakePacket(arguments, QStringLiteral("send"));
  return RunWithLink(link, [&](TLinkSession& session) {
    return SendAndListen(session, packet, echoTimeout, listen, out);
  });
}

int RunKeypress(TArguments& arguments, QTextStream& out) {
  const int echoTimeout =
      TimeoutOption(arguments, QStringLiteral("--timeout"), DefaultEchoTimeoutMs);
  const int listen = TimeoutOption(arguments, QStringLiteral("--listen"), DefaultListenMs);
  const TLinkOptions link = TakeLinkOptions(arguments);
  const QStringList values = arguments.Positional();
  if (values.size() < 2 || values.size() > 3)
    throw EUsage(QStringLiteral("keypress needs ZONE KEY [REPEATS]"));
  const int zone = ParseInteger(values[0], 0, MaxZone, QStringLiteral("ZONE"));
  const int key = ParseInteger(values[1], 0, 31, QStringLiteral("KEY"));
  const int repeats =
      values.size() == 3 ? ParseInteger(values[2], 0, 7, QStringLiteral("REPEATS")) : 0;
  const TCommandPacket packet =
      BuildCommandPacket(KeypressCommand, EncodeZone(static_cast<std::int8_t>(zone), false, false),
                         {repeats * 32 | key});
  return RunWithLink(link, [&](TLinkSession& session) {
    return SendAndListen(session, packet, echoTimeout, listen, out);
  });
}

}  // namespace norva::cli
