#include <IR/DataCommand.h>

#include <NorvaGlobal/HexDigits.h>
#include <OrbGlobal/Xml/XmlBuilding.h>
#include <OrbGlobal/Xml/XmlLookup.h>
#include <Utils/StringUtils.h>

namespace norva {

namespace {

QByteArray BytesOfHex(const QString& text) {
  QByteArray bytes(text.size() / 2, '\0');
  for (qsizetype i = 0; i < bytes.size(); ++i) {
    const int byte = HexPairValue(text[2 * i].unicode(), text[2 * i + 1].unicode());
    if (byte < 0) break;
    bytes[i] = static_cast<char>(byte);
  }
  return bytes;
}

}  // namespace

QString TDataCommand::GetDataString() const { return QString::fromLatin1(UpperHex(mData)); }

void TDataCommand::SetDataString(const QString& text) {
  // Compared as bytes: lower-case digits naming the same bytes change nothing.
  const QByteArray data = BytesOfHex(text);
  if (data == mData) return;
  Updating("DataString");
  mData = data;
  Updated();
}

QString TDataCommand::Status() const {
  return IsEmpty() ? QStringLiteral("Undefined") : QStringLiteral("OK");
}

void TDataCommand::SaveData(pugi::xml_node element, const char* binaryElement) const {
  AddTextElement(element, "data", UpperHex(mData).constData());
  AddTextElement(element, binaryElement, mBinary ? "-1" : "0");
  AddNumberElement(element, "auto_repeat", mAutoRepeatDelay);
}

bool TDataCommand::LoadDataElement(pugi::xml_node child, const char* binaryElement) {
  if (IsNamed(child, "data"))
    SetDataString(GetElementText(child));
  else if (IsNamed(child, binaryElement))
    SetBinary(ElementBoolean(child));
  else if (IsNamed(child, "auto_repeat"))
    SetAutoRepeatDelay(ElementNumber<quint8>(child, 0));
  else
    return false;
  return true;
}

bool TDataCommand::SameData(const TDataCommand& other) const {
  return mData == other.mData && mBinary == other.mBinary &&
         mAutoRepeatDelay == other.mAutoRepeatDelay;
}

void TDataCommand::AssignDataTo(TDataCommand& dest) const {
  dest.SetData(mData);
  dest.SetBinary(mBinary);
  dest.SetAutoRepeatDelay(mAutoRepeatDelay);
}

}  // namespace norva
