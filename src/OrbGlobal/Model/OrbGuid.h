#pragma once
// GUIDs in the registry form: 38 characters, "{", 8-4-4-4-12 upper-case hexadecimal digits
// separated by hyphens, "}".

#include <QAnyStringView>
#include <QString>
#include <QUuid>

namespace norva {

QString GUIDToString(const QUuid& guid);
// Accepts digits of either case; anything else than the registry form raises EConvertError. Text
// straight from a file (UTF-8) is read without a conversion first.
QUuid StringToGUID(QAnyStringView text);

}  // namespace norva
