#pragma once
// Workers of a WinUSB-style device: one per pipe. Receive workers read a bulk IN pipe (0x82 raw
// data, 0x83 notifications) and hand the bytes over like the serial one; transmit workers write a
// bulk OUT pipe (0x01 data, 0x04 commands) and turn USB command items into vendor control
// transfers.

#include <NorvaBusComms/Devices/ReceiveWorkers.h>
#include <NorvaBusComms/Devices/TransmitWorkers.h>

#include <libraries/WINUSB.h>

namespace norva {

class TWinUSBRXEventHandler : public TRXEventHandler {
 public:
  TWinUSBRXEventHandler(QObject* window, TWinUsbInterface& usb, std::uint16_t pipeId,
                        std::uint32_t generation);

 protected:
  void Execute() override;

 private:
  TWinUsbInterface& mWinUSBHandle;
  const std::uint16_t mPipeID;
};

class TWinUSBTXEventHandler : public TTXEventHandler {
 public:
  static constexpr int ChunkTimeoutMs = 15000;
  static constexpr int ControlDataLimit = 8;
  // Request type of the vendor commands: vendor request, host to device, device recipient.
  static constexpr std::uint8_t VendorRequestType = 0x40;

  TWinUSBTXEventHandler(QObject* window, TWinUsbInterface& usb, std::uint16_t pipeId,
                        std::uint32_t generation);

 protected:
  void Execute() override;

 private:
  bool SendControl(const TTXItem& item);
  // Writes one chunk; a chunk the device has not taken within 15 s is abandoned (true: go on).
  bool WriteChunk(const char* data, int size);

  TWinUsbInterface& mWinUSBHandle;
  const std::uint16_t mPipeID;
};

}  // namespace norva
