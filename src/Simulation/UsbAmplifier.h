#pragma once
// An amplifier on the simulated USB backend, for running the USB path without hardware. It
// plays the device side of the pipes:
//   - bus text written to CommandOutPipe (or announced with usb_norva_cmd_num_bytes and written to
//     DataOutPipe) is answered on NotifyInPipe with command frames: the echo of each packet, then
//     its acknowledgement (command + 0x80);
//   - usb_enumerate_objects is answered with the demonstration object list as raw data on
//     DataInPipe (per object: id, 4-byte little-endian size, name, zero), then the log event
//     "enumerated N objects" on NotifyInPipe;
//   - key presses and log events can be sent at will.

#include <NorvaBusComms/CommandPacket.h>

#include <Simulation/SimulatedUsb.h>

#include <QByteArray>
#include <QString>

#include <memory>
#include <mutex>
#include <vector>

namespace norva::sim {

struct TDemoObject {
  std::uint8_t Id;
  std::uint32_t Size;
  QByteArray Name;
};

class TUsbAmplifier {
 public:
  static constexpr const char* DevicePath = "sim-usb:1";
  static constexpr const char* HardwareId = "USB\\VID_1781&PID_07DA&REV_0100";

  // Adds the device to `backend`.
  explicit TUsbAmplifier(TSimulatedUsbBackend& backend);
  // Stops answering: the device may outlive the amplifier (a host still closing its pipes).
  ~TUsbAmplifier();
  TUsbAmplifier(const TUsbAmplifier&) = delete;
  TUsbAmplifier& operator=(const TUsbAmplifier&) = delete;

  TSimulatedUsbDevice& Device() { return *mDevice; }
  static const std::vector<TDemoObject>& DemoObjects();

  void SendKeypress(std::uint8_t zoneByte, std::uint8_t key, std::uint8_t repeats);
  void SendLog(const QByteArray& text);
  // A packet with more data than a command frame carries is not sent.
  void SendPacket(const TCommandPacket& packet);
  // The enumeration answer: the object list on the data pipe, then the closing log event.
  void AnswerEnumeration();

  // Control requests the device received, in order (the request codes).
  std::vector<std::uint8_t> ControlRequests() const;

 private:
  void OnWrite(std::uint8_t pipeId, const QByteArray& bytes);
  bool OnControl(const TSimulatedControlTransfer& transfer);
  void AnswerBusText(const QByteArray& text);

  std::shared_ptr<TSimulatedUsbDevice> mDevice;
  mutable std::mutex mLock;  // the host's worker threads call in
  QByteArray mPendingText;
  std::vector<std::uint8_t> mControlRequests;
};

}  // namespace norva::sim
