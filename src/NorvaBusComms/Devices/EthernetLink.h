#pragma once
// The Ethernet link: a TCP client on the UI thread. What it reads goes to the receive path; when
// the connection is made or drops it tells the bus, and after a drop it opens again. Connect
// failures are silent because they are retried: after a connection that had stayed up for a while
// the first retry goes out at once, otherwise retries back off (up to a second), so that a peer
// that stays away, or one that accepts and closes at once, costs nothing but the occasional
// attempt. Bytes written are either handed to the network or reported as a send failure.

#include <NorvaBusComms/Devices/Link.h>

#include <QAbstractSocket>
#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

class QTcpSocket;

namespace norva {

class TEthernetLink final : public QObject, public TLink {
  Q_OBJECT

 public:
  static constexpr int MaxRetryDelayMs = 1000;
  // A connection that lasted this long was a working one: its loss is retried at once.
  static constexpr int StableConnectionMs = 2000;
  // Bytes a connection attempt in progress holds for sending; beyond that a write fails.
  static constexpr qint64 MaxPendingWriteBytes = 1 << 20;
  // What one read takes from the socket (as a receive worker's read), and what the socket may
  // hold unread: a flooding peer is then held back by TCP's own flow control.
  static constexpr qint64 ReadChunkBytes = 1024;
  static constexpr qint64 SocketReadBufferBytes = qint64{64} * 1024;

  explicit TEthernetLink(TLinkHost& host);
  ~TEthernetLink() override;

  // Starts connecting to "host:port" ("[v6-address]:port" for IPv6); fails (EINVAL) when the
  // address is not of that form.
  TPlatformResult Open(const QString& address, std::uint32_t generation) override;
  TPlatformResult Close() override;
  // The socket exists and is connecting or connected.
  bool IsOpen() const override;
  bool IsUp() const override;
  QString RetryReason() const override { return mRetryReason; }
  // Ethernet devices do not echo, so sent packets are not remembered.
  bool SendPacketText(const QByteArray& text) override;
  bool EchoesPackets(TCommsDeviceType /*connected*/) const override { return false; }
  // Raw items and vendor commands do not go over Ethernet.
  void Send(const TTXItem& /*item*/) override {}
  bool Sending() const override { return BytesToWrite() > 0; }

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
  void DropSocket();

  QTcpSocket* mSocket = nullptr;
  QString mHost;
  quint16 mPort = 0;
  bool mConnectedOnce = false;  // this attempt reached the connected state
  QElapsedTimer mConnectedFor;
  QByteArray mPendingWrite;  // written while the connection is still being made
  int mFailedAttempts = 0;
  QString mRetryReason;
  QTimer mRetryTimer;
};

}  // namespace norva
