#pragma once
// GUIDs in the registry form: 38 characters, "{", 8-4-4-4-12 upper-case hexadecimal digits
// separated by hyphens, "}".

#include <QString>
#include <QUuid>

namespace norva {

QString GUIDToString(const QUuid& guid);
// Accepts digits of either case; anything else than the registry form raises EConvertError.
QUuid StringToGUID(const QString& text);

}  // namespace norva
