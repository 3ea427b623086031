#include <NorvaBusComms/Devices/EthernetLink.h>
#include <NorvaGlobal/DebugOutput.h>
#include <NorvaGlobal/UIServices.h>

#include <QTcpSocket>

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
}  // namespace

TEthernetLink::TEthernetLink(THooks hooks) : mHooks(std::move(hooks)) {
  mRetryTimer.setSingleShot(true);
  connect(&mRetryTimer, &QTimer::timeout, this, &TEthernetLink::Reopen);
}

TEthernetLink::~TEthernetLink() { Close(); }

bool TEthernetLink::Open(const QString& address) {
  Close();
  if (!ParseAddress(address, mHost, mPort)) return false;
  mFailedAttempts = 0;
  Reopen();
  return true;
}

void TEthernetLink::Reopen() {
  if (mSocket) {
    mSocket->disconnect(this);
    mSocket->abort();
    mSocket->deleteLater();
  }
  mConnectedOnce = false;
  mSocket = new QTcpSocket(this);
  mSocket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
  connect(mSocket, &QTcpSocket::connected, this, &TEthernetLink::EthernetConnect);
  connect(mSocket, &QTcpSocket::readyRead, this, &TEthernetLink::EthernetRead);
  connect(mSocket, &QTcpSocket::errorOccurred, this, &TEthernetLink::EthernetError);
  connect(mSocket, &QTcpSocket::disconnected, this, &TEthernetLink::ConnectionLost);
  mSocket->connectToHost(mHost, mPort);
}

void TEthernetLink::Close() {
  mRetryTimer.stop();
  mPendingWrite.clear();
  if (!mSocket) return;
  mSocket->disconnect(this);
  mSocket->abort();
  mSocket->deleteLater();
  mSocket = nullptr;
}

bool TEthernetLink::Active() const {
  return mSocket && mSocket->state() != QAbstractSocket::UnconnectedState;
}

bool TEthernetLink::Connected() const {
  return mSocket && mSocket->state() == QAbstractSocket::ConnectedState;
}

void TEthernetLink::Write(const QByteArray& bytes) {
  if (bytes.isEmpty()) return;
  if (!Active()) {
    SendFailed(QStringLiteral("Not connected: %1 bytes were not sent").arg(bytes.size()));
    return;
  }
  if (Connected()) {
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
  DebugOutput(text);
  if (mHooks.SendFailed) mHooks.SendFailed(text);
}

qint64 TEthernetLink::BytesToWrite() const {
  return mPendingWrite.size() + (mSocket ? mSocket->bytesToWrite() : 0);
}

void TEthernetLink::EthernetConnect() {
  mConnectedOnce = true;
  mConnectedFor.start();
  if (!mPendingWrite.isEmpty()) mSocket->write(std::exchange(mPendingWrite, QByteArray()));
  if (mHooks.ConnectionChange) mHooks.ConnectionChange();
}

void TEthernetLink::EthernetRead() {
  const QByteArray bytes = mSocket->readAll();
  if (!bytes.isEmpty() && mHooks.Received) mHooks.Received(bytes);
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
  // Errors while connecting are retried, so they are not shown; nor is the peer closing the
  // connection, which is how a device reboot looks.
  if (mConnectedOnce && error != QAbstractSocket::RemoteHostClosedError) {
    UIServices().MessageBox(mSocket->errorString(),
                            ErrorCaption(error, mSocket->bytesToWrite() > 0),
                            TMessageIcon::Exclamation, TMessageButtons::OK);
  }
  if (!Active() || error == QAbstractSocket::RemoteHostClosedError) ConnectionLost();
}

void TEthernetLink::ConnectionLost() {
  if (mRetryTimer.isActive()) return;  // error and disconnected signals both report one loss
  const qint64 unsent = BytesToWrite();
  mPendingWrite.clear();
  // Through the event loop, never by recursion.
  mRetryTimer.start(NextRetryDelay());
  if (unsent > 0)
    SendFailed(QStringLiteral("The connection closed before %1 bytes were sent").arg(unsent));
  if (mHooks.ConnectionChange) mHooks.ConnectionChange();
  DebugOutput(QStringLiteral("Retrying Ethernet open"));
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
