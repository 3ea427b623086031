#include <OrbGlobal/Xml/XmlErrors.h>
#include <OrbGlobal/Xml/XmlFormatSettings.h>

#include <QLocale>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace norva {
namespace {

constexpr double Infinity = std::numeric_limits<double>::infinity();

struct TFloatText {
  double value;
  const char* text;
};

TEST(FloatToXMLText, WritesTheClassicGeneralFormWithFifteenDigits) {
  const TFloatText cases[] = {
      {1.5, "1.5"},
      {100, "100"},
      {-2.25, "-2.25"},
      {-0.0, "0"},
      {1e20, "1E20"},
      {1e15, "1E15"},
      {999999999999999, "999999999999999"},
      {123456789012345678.0, "1.23456789012346E17"},
      {0.0001, "0.0001"},
      {0.00001, "1E-5"},
      {-0.000015, "-1.5E-5"},
      {0.1 + 0.2, "0.3"},
      {2.0 / 3, "0.666666666666667"},
      {std::numeric_limits<double>::denorm_min(), "5E-324"},
      {std::nan(""), "NAN"},
      {-Infinity, "-INF"},
  };
  for (const TFloatText& c : cases) EXPECT_EQ(FloatToXMLText(c.value), c.text) << c.text;
}

TEST(XMLTextToFloat, ReadsWhatIsWrittenAndPlainDecimalsAndRaisesForTextThatIsNoNumber) {
  const TFloatText cases[] = {
      {1e20, "1E20"},   {1e-5, "1e-5"},     {1.5e20, "1.5E+20"}, {-0.5, "-.5"},       {2, "+2"},
      {12, " 12 \r\n"}, {5e-324, "5E-324"}, {100, "100."},       {-Infinity, "-INF"},
  };
  for (const TFloatText& c : cases) EXPECT_EQ(XMLTextToFloat(c.text), c.value) << c.text;
  EXPECT_TRUE(std::isnan(XMLTextToFloat(QStringLiteral("NAN"))));
  for (double value : {3.14159265358979, -273.15, 6.02214076e23, 1.602176634e-19, 0.1, 1e-300}) {
    EXPECT_EQ(XMLTextToFloat(FloatToXMLText(value)), value) << value;
  }
  for (const char* bad :
       {"", "  ", "1,5", "1,000.5", "1.5x", "1e", "1e400", "+-1", "1 000", "0x10", "\xC2\xBD"}) {
    EXPECT_THROW(XMLTextToFloat(QString::fromUtf8(bad)), EConvertError) << bad;
  }
}

TEST(XMLFloatText, IgnoresADecimalCommaLocale) {
  const QLocale previous;
  QLocale::setDefault(QLocale(QLocale::German));
  ASSERT_EQ(QLocale().decimalPoint(), QStringLiteral(","));
  EXPECT_EQ(FloatToXMLText(1.5), QStringLiteral("1.5"));
  EXPECT_EQ(XMLTextToFloat(QStringLiteral("1.5")), 1.5);
  EXPECT_EQ(FloatToXMLText(1234567.5), QStringLiteral("1234567.5"));
  QLocale::setDefault(previous);
}

TEST(XMLDateText, WritesYearFirstRoundTripsToTheSecondAndRaisesForOtherForms) {
  EXPECT_EQ(DateTimeToXMLText(QDateTime(QDate(2024, 3, 7), QTime(18, 5, 9, 750))),
            QStringLiteral("2024/03/07 18:05:09"));
  for (Qt::TimeSpec timeSpec : {Qt::LocalTime, Qt::UTC}) {
    const QDateTime value(QDate(1, 12, 31), QTime(23, 59, 58, 999), timeSpec);
    const QDateTime read = XMLTextToDateTime(DateTimeToXMLText(value), timeSpec);
    EXPECT_EQ(read, value.addMSecs(-999));
    EXPECT_EQ(read.timeSpec(), timeSpec);
  }
  EXPECT_EQ(XMLTextToDateTime(QStringLiteral("2020/02/29"), Qt::UTC),
            QDateTime(QDate(2020, 2, 29), QTime(0, 0), Qt::UTC));
  for (const char* bad :
       {"", "2023/02/30", "2023-02-01 10:00:00", "2023/2/1", "2023/02/01 24:00:00",
        "2023/02/01T10:00:00", "0000/01/01", "2023/02/01 10:00", "07/03/2024", "2O23/02/01"}) {
    EXPECT_THROW(XMLTextToDateTime(QString::fromLatin1(bad)), EConvertError) << bad;
  }
  EXPECT_THROW(DateTimeToXMLText(QDateTime()), EConvertError);
  EXPECT_THROW(DateTimeToXMLText(QDateTime(QDate(10000, 1, 1), QTime(0, 0))), EConvertError);
}

}  // namespace
}  // namespace norva
