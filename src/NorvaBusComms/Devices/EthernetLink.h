#pragma once
// The Ethernet link: a TCP client on the UI thread. What it reads goes to the receive path; when
// the connection drops it tells the bus and opens again. Connect failures are silent because they
// are retried: the first retry goes out at once, further ones back off (up to a second) so that a
// peer that stays away costs nothing but the occasional attempt.

#include <QAbstractSocket>
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
    // The connection was lost (or could not be made); the link is about to retry.
    std::function<void()> ConnectionChange;
  };

  static constexpr int MaxRetryDelayMs = 1000;

  explicit TEthernetLink(THooks hooks);
  ~TEthernetLink() override;

  // Starts connecting to "host:port" ("[v6-address]:port" for IPv6); false when the address is
  // not of that form.
  bool Open(const QString& address);
  void Close();
  // The socket exists and is connecting or connected.
  bool Active() const;
  bool Connected() const;
  // Queues bytes for the peer; dropped unless connected.
  void Write(const QByteArray& bytes);
  // Bytes queued but not yet handed to the network.
  qint64 BytesToWrite() const;
  // Consecutive failed attempts since the last connection (0 while connected).
  int FailedAttempts() const { return mFailedAttempts; }

  // The caption of the box that reports a socket error.
  static QString ErrorCaption(QAbstractSocket::SocketError error, bool writing);

 private:
  void EthernetConnect();
  void EthernetRead();
  void EthernetError(QAbstractSocket::SocketError error);
  void ConnectionLost();
  void Reopen();

  THooks mHooks;
  QTcpSocket* mSocket = nullptr;
  QString mHost;
  quint16 mPort = 0;
  bool mConnectedOnce = false;  // this attempt reached the connected state
  int mFailedAttempts = 0;
  QTimer mRetryTimer;
};

}  // namespace norva
