#pragma once
// The Ethernet link: a TCP client on the UI thread. What it reads goes to the receive path; when
// the connection is made or drops it tells the bus, and after a drop it opens again. Connect
// failures are silent because they are retried: after a connection that had stayed up for a while
// the first retry goes out at once, otherwise retries back off (up to a second), so that a peer
// that stays away, or one that accepts and closes at once, costs nothing but the occasional
// attempt. Bytes written are either handed to the network or reported as a send failure.

#include <QAbstractSocket>
#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <functional>

class QTcpSocket;

namespace norva {

class TEthernetLink : public QObject {
  Q_OBJECT

 public:
  struct THooks {
    std::function<void(const QByteArray&)> Received;
    // The connection was made, or lost (or could not be made; the link is about to retry).
    std::function<void()> ConnectionChange;
    // Bytes given to Write did not reach the network; the text says why.
    std::function<void(const QString&)> SendFailed;
  };

  static constexpr int MaxRetryDelayMs = 1000;
  // A connection that lasted this long was a working one: its loss is retried at once.
  static constexpr int StableConnectionMs = 2000;
  // Bytes a connection attempt in progress holds for sending; beyond that a write fails.
  static constexpr qint64 MaxPendingWriteBytes = 1 << 20;

  explicit TEthernetLink(THooks hooks);
  ~TEthernetLink() override;

  // Starts connecting to "host:port" ("[v6-address]:port" for IPv6); false when the address is
  // not of that form.
  bool Open(const QString& address);
  void Close();
  // The socket exists and is connecting or connected.
  bool Active() const;
  bool Connected() const;
  // Queues bytes for the peer (while connecting, until the connection is made); reports a send
  // failure when there is no connection to take them.
  void Write(const QByteArray& bytes);
  // Bytes queued (while connecting, or in the socket) but not yet handed to the network.
  qint64 BytesToWrite() const;
  // Consecutive attempts that failed or did not stay up for StableConnectionMs.
  int FailedAttempts() const { return mFailedAttempts; }

  // The caption of the box that reports a socket error.
  static QString ErrorCaption(QAbstractSocket::SocketError error, bool writing);

 private:
  void EthernetConnect();
  void EthernetRead();
  void EthernetError(QAbstractSocket::SocketError error);
  void ConnectionLost();
  void Reopen();
  int NextRetryDelay();
  void SendFailed(const QString& text);

  THooks mHooks;
  QTcpSocket* mSocket = nullptr;
  QString mHost;
  quint16 mPort = 0;
  bool mConnectedOnce = false;  // this attempt reached the connected state
  QElapsedTimer mConnectedFor;
  QByteArray mPendingWrite;  // written while the connection is still being made
  int mFailedAttempts = 0;
  QTimer mRetryTimer;
};

}  // namespace norva
