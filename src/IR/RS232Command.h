#pragma once
// Bytes sent to equipment over a serial line, with the line settings to send them with.

#include <IR/DataCommand.h>
#include <IR/IRTypes.h>

namespace norva {

class TRS232Command : public TDataCommand {
  Q_OBJECT
  Q_CLASSINFO("ClassGUID", "{3C1B5E7A-9D2F-4A61-8B0E-52C4D7F1A903}")
  Q_CLASSINFO("XmlElement", "rs232_command")
  Q_PROPERTY(qint32 BaudRate READ GetBaudRate WRITE SetBaudRate)
  Q_PROPERTY(quint8 Databits READ GetDatabits WRITE SetDatabits)
  Q_PROPERTY(norva::TNumStopbits Stopbits READ GetStopbits WRITE SetStopbits)
  Q_PROPERTY(norva::TParity Parity READ GetParity WRITE SetParity)

 public:
  Q_INVOKABLE explicit TRS232Command(norva::TOrbObject* owner = nullptr);

  qint32 GetBaudRate() const { return mBaudRate; }
  void SetBaudRate(qint32 rate) { ChangeProperty("BaudRate", mBaudRate, rate); }
  quint8 GetDatabits() const { return mDatabits; }
  void SetDatabits(quint8 bits) { ChangeProperty("Databits", mDatabits, bits); }
  TNumStopbits GetStopbits() const { return mStopbits; }
  void SetStopbits(TNumStopbits bits) { ChangeProperty("Stopbits", mStopbits, bits); }
  TParity GetParity() const { return mParity; }
  void SetParity(TParity parity) { ChangeProperty("Parity", mParity, parity); }

  // The user's name, or "Unknown RS232 Command".
  QString GetName() const override;
  // Another serial command with the same settings and data.
  bool Match(const TCommandObject* other) const override;
  void AssignTo(QObject* dest) const override;
  // Nothing at all for a command without data.
  void Save(pugi::xml_node element) const override;

 protected:
  void LoadElement(pugi::xml_node child) override;

 private:
  qint32 mBaudRate = 9600;
  quint8 mDatabits = 8;
  TNumStopbits mStopbits = stop_bits_1;
  TParity mParity = parity_none;
};

}  // namespace norva
