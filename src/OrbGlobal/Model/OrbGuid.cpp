#include <OrbGlobal/Model/OrbGuid.h>

#include <OrbGlobal/Model/OrbErrors.h>

namespace norva {

namespace {

constexpr qsizetype RegistryFormLength = 38;

bool IsHyphenPosition(qsizetype i) { return i == 9 || i == 14 || i == 19 || i == 24; }

bool IsHexDigit(QChar c) {
  return (c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'f') || (c >= u'A' && c <= u'F');
}

// QUuid alone would also take the form without braces; files and the registry always have them.
bool IsRegistryForm(const QString& text) {
  if (text.size() != RegistryFormLength || text.front() != u'{' || text.back() != u'}') {
    return false;
  }
  for (qsizetype i = 1; i < RegistryFormLength - 1; ++i) {
    const bool ok = IsHyphenPosition(i) ? text.at(i) == u'-' : IsHexDigit(text.at(i));
    if (!ok) return false;
  }
  return true;
}

}  // namespace

QString GUIDToString(const QUuid& guid) { return guid.toString(QUuid::WithBraces).toUpper(); }

QUuid StringToGUID(const QString& text) {
  if (!IsRegistryForm(text)) {
    throw EConvertError(QStringLiteral("'%1' is not a valid GUID value").arg(text));
  }
  return QUuid::fromString(text);
}

}  // namespace norva
