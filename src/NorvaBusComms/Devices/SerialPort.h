#pragma once
// Opening a serial port the way every device of the installation expects it: 9600 baud, 8 data
// bits, no parity, one stop bit, raw, no hardware handshake, DTR and RTS off; XON/XOFF (0x11/0x13)
// only on a real RS232 link, never on a USB adapter.

#include <NorvaGlobal/PlatformResult.h>

#include <QString>
#include <QStringList>

namespace norva {

// Opens and configures `path`, setting `fd` to the descriptor (-1 on failure).
TPlatformResult OpenSerialPort(const QString& path, bool softwareFlowControl, int& fd);

// The serial ports of this machine offered to the user (their device paths).
QStringList SerialPortNames();

}  // namespace norva
