#pragma once
// Failures raised by the library. Each carries a fixed English message, shown to the user as it
// stands.

#include <QByteArray>
#include <QString>

#include <exception>

namespace norva {

// The general failure: what() is the message in UTF-8.
class ENorvaError : public std::exception {
 public:
  explicit ENorvaError(QString message) : mMessage(std::move(message)), mUtf8(mMessage.toUtf8()) {}
  const QString& Message() const noexcept { return mMessage; }
  const char* what() const noexcept override { return mUtf8.constData(); }

 private:
  QString mMessage;
  QByteArray mUtf8;
};

// Integer arithmetic that would overflow 32 bits.
class EIntOverflow : public ENorvaError {
 public:
  EIntOverflow() : ENorvaError(QStringLiteral("Integer overflow")) {}
};

}  // namespace norva
