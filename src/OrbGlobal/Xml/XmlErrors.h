#pragma once
// Failures of the XML helpers: a name or node the DOM cannot take, a document that cannot be
// parsed, read or written. A value text that is not a valid number or date raises the object
// model's EConvertError, as a malformed GUID does.

#include <NorvaGlobal/Exceptions.h>
#include <OrbGlobal/Model/OrbErrors.h>

#include <QByteArrayView>

namespace norva {

// The DOM refused an operation, or a document file could not be read or written.
class EXMLError : public ENorvaError {
 public:
  using ENorvaError::ENorvaError;
};

// A document that is not well formed: the parser's reason with a 1-based line and column (the
// column counts characters). The message is the reason followed by "\r\nLine: <line>, position:
// <column>", and starts with "Error loading <path>\r\n\r\n" when the document came from a file.
class EXMLParseError : public EXMLError {
 public:
  EXMLParseError(QString reason, int line, int column, const QString& path = QString());
  // The error at byte `offset` of the UTF-8 text `utf8`, whose line and column it works out.
  static EXMLParseError AtOffset(QString reason, QByteArrayView utf8, qsizetype offset);

  const QString& Reason() const noexcept { return mReason; }
  int Line() const noexcept { return mLine; }
  int Column() const noexcept { return mColumn; }

 private:
  QString mReason;
  int mLine;
  int mColumn;
};

}  // namespace norva
