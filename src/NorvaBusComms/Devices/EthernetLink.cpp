#include <NorvaBusComms/Devices/EthernetLink.h>
#include <NorvaGlobal/DebugOutput.h>

#include <QTcpSocket>

#include <cerrno>
#include <utility>

namespace norva {

namespace {
bool ParseAddress(const QString& address, QString& host, quint16& port) {
  const qsizetype colon = address.lastIndexOf(u':');
  if (colon <= 0) return false;
  bool ok = false;
  const uint value = address.mid(colon + 1).toUInt(&ok);
  if (!ok || value == 0 || value > 65535) return false;
  host = address.left(colon);
  if (host.startsWith(u'[') && host.endsWith(u']')) host = host.mid(1, host.size() - 2);
  port = static_cast<quint16>(value);
  return !host.isEmpty();
}

// The errno-style code closest to a socket error, for the one result type of the links.
int SocketErrorCode(QAbstractSocket::SocketError error) {
  switch (error) {
    case QAbstractSocket::ConnectionRefusedError: return ECONNREFUSED;
    case QAbstractSocket::RemoteHostClosedError: return ECONNRESET;
    case QAbstractSocket::HostNotFoundError: return EHOSTUNREACH;
    case QAbstractSocket::SocketTimeoutError: return ETIMEDOUT;
    default: return EIO;
  }
}
}  // namespace

TEthernetLink::TEthernetLink(TLinkHost& host) : TLink(host) {
  mRetryTimer.setSingleShot(true);
  connect(&mRetryTimer, &QTimer::timeout, this, &TEthernetLink::Reopen);
}

TEthernetLink::~TEthernetLink() { Close(); }

TPlatformResult TEthernetLink::Open(const QString& address, std::uint32_t /*generation*/) {
  Close();
  if (!ParseAddress(address, mHost, mPort))
    return TPlatformResult::Failure(EINVAL, QStringLiteral("Cannot open device ") + address);
  mFailedAttempts = 0;
  Reopen();
  return {};
}

void TEthernetLink::Reopen() {
  DropSocket();
  mConnectedOnce = false;
  mSocket = new QTcpSocket(this);
  mSocket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
  mSocket->setReadBufferSize(SocketReadBufferBytes);
  connect(mSocket, &QTcpSocket::connected, this, &TEthernetLink::EthernetConnect);
  connect(mSocket, &QTcpSocket::readyRead, this, &TEthernetLink::EthernetRead);
  connect(mSocket, &QTcpSocket::errorOccurred, this, &TEthernetLink::EthernetError);
  connect(mSocket, &QTcpSocket::disconnected, this, &TEthernetLink::ConnectionLost);
  mSocket->connectToHost(mHost, mPort);
}

void TEthernetLink::DropSocket() {
  if (!mSocket) return;
  mSocket->disconnect(this);
  mSocket->abort();
  mSocket->deleteLater();
  mSocket = nullptr;
}

TPlatformResult TEthernetLink::Close() {
  mRetryTimer.stop();
  mRetryReason.clear();
  mPendingWrite.clear();
  DropSocket();
  return {};
}

bool TEthernetLink::IsOpen() const {
  return mSocket && mSocket->state() != QAbstractSocket::UnconnectedState;
}

bool TEthernetLink::IsUp() const {
  return mSocket && mSocket->state() == QAbstractSocket::ConnectedState;
}

bool TEthernetLink::SendPacketText(const QByteArray& text) {
  Write(text);
  return false;
}

void TEthernetLink::Write(const QByteArray& bytes) {
  if (bytes.isEmpty()) return;
  if (!IsOpen()) {
    SendFailed(QStringLiteral("Not connected: %1 bytes were not sent").arg(bytes.size()));
    return;
  }
  if (IsUp()) {
    mSocket->write(bytes);
    return;
  }
  // Kept until the connection is made: the socket itself only takes bytes once connected.
  if (mPendingWrite.size() + bytes.size() > MaxPendingWriteBytes) {
    SendFailed(QStringLiteral("Still connecting: %1 bytes were not sent").arg(bytes.size()));
    return;
  }
  mPendingWrite += bytes;
}

void TEthernetLink::SendFailed(const QString& text) {
  DebugOutput(BusLog(), text);
  Host().LinkFailed(TPlatformResult::Failure(EPIPE, text),
                    ErrorCaption(QAbstractSocket::NetworkError, true), TMessageIcon::Exclamation);
}

qint64 TEthernetLink::BytesToWrite() const {
  return mPendingWrite.size() + (mSocket ? mSocket->bytesToWrite() : 0);
}

void TEthernetLink::EthernetConnect() {
  mConnectedOnce = true;
  mRetryReason.clear();
  mConnectedFor.start();
  if (!mPendingWrite.isEmpty()) mSocket->write(std::exchange(mPendingWrite, QByteArray()));
  Host().LinkConnectionChanged();
}

// In reads of a worker's size, so that one arrival never holds more than a serial one would; a
// handler may close the link on the way.
void TEthernetLink::EthernetRead() {
  while (mSocket && mSocket->bytesAvailable() > 0) {
    const QByteArray bytes = mSocket->read(ReadChunkBytes);
    if (bytes.isEmpty()) return;
    Host().LinkReceived(bytes);
  }
}

QString TEthernetLink::ErrorCaption(QAbstractSocket::SocketError error, bool writing) {
  switch (error) {
    case QAbstractSocket::HostNotFoundError: return QStringLiteral("Error in lookup");
    case QAbstractSocket::ConnectionRefusedError:
    case QAbstractSocket::SocketTimeoutError: return QStringLiteral("Error connecting");
    case QAbstractSocket::RemoteHostClosedError: return QStringLiteral("Error disconnecting");
    case QAbstractSocket::NetworkError:
      return writing ? QStringLiteral("Error sending") : QStringLiteral("Error receiving");
    default: return QStringLiteral("General error");
  }
}

void TEthernetLink::EthernetError(QAbstractSocket::SocketError error) {
  mRetryReason = mSocket->errorString();
  // Errors while connecting are retried, so they are not shown; nor is the peer closing the
  // connection, which is how a device reboot looks.
  if (mConnectedOnce && error != QAbstractSocket::RemoteHostClosedError) {
    Host().LinkFailed(TPlatformResult::Failure(SocketErrorCode(error), mSocket->errorString()),
                      ErrorCaption(error, mSocket->bytesToWrite() > 0), TMessageIcon::Exclamation);
    if (!mSocket) return;  // the bus closed the link on hearing of it
  }
  if (!IsOpen() || error == QAbstractSocket::RemoteHostClosedError) ConnectionLost();
}

void TEthernetLink::ConnectionLost() {
  if (mRetryTimer.isActive()) return;  // error and disconnected signals both report one loss
  const qint64 unsent = BytesToWrite();
  mPendingWrite.clear();
  // Through the event loop, never by recursion.
  mRetryTimer.start(NextRetryDelay());
  if (unsent > 0)
    SendFailed(QStringLiteral("The connection closed before %1 bytes were sent").arg(unsent));
  Host().LinkConnectionChanged();
  DebugOutput(BusLog(), QStringLiteral("Retrying Ethernet open"));
}

// At once after a working connection dropped; otherwise 50, 100, ... 800 ms, then every second. A
// peer that accepts and closes at once is not a working connection, or it would be retried in a
// tight loop.
int TEthernetLink::NextRetryDelay() {
  if (mConnectedOnce && mConnectedFor.elapsed() >= StableConnectionMs) mFailedAttempts = 0;
  const int delay =
      mFailedAttempts == 0 ? 0 : std::min(MaxRetryDelayMs, 50 << std::min(mFailedAttempts - 1, 5));
  ++mFailedAttempts;
  return delay;
}

}  // namespace norva
