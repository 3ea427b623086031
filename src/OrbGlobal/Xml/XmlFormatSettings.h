#pragma once
// The one number and date format of every file, whatever the user's locale: thousands separator
// ',', decimal separator '.', date separator '/', time separator ':'.
//
// Numbers are written in the classic general form with at most 15 significant digits: the
// shortest digits that read back to the same value within that limit, no trailing zeros, plain
// decimal notation unless the decimal exponent is 15 or more or below -4 (1.5 -> "1.5",
// 100 -> "100", 1e20 -> "1E20", 0.00001 -> "1E-5", 0.0001 -> "0.0001"). Both zeros are "0"; the
// non-finite values are "NAN", "INF" and "-INF".
//
// Dates are written year first, "yyyy/MM/dd HH:mm:ss" (for example "2024/03/07 18:05:09"), to the
// second. The text carries no time zone: the value's own date and time fields are written, and
// read back as a time of the given kind (local time unless told otherwise).

#include <QDateTime>
#include <QString>

namespace norva {

struct TFormatSettings {
  char16_t ThousandSeparator;
  char16_t DecimalSeparator;
  char16_t DateSeparator;
  char16_t TimeSeparator;
};

inline constexpr TFormatSettings XMLFormatSettings{u',', u'.', u'/', u':'};

QString FloatToXMLText(double value);
// Accepts what FloatToXMLText writes, plain decimal forms, either exponent letter, an optional sign
// and surrounding blanks. Anything else (a decimal comma, a thousands separator, a value out of
// range) raises EConvertError.
double XMLTextToFloat(const QString& text);

// Raises EConvertError for an invalid value or a year outside 1-9999.
QString DateTimeToXMLText(const QDateTime& value);
// Accepts "yyyy/MM/dd HH:mm:ss" and the date alone ("yyyy/MM/dd", midnight); anything else, or a
// date or time that does not exist, raises EConvertError.
QDateTime XMLTextToDateTime(const QString& text, Qt::TimeSpec timeSpec = Qt::LocalTime);

}  // namespace norva
