#pragma once
// GUIDs in the registry form: 38 characters, "{", 8-4-4-4-12 upper-case hexadecimal digits
// separated by hyphens, "}".

#include <QAnyStringView>
#include <QString>
#include <QUuid>

#include <array>

namespace norva {

QString GUIDToString(const QUuid& guid);
// The same as UTF-8, ended by '\0', without allocating: files write one per object.
std::array<char, 39> GUIDToUtf8(const QUuid& guid);
// Accepts digits of either case; anything else than the registry form raises EConvertError. Text
// straight from a file (UTF-8) is read without a conversion first.
QUuid StringToGUID(QAnyStringView text);

}  // namespace norva
