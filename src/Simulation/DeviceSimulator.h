#pragma once
// An amplifier on the device side of the bus, for running the library without hardware. It serves
// a pseudo-terminal (a serial line) and a TCP port, speaking bus text through the library's own
// packet code:
//   - on the serial line every complete line received is echoed back first (not on TCP);
//   - a status request (command 0x03) is answered with status reports 4-7 for the zone, or for
//     every zone when the zone byte is 0xFF;
//   - every other command below 0x80 is acknowledged with the same packet, command + 0x80;
//   - acknowledgements (0x80 and above) are not answered.
// It can also send key presses and bursts, go silent (receive but never answer) and hang up.

#include <NorvaBusComms/CommandPacket.h>

#include <QObject>
#include <QPointer>

#include <functional>
#include <vector>

class QSocketNotifier;
class QTcpServer;
class QTcpSocket;

namespace norva::sim {

inline constexpr TCommand StatusRequestCommand = 0x03;
inline constexpr TCommand BurstCommand = 0x0C;

class TDeviceSimulator : public QObject {
  Q_OBJECT

 public:
  explicit TDeviceSimulator(QObject* parent = nullptr);
  ~TDeviceSimulator() override;

  // Opens a pseudo-terminal; returns the path a client opens (empty on failure).
  QString ServePty();
  // Listens on 127.0.0.1 (port 0: any free port); returns the port, or 0 on failure.
  quint16 ServeTcp(quint16 port = 0);

  // Received bytes are taken in but never answered.
  void SetSilent(bool silent) { mSilent = silent; }
  // TCP connections are accepted and closed at once, as a busy or misconfigured device does.
  void SetBusy(bool busy) { mBusy = busy; }
  // TCP connections accepted so far.
  int TcpConnections() const { return mTcpConnections; }
  // Closes the pseudo-terminal (its device node disappears, as an unplugged adapter's does) and
  // drops every TCP client.
  void HangUp();

  // Sends to every connected client.
  void SendText(const QByteArray& bytes);
  void SendPacket(const TCommandPacket& packet);
  void SendKeypress(std::uint8_t zoneByte, std::uint8_t key, std::uint8_t repeats);
  void SendStatus(std::uint8_t zoneByte);
  // `count` packets of command 0x0C numbered in their data (count, then 3 bytes of sequence),
  // written as fast as the links take them.
  void SendBurst(int count);

  // Every packet the simulator received, in order (tests look at these).
  const std::vector<TCommandPacket>& Received() const { return mReceived; }
  std::function<void(const TCommandPacket&)> OnReceived;

 private:
  struct TLink;
  void ReadPty();
  void AcceptTcp();
  void ReadTcp(QTcpSocket* socket);
  void Consume(TLink& link, const QByteArray& bytes, bool echo);
  // Status reports 4-7 for a zone byte (0xFF: all 96 zones).
  static QByteArray StatusText(std::uint8_t zoneByte);
  void Answer(TLink& link, const TCommandPacket& packet);
  void Write(TLink& link, const QByteArray& bytes);

  int mMaster = -1;
  int mSlave = -1;  // held open so the line stays up while no client has it
  QSocketNotifier* mPtyNotifier = nullptr;
  QTcpServer* mServer = nullptr;
  std::vector<std::unique_ptr<TLink>> mLinks;
  std::vector<TCommandPacket> mReceived;
  bool mSilent = false;
  bool mBusy = false;
  int mTcpConnections = 0;
};

}  // namespace norva::sim
