// norva packet encode / decode: bus text to and from packets, as the receive path reads them.
#include "Subcommands.h"
#include "TracePrinter.h"

#include <NorvaBusComms/NorvaBusComms.h>
#include <NorvaGlobal/NorvaGlobal.h>

#include <QElapsedTimer>
#include <QFile>

#include <vector>

namespace norva::cli {

namespace {

constexpr int DefaultChunk = 1024;  // what one read of a receive worker delivers

QByteArray ReadInput(const QString& path) {
  QFile file;
  const bool isStdin = path.isEmpty() || path == QStringLiteral("-");
  const bool opened = isStdin ? file.open(stdin, QIODevice::ReadOnly)
                              : (file.setFileName(path), file.open(QIODevice::ReadOnly));
  if (!opened)
    throw EUsage(QStringLiteral("cannot read %1: %2").arg(Quoted(path), file.errorString()));
  return file.readAll();
}

// Milliseconds since the decode started stand in for the tick count of each received packet.
QElapsedTimer& DecodeClock() {
  static QElapsedTimer clock;
  return clock;
}
TTickCount DecodeTicks() { return static_cast<TTickCount>(DecodeClock().elapsed()); }

}  // namespace

int RunPacketEncode(TArguments& arguments, QTextStream& out) {
  out << PacketText(TakePacket(arguments, QStringLiteral("packet encode"))).trimmed() << '\n';
  return 0;
}

int RunPacketDecode(TArguments& arguments, QTextStream& out) {
  const bool notifications = arguments.TakeFlag(QStringLiteral("--usb-notifications"));
  const auto chunkOption = arguments.TakeOption(QStringLiteral("--chunk"));
  const int chunk = chunkOption ? ParseInteger(*chunkOption, 1, 1 << 20, QStringLiteral("--chunk"))
                                : DefaultChunk;
  const QStringList files = arguments.Positional();
  if (files.size() > 1) throw EUsage(QStringLiteral("packet decode reads one FILE"));
  const QByteArray input = ReadInput(files.value(0));

  TNorvaPacketEngine engine;
  engine.SetSelectedCommsInterface(notifications ? USBInterface : RS232Interface);
  engine.SetConnectedDeviceType(NorvaAmp);
  TTracePrinter printer(engine, out, false);
  engine.AddUser(&printer);

  DecodeClock().start();
  const TTickSource previous = SetTickSource(&DecodeTicks);
  const int kind = notifications ? NotificationPipeRXKind : SerialRXKind;
  for (qsizetype offset = 0; offset < input.size(); offset += chunk)
    engine.ReceiveBytes(kind, QByteArrayView(input.constData() + offset,
                                             std::min<qsizetype>(chunk, input.size() - offset)));
  SetTickSource(previous);
  out.flush();

  const qsizetype left =
      notifications ? engine.PendingNotificationData().size() : engine.PendingRawData().size();
  QTextStream err(stderr);
  err << printer.Packets() << " packets, " << printer.Notifications() << " notifications";
  if (left > 0) err << "; " << left << " bytes at the end were incomplete";
  err << Qt::endl;
  return 0;
}

}  // namespace norva::cli
