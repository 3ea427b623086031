// norva-sim: an amplifier on a pseudo-terminal and a TCP port, steered by lines on standard input.
#include <Simulation/DeviceSimulator.h>

#include <NorvaGlobal/Vocabulary.h>
#include <NorvaGlobal/Zones.h>

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QSocketNotifier>
#include <QTextStream>
#include <QTimer>

#include <unistd.h>

namespace {

using norva::sim::TDeviceSimulator;

const char* const ControlHelp =
    "Commands on standard input, one per line:\n"
    "  keypress ZONE KEY [REPEATS]   send a key press from a keypad in ZONE (0-95)\n"
    "  status ZONE|all               send the status reports of a zone, or of all 96\n"
    "  burst COUNT                   send COUNT numbered packets as fast as the links take them\n"
    "  silent on|off                 stop or resume answering (received bytes are still read)\n"
    "  hangup                        close the serial line and drop TCP clients\n"
    "  busy on|off                   accept TCP connections and close them at once (or stop)\n"
    "  quit                          exit\n";

std::uint8_t ZoneByte(const QString& text, bool& ok) {
  const int zone = text.toInt(&ok);
  ok = ok && zone >= 0 && zone <= norva::MaxZone;
  return norva::EncodeZone(static_cast<std::int8_t>(zone), false, false);
}

// Runs one control line; returns an error text, or nothing when it was understood.
QString Control(TDeviceSimulator& sim, const QString& line) {
  const QStringList words = line.simplified().split(u' ', Qt::SkipEmptyParts);
  if (words.isEmpty()) return {};
  const QString& verb = words[0];
  bool ok = true;
  if (verb == "keypress" && (words.size() == 3 || words.size() == 4)) {
    const std::uint8_t zone = ZoneByte(words[1], ok);
    const int key = words[2].toInt(&ok);
    const int repeats = words.size() == 4 ? words[3].toInt() : 0;
    if (ok && key >= 0 && key < 32 && repeats >= 0 && repeats < 8) {
      sim.SendKeypress(zone, static_cast<std::uint8_t>(key), static_cast<std::uint8_t>(repeats));
      return {};
    }
  } else if (verb == "status" && words.size() == 2) {
    const std::uint8_t zone = words[1] == "all" ? norva::NoZoneByte : ZoneByte(words[1], ok);
    if (ok) {
      sim.SendStatus(zone);
      return {};
    }
  } else if (verb == "burst" && words.size() == 2) {
    const int count = words[1].toInt(&ok);
    if (ok && count > 0 && count < (1 << 24)) {
      sim.SendBurst(count);
      return {};
    }
  } else if (verb == "silent" && words.size() == 2 && (words[1] == "on" || words[1] == "off")) {
    sim.SetSilent(words[1] == "on");
    return {};
  } else if (verb == "busy" && words.size() == 2 && (words[1] == "on" || words[1] == "off")) {
    sim.SetBusy(words[1] == "on");
    return {};
  } else if (verb == "hangup" && words.size() == 1) {
    sim.HangUp();
    return {};
  } else if (verb == "quit" && words.size() == 1) {
    QCoreApplication::quit();
    return {};
  }
  return QStringLiteral("not understood: ") + line.trimmed();
}

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication app(argc, argv);
  QCommandLineParser parser;
  parser.setApplicationDescription(
      QStringLiteral("Plays an amplifier on the device side of the bus.\n\n") + ControlHelp);
  parser.addHelpOption();
  parser.addOption({"no-pty", "Do not serve a pseudo-terminal."});
  parser.addOption({"no-tcp", "Do not serve TCP."});
  parser.addOption(
      {"tcp-port", "Listen on this port of 127.0.0.1 (default: any free port).", "port", "0"});
  parser.addOption({"seconds", "Exit after this many seconds.", "seconds"});
  parser.process(app);

  QTextStream out(stdout);
  QTextStream err(stderr);
  TDeviceSimulator sim;
  if (!parser.isSet("no-pty")) {
    const QString path = sim.ServePty();
    if (path.isEmpty()) {
      err << "norva-sim: cannot open a pseudo-terminal" << Qt::endl;
      return 1;
    }
    out << "pty: " << path << Qt::endl;
  }
  if (!parser.isSet("no-tcp")) {
    const quint16 port = sim.ServeTcp(static_cast<quint16>(parser.value("tcp-port").toUInt()));
    if (port == 0) {
      err << "norva-sim: cannot listen on TCP port " << parser.value("tcp-port") << Qt::endl;
      return 1;
    }
    out << "tcp: " << port << Qt::endl;
  }
  if (parser.isSet("seconds"))
    QTimer::singleShot(static_cast<int>(parser.value("seconds").toDouble() * 1000), &app,
                       &QCoreApplication::quit);

  QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
  QObject::connect(&input, &QSocketNotifier::activated, [&] {
    char buffer[4096];
    const ssize_t count = read(STDIN_FILENO, buffer, sizeof buffer);
    if (count <= 0) {
      input.setEnabled(false);  // no more control lines; keep serving
      return;
    }
    for (const QString& line : QString::fromLocal8Bit(buffer, count).split(u'\n')) {
      const QString problem = Control(sim, line);
      if (!problem.isEmpty()) err << "norva-sim: " << problem << Qt::endl;
    }
  });
  return app.exec();
}
