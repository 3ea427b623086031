#pragma once
// One item for a transmit worker: plain data (USBCommand 0) or a USB vendor command.

#include <NorvaGlobal/Vocabulary.h>

#include <QByteArray>

#include <cstdint>

namespace norva {

struct TTXItem {
  TUSBCommand USBCommand = usb_no_command;
  std::uint16_t wValue = 0;
  std::uint16_t wIndex = 0;
  QByteArray RawData;
};

}  // namespace norva
