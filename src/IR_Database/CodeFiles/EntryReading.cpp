#include <IR_Database/CodeFiles/EntryReading.h>

#include <cmath>

namespace norva {

std::int64_t WholeNumber(QStringView text, QStringView what) {
  bool ok = false;
  const qlonglong value = text.toLongLong(&ok, 10);
  if (!ok)
    throw ENorvaError(
        QStringLiteral("%1 is no whole number: '%2'").arg(what, text.left(40).toString()));
  return value;
}

double DecimalNumber(QStringView text, QStringView what) {
  bool ok = false;
  const double value = text.toDouble(&ok);
  if (!ok || !std::isfinite(value))
    throw ENorvaError(QStringLiteral("%1 is no number: '%2'").arg(what, text.left(40).toString()));
  return value;
}

}  // namespace norva
