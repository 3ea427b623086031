#include <NorvaGlobal/PlatformResult.h>

#include <cstring>

namespace norva {

QString TPlatformResult::Described() const {
  return Text + QStringLiteral("\r\n\r\nError: ") + QString::fromLocal8Bit(std::strerror(Code)) +
         QStringLiteral(" (") + QString::number(Code) + u')';
}

}  // namespace norva
