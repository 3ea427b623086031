#include <NorvaGlobal/ErrorMessages.h>
#include <NorvaGlobal/UIServices.h>

namespace norva {

namespace {
QString MessageForCode(TError error) {
  switch (error) {
    case errBusNotFree: return QStringLiteral("Expansion bus is not free.");
    case errInternalOverflow: return QStringLiteral("Internal overflow in amplifier.");
    case errBufferOverflow: return QStringLiteral("Buffer overflow in amplifier.");
    case errReceiveAborted:
      return QStringLiteral("Received packet on expansion bus was incomplete.");
    case errFrequencyError: return QStringLiteral("Inappropriate frequency in infra-red stream.");
    case errTooManyPeriodLengths:
      return QStringLiteral("Too many different period lengths in infra-red stream.");
    case errStreamTooLong: return QStringLiteral("Infra-red stream too long.");
    case errCompressedStreamTooLong: return QStringLiteral("Compressed infra-red stream too long.");
    case errEEPROMFault: return QStringLiteral("General EEPROM fault.");
    case errEEPROMEraseFault: return QStringLiteral("Error clearing memory.");
    case errEEPROMFull: return QStringLiteral("Memory full.");
    default:
      // Codes without a text of their own, errBusReceiveError included, show their number.
      return QStringLiteral("Error 0x") +
             QStringLiteral("%1")
                 .arg(static_cast<unsigned>(error), 2, 16, QLatin1Char('0'))
                 .toUpper();
  }
}
}  // namespace

QString NorvaErrorMsg(TError error, int first, int second) {
  QString text = MessageForCode(error);
  if (first >= 0 && second >= 0) text += QStringLiteral(" (%1, %2)").arg(first).arg(second);
  return text;
}

bool CommError(const QString& message) {
  UIServices().MessageBox(message, QStringLiteral("Error"), TMessageIcon::Exclamation,
                          TMessageButtons::OK);
  return true;
}

}  // namespace norva
