#pragma once
// Opening a serial port the way every device of the installation expects it: 9600 baud, 8 data
// bits, no parity, one stop bit, raw, no hardware handshake, DTR and RTS off; XON/XOFF (0x11/0x13)
// only on a real RS232 link, never on a USB adapter.

#include <QString>
#include <QStringList>

namespace norva {

// An open failure: the system's text, the code, and the message the user sees.
struct TSerialOpenError {
  QString Message;
  int Code = 0;
};

// Opens and configures `path`; returns the descriptor, or -1 with `error` filled in.
int OpenSerialPort(const QString& path, bool softwareFlowControl, TSerialOpenError& error);

// The serial ports of this machine offered to the user (their device paths).
QStringList SerialPortNames();

}  // namespace norva
