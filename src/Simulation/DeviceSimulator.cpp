#include <Simulation/DeviceSimulator.h>

#include <NorvaBusComms/BusTextParser.h>
#include <NorvaGlobal/Zones.h>

#include <QSocketNotifier>
#include <QTcpServer>
#include <QTcpSocket>

#include <fcntl.h>
#include <pty.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>

namespace norva::sim {

struct TDeviceSimulator::TLink {
  QTcpSocket* Socket = nullptr;  // none: the pseudo-terminal
  QByteArray Input;              // an unfinished line
  QByteArray Output;             // pty bytes the line discipline could not take yet
  QSocketNotifier* WriteNotifier = nullptr;
};

TDeviceSimulator::TDeviceSimulator(QObject* parent) : QObject(parent) {}

TDeviceSimulator::~TDeviceSimulator() { HangUp(); }

QString TDeviceSimulator::ServePty() {
  termios raw{};
  cfmakeraw(&raw);
  char name[256] = {};
  if (openpty(&mMaster, &mSlave, name, &raw, nullptr) != 0) return {};
  fcntl(mMaster, F_SETFL, fcntl(mMaster, F_GETFL) | O_NONBLOCK);
  fcntl(mMaster, F_SETFD, FD_CLOEXEC);
  fcntl(mSlave, F_SETFD, FD_CLOEXEC);
  auto link = std::make_unique<TLink>();
  mPtyNotifier = new QSocketNotifier(mMaster, QSocketNotifier::Read, this);
  connect(mPtyNotifier, &QSocketNotifier::activated, this, &TDeviceSimulator::ReadPty);
  link->WriteNotifier = new QSocketNotifier(mMaster, QSocketNotifier::Write, this);
  link->WriteNotifier->setEnabled(false);
  connect(link->WriteNotifier, &QSocketNotifier::activated, this,
          [this] { Write(*mLinks.front(), {}); });
  mLinks.insert(mLinks.begin(), std::move(link));
  return QString::fromLocal8Bit(name);
}

quint16 TDeviceSimulator::ServeTcp(quint16 port) {
  mServer = new QTcpServer(this);
  if (!mServer->listen(QHostAddress::LocalHost, port)) return 0;
  connect(mServer, &QTcpServer::newConnection, this, &TDeviceSimulator::AcceptTcp);
  return mServer->serverPort();
}

void TDeviceSimulator::HangUp() {
  // Aborting a socket reports its disconnection at once, which edits mLinks: work on a copy.
  const std::vector<std::unique_ptr<TLink>> links = std::move(mLinks);
  mLinks.clear();
  for (const auto& link : links) {
    if (link->Socket) {
      link->Socket->disconnect(this);
      link->Socket->abort();
      link->Socket->deleteLater();
    }
    delete link->WriteNotifier;
  }
  delete mPtyNotifier;
  mPtyNotifier = nullptr;
  if (mSlave >= 0) close(mSlave);
  if (mMaster >= 0) close(mMaster);
  mSlave = mMaster = -1;
}

void TDeviceSimulator::ReadPty() {
  char buffer[4096];
  for (;;) {
    const ssize_t count = read(mMaster, buffer, sizeof buffer);
    if (count <= 0) return;
    Consume(*mLinks.front(), QByteArray(buffer, count), true);
  }
}

void TDeviceSimulator::AcceptTcp() {
  while (QTcpSocket* socket = mServer->nextPendingConnection()) {
    ++mTcpConnections;
    if (mBusy) {
      socket->abort();
      socket->deleteLater();
      continue;
    }
    socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    auto link = std::make_unique<TLink>();
    link->Socket = socket;
    connect(socket, &QTcpSocket::readyRead, this, [this, socket] { ReadTcp(socket); });
    connect(socket, &QTcpSocket::disconnected, this, [this, socket] {
      std::erase_if(mLinks, [socket](const auto& l) { return l->Socket == socket; });
      socket->deleteLater();
    });
    mLinks.push_back(std::move(link));
  }
}

void TDeviceSimulator::ReadTcp(QTcpSocket* socket) {
  for (auto& link : mLinks)
    if (link->Socket == socket) Consume(*link, socket->readAll(), false);
}

void TDeviceSimulator::Consume(TLink& link, const QByteArray& bytes, bool echo) {
  link.Input += bytes;
  const qsizetype lastLineFeed = link.Input.lastIndexOf('\n');
  if (lastLineFeed < 0) return;
  const QByteArray lines = link.Input.left(lastLineFeed + 1);
  link.Input.remove(0, lastLineFeed + 1);
  std::vector<TCommandPacket> packets;
  ParseBusText(lines, GetTickCount(), packets);
  if (echo && !mSilent) Write(link, lines);  // a serial device echoes what it hears
  for (const TCommandPacket& packet : packets) {
    mReceived.push_back(packet);
    if (OnReceived) OnReceived(packet);
    if (!mSilent) Answer(link, packet);
  }
}

void TDeviceSimulator::Answer(TLink& link, const TCommandPacket& packet) {
  if (packet.Cmd >= AcknowledgeOffset) return;
  if (packet.Cmd == StatusRequestCommand) {
    Write(link, StatusText(packet.Zone));  // only the link that asked
    return;
  }
  TCommandPacket ack = packet;
  ack.Cmd = static_cast<TCommand>(packet.Cmd + AcknowledgeOffset);
  Write(link, PacketText(ack));
}

void TDeviceSimulator::SendPacket(const TCommandPacket& packet) { SendText(PacketText(packet)); }

void TDeviceSimulator::SendKeypress(std::uint8_t zoneByte, std::uint8_t key, std::uint8_t repeats) {
  SendPacket(BuildCommandPacket(KeypressCommand, zoneByte, {(repeats * 32 | key) & 0xFF}));
}

void TDeviceSimulator::SendStatus(std::uint8_t zoneByte) { SendText(StatusText(zoneByte)); }

QByteArray TDeviceSimulator::StatusText(std::uint8_t zoneByte) {
  QByteArray text;
  const auto report = [&text](std::uint8_t zone) {
    // Source, volume, bass and treble of the zone: plausible values that differ per zone.
    text += PacketText(BuildCommandPacket(4, zone, {zone % 12, 0x3C}));
    text += PacketText(BuildCommandPacket(5, zone, {40 + zone % 20}));
    text += PacketText(BuildCommandPacket(6, zone, {7}));
    text += PacketText(BuildCommandPacket(7, zone, {7}));
  };
  if (zoneByte == 0xFF) {
    for (int zone = 0; zone < 96; ++zone)
      report(EncodeZone(static_cast<std::int8_t>(zone), false, false));
  } else {
    report(zoneByte);
  }
  return text;
}

void TDeviceSimulator::SendBurst(int count) {
  QByteArray text;
  text.reserve(static_cast<qsizetype>(count) * 14);
  for (int i = 0; i < count; ++i)
    text += PacketText(
        BuildCommandPacket(BurstCommand, 0, {(i >> 16) & 0xFF, (i >> 8) & 0xFF, i & 0xFF}));
  SendText(text);
}

void TDeviceSimulator::SendText(const QByteArray& bytes) {
  for (auto& link : mLinks) Write(*link, bytes);
}

void TDeviceSimulator::Write(TLink& link, const QByteArray& bytes) {
  if (link.Socket) {
    link.Socket->write(bytes);
    link.Socket->flush();  // out now, not when the event loop next comes round
    return;
  }
  link.Output += bytes;
  while (!link.Output.isEmpty()) {
    const ssize_t written =
        write(mMaster, link.Output.constData(), static_cast<std::size_t>(link.Output.size()));
    if (written <= 0) break;  // the line is full: go on when it can take more
    link.Output.remove(0, written);
  }
  link.WriteNotifier->setEnabled(!link.Output.isEmpty());
}

}  // namespace norva::sim
