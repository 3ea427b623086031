// The fields of serial and network commands as a file holds them: each one's element, the text of
// its values, its default, what a file may write instead, and what it refuses.

#include <IR/IR.h>
#include <OrbGlobal/Model/OrbErrors.h>
#include <OrbGlobal/Xml/XmlDocument.h>
#include <support/QtPrinters.h>

#include <QSet>
#include <QVariant>

#include <gtest/gtest.h>

#include <memory>
#include <vector>

using namespace norva;

namespace {

struct TField {
  const char* Property;
  const char* Element;
  QVariant Default;
  // Values and their text in the file.
  std::vector<std::pair<QVariant, const char*>> Values;
  // Other texts a file may hold, and what they read as.
  std::vector<std::pair<const char*, QVariant>> Read;
  // A text refused with EConvertError, if any.
  const char* Refused;
};

// What serial and network commands share; `binaryElement` is where each keeps its flag.
std::vector<TField> DataFields(const char* binaryElement) {
  return {
      {"Data",
       "data",
       QByteArray(),
       {{QByteArray("\r\n"), "0D0A"}, {QByteArray("*LON\r"), "2A4C4F4E0D"}},
       {{"0d0a", QByteArray("\r\n")}, {"0D0", QByteArray("\r")}, {"0DZZ", QByteArray("\r\0", 2)}},
       nullptr},
      {"Binary",
       binaryElement,
       false,
       {{true, "-1"}, {false, "0"}},
       {{"2", true}, {"TRUE", true}, {"false", false}},
       "yes"},
      {"AutoRepeatDelay",
       "auto_repeat",
       0,
       {{3, "3"}, {255, "255"}},
       {{"256", 0}, {"soon", 0}},
       nullptr},
  };
}

// A value as text that tells it apart: bytes in hexadecimal, every other field as its number.
QString Shown(const QVariant& value) {
  return value.typeId() == QMetaType::QByteArray ? QString::fromLatin1(value.toByteArray().toHex())
                                                 : QString::number(value.toLongLong());
}

// A command of class `type` with one byte to send (a command without data writes nothing).
std::unique_ptr<TCommandObject> NewCommand(const QMetaObject& type) {
  std::unique_ptr<TCommandObject> command(qobject_cast<TCommandObject*>(type.newInstance()));
  static_cast<TDataCommand*>(command.get())->SetDataString("01");
  return command;
}

// The command read from `<element>` holding the data 01 and `<child>text</child>`.
std::unique_ptr<TCommandObject> Read(const QMetaObject& type, const char* child, const char* text) {
  pugi::xml_document document;
  pugi::xml_node element = document.append_child(CommandElementName(&type));
  element.append_child("data").text() = "01";
  element.append_child(child).text() = text;
  std::unique_ptr<TCommandObject> command(qobject_cast<TCommandObject*>(type.newInstance()));
  command->Load(element);
  return command;
}

void ExpectFields(const QMetaObject& type, const std::vector<TField>& fields) {
  for (const TField& field : fields) {
    SCOPED_TRACE(field.Property);
    std::unique_ptr<QObject> created(type.newInstance());
    EXPECT_EQ(Shown(created->property(field.Property)), Shown(field.Default));
    QSet<QString> shown;  // the values must tell apart, or the checks below could not fail
    for (const auto& [value, text] : field.Values) {
      SCOPED_TRACE(text);
      shown.insert(Shown(value));
      std::unique_ptr<TCommandObject> command = NewCommand(type);
      ASSERT_TRUE(command->setProperty(field.Property, value));
      pugi::xml_document document;
      const pugi::xml_node element = document.append_child(CommandElementName(&type));
      command->Save(element);
      EXPECT_STREQ(element.child(field.Element).text().get(), text);
      std::unique_ptr<TCommandObject> read(qobject_cast<TCommandObject*>(type.newInstance()));
      read->Load(element);
      EXPECT_EQ(Shown(read->property(field.Property)), Shown(value));
      EXPECT_TRUE(read->Match(command.get()));
    }
    EXPECT_EQ(shown.size(), field.Values.size());
    for (const auto& [text, value] : field.Read)
      EXPECT_EQ(Shown(Read(type, field.Element, text)->property(field.Property)), Shown(value))
          << text;
    if (field.Refused) {
      EXPECT_THROW(Read(type, field.Element, field.Refused), EConvertError);
    }
  }
}

}  // namespace

TEST(DataCommandFields, SerialCommandsKeepEveryFieldUnderItsElement) {
  std::vector<TField> fields = {
      {"BaudRate",
       "baud_rate",
       9600,
       {{19200, "19200"}, {115200, "115200"}, {300, "300"}},
       {{"fast", 9600}, {"99999999999", 9600}},
       nullptr},
      {"Databits", "databits", 8, {{7, "7"}, {5, "5"}}, {{"300", 8}, {"-1", 8}}, nullptr},
      {"Stopbits",
       "stopbits",
       QVariant::fromValue(stop_bits_1),
       {{QVariant::fromValue(stop_bits_1), "stop_bits_1"},
        {QVariant::fromValue(stop_bits_1_5), "stop_bits_1_5"},
        {QVariant::fromValue(stop_bits_2), "stop_bits_2"}},
       {},
       "stop_bits_3"},
      {"Parity",
       "parity",
       QVariant::fromValue(parity_none),
       {{QVariant::fromValue(parity_none), "parity_none"},
        {QVariant::fromValue(parity_odd), "parity_odd"},
        {QVariant::fromValue(parity_even), "parity_even"},
        {QVariant::fromValue(parity_mark), "parity_mark"},
        {QVariant::fromValue(parity_space), "parity_space"}},
       {},
       "parity_purple"},
  };
  for (TField& field : DataFields("use_hex")) fields.push_back(field);
  ExpectFields(TRS232Command::staticMetaObject, fields);
}

TEST(DataCommandFields, NetworkCommandsKeepEveryFieldUnderItsElement) {
  std::vector<TField> fields = {
      {"IPProtocol",
       "ip_protocol",
       QVariant::fromValue(TCP_IP),
       {{QVariant::fromValue(TCP_IP), "TCP_IP"}, {QVariant::fromValue(UDP_IP), "UDP_IP"}},
       {},
       "SCTP_IP"},
      {"Port", "port", 0, {{4352, "4352"}, {65535, "65535"}}, {{"65536", 0}, {"-1", 0}}, nullptr},
  };
  for (TField& field : DataFields("binary")) fields.push_back(field);
  ExpectFields(TIPCommand::staticMetaObject, fields);
}
