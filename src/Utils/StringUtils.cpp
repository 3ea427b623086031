#include <Utils/StringUtils.h>

#include <NorvaGlobal/HexDigits.h>

namespace norva {

namespace {

qsizetype FindDelimiter(const QString& text, const QString& delimiter, qsizetype from = 0) {
  return delimiter.isEmpty() ? -1 : text.indexOf(delimiter, from);
}

}  // namespace

QString RemoveExtension(const QString& name) {
  const qsizetype dot = name.indexOf(u'.');
  return dot < 0 ? name : name.left(dot);
}

QString SplitString(QString& list, const QString& delimiter) {
  const qsizetype position = FindDelimiter(list, delimiter);
  QString head;
  if (position < 0) {
    head.swap(list);
  } else {
    head = list.left(position);
    list.remove(0, position + delimiter.size());
  }
  return head;
}

QString SelectSubString(const QString& text, const QString& delimiter, int index) {
  if (index < 0) return QString();
  qsizetype fieldStart = 0;
  for (int field = 0; field < index; ++field) {
    const qsizetype position = FindDelimiter(text, delimiter, fieldStart);
    if (position < 0) return QString();
    fieldStart = position + delimiter.size();
  }
  const qsizetype fieldEnd = FindDelimiter(text, delimiter, fieldStart);
  return text.mid(fieldStart, fieldEnd < 0 ? -1 : fieldEnd - fieldStart);
}

QByteArray UpperHex(QByteArrayView bytes) {
  QByteArray text(2 * bytes.size(), Qt::Uninitialized);
  char* out = text.data();
  for (const char byte : bytes) {
    const auto value = static_cast<unsigned char>(byte);
    *out++ = HexDigitChar(value >> 4);
    *out++ = HexDigitChar(value);
  }
  return text;
}

}  // namespace norva
