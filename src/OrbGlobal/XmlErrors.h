#pragma once
// Failures of the XML helpers: a name or node the DOM cannot take, a document that cannot be
// parsed, read or written, and value texts that are not a valid number or date.

#include <NorvaGlobal/Exceptions.h>

#include <utility>

namespace norva {

// The DOM refused an operation, or a document file could not be read or written.
class EXMLError : public ENorvaError {
 public:
  using ENorvaError::ENorvaError;
};

// A document that is not well formed. Line and Column are 1-based; the column counts characters.
class EXMLParseError : public EXMLError {
 public:
  EXMLParseError(QString reason, int line, int column)
      : EXMLError(QStringLiteral("%1 (line %2, column %3)").arg(reason).arg(line).arg(column)),
        mReason(std::move(reason)),
        mLine(line),
        mColumn(column) {}
  const QString& Reason() const noexcept { return mReason; }
  int Line() const noexcept { return mLine; }
  int Column() const noexcept { return mColumn; }

 private:
  QString mReason;
  int mLine;
  int mColumn;
};

// A value text (number, date) that does not have the form the files use.
class EConvertError : public ENorvaError {
 public:
  using ENorvaError::ENorvaError;
};

}  // namespace norva
