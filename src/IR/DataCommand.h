#pragma once
// What serial and network commands share: the bytes to send, whether the user interface shows
// them as hexadecimal, and the auto-repeat delay.

#include <IR/CommandObject.h>

#include <QByteArray>

namespace norva {

class TDataCommand : public TCommandObject {
  Q_OBJECT
  Q_PROPERTY(QByteArray Data READ GetData WRITE SetData)
  Q_PROPERTY(QString DataString READ GetDataString WRITE SetDataString STORED false)
  Q_PROPERTY(bool Binary READ GetBinary WRITE SetBinary)
  Q_PROPERTY(quint8 AutoRepeatDelay READ GetAutoRepeatDelay WRITE SetAutoRepeatDelay)

 public:
  const QByteArray& GetData() const { return mData; }
  void SetData(const QByteArray& data) { ChangeProperty("Data", mData, data); }
  // The bytes as upper-case hexadecimal, two digits each, no separators.
  QString GetDataString() const;
  // One byte per two digits (a trailing odd digit is ignored); conversion stops at the first pair
  // that is not hexadecimal, leaving the rest zero.
  void SetDataString(const QString& text);
  // Show and edit the data as hexadecimal rather than text; the bytes are the same either way.
  bool GetBinary() const { return mBinary; }
  void SetBinary(bool binary) { ChangeProperty("Binary", mBinary, binary); }
  quint8 GetAutoRepeatDelay() const { return mAutoRepeatDelay; }
  void SetAutoRepeatDelay(quint8 delay) {
    ChangeProperty("AutoRepeatDelay", mAutoRepeatDelay, delay);
  }

  // Nothing to send without data.
  bool IsEmpty() const override { return mData.isEmpty(); }
  // "Undefined" without data, else "OK".
  QString Status() const override;

 protected:
  using TCommandObject::TCommandObject;

  // The data, then the flag under `binaryElement` ("-1" or "0"), then "auto_repeat".
  void SaveData(pugi::xml_node element, const char* binaryElement) const;
  // Reads "data", the flag's element and "auto_repeat"; false for other elements.
  bool LoadDataElement(pugi::xml_node child, const char* binaryElement);
  bool SameData(const TDataCommand& other) const;
  // The data part through the setters, in order: data, flag, delay.
  void AssignDataTo(TDataCommand& dest) const;

 private:
  QByteArray mData;
  bool mBinary = false;
  quint8 mAutoRepeatDelay = 0;
};

}  // namespace norva
