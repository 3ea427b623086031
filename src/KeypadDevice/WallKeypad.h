#pragma once
// The six-button wall keypad type: the keypad Norva Studio designs, and the worked example of a
// keypad type. Each button holds a caption, a button class
// and a reference, by GUID, to a command of the installation's command library. It shows what a
// keypad type adds to the keypad document: its objects (with undoable properties), its contents
// in the file, and its device transfer.
//
// The device here is an image in memory standing in for the keypad's flash, holding the
// configuration as the file does: a real keypad type sends its own bytes over a bus link
// (NorvaBusComms) and reads them back.

#include <ButtonClasses/ButtonClass.h>
#include <KeypadDevice/KeypadDevice.h>

#include <QByteArray>

#include <array>

namespace norva {

// One button. Every property follows the model's setter contract, so each edit is undoable and
// marks the keypad changed.
class TWallKeypadButton : public norva::TOrbObject {
  Q_OBJECT
  Q_PROPERTY(QString Caption READ GetCaption WRITE SetCaption)
  Q_PROPERTY(QByteArray ButtonClassRecord READ GetButtonClassRecord WRITE SetButtonClassRecord)
  Q_PROPERTY(QString CommandGUID READ GetCommandGUID WRITE SetCommandGUID)

 public:
  Q_INVOKABLE explicit TWallKeypadButton(norva::TOrbObject* owner = nullptr);

  QString GetCaption() const { return mCaption; }
  void SetCaption(const QString& caption);
  norva::TButtonClass GetButtonClass() const { return mButtonClass; }
  void SetButtonClass(const norva::TButtonClass& buttonClass);
  // The command this button sends, in registry form; empty for none.
  QString GetCommandGUID() const { return mCommandGUID; }
  // Raises EConvertError for text that is neither empty nor a GUID in registry form.
  void SetCommandGUID(const QString& guid);

  bool IsBlank() const;
  void Blank();
  void CopyFrom(const TWallKeypadButton& source);
  // To a button: caption, button class and command, in one update (what a copy on the clipboard
  // carries).
  void AssignTo(QObject* dest) const override;
  void Save(pugi::xml_node element) const;
  void Load(pugi::xml_node element);

 private:
  // The button class as the property the undo protocol restores: its record bytes, which keep
  // an applet class's client class (a registered model class) beside group and class value.
  QByteArray GetButtonClassRecord() const;
  void SetButtonClassRecord(const QByteArray& record);

  QString mCaption;
  norva::TButtonClass mButtonClass;
  QString mCommandGUID;
};

class TWallKeypad : public norva::TKeypadDevice {
  Q_OBJECT
  Q_PROPERTY(norva::tKeypadZoneType ZoneType READ GetZoneType WRITE SetZoneType)
  Q_PROPERTY(int FirmwareVersion READ GetFirmwareVersion WRITE SetFirmwareVersion)

 public:
  static constexpr int ButtonCount = 6;
  // Firmware before this version has no button classes.
  static constexpr int CurrentFirmware = 3;

  Q_INVOKABLE explicit TWallKeypad(norva::TOrbObject* owner = nullptr);

  TWallKeypadButton& Button(int index) { return *mButtons.at(static_cast<std::size_t>(index)); }
  const TWallKeypadButton& Button(int index) const {
    return *mButtons.at(static_cast<std::size_t>(index));
  }
  norva::tKeypadZoneType GetZoneType() const { return mZoneType; }
  void SetZoneType(norva::tKeypadZoneType zoneType);
  int GetFirmwareVersion() const { return mFirmwareVersion; }
  void SetFirmwareVersion(int version);

  void SaveContents(pugi::xml_node root) const override;
  void LoadContents(pugi::xml_node root) override;
  void AssignContents(const norva::TKeypadDevice& source) override;
  void Purge() override;

  bool Upload() override;
  bool Download() override;
  bool Verify() override;
  bool Connect() override;
  void Disconnect() override;
  void ExternalInstanceChange(norva::TOrbObject* source) override;
  int GetMemoryUsage() const override;

  bool IsFirmwareOld() const override { return mFirmwareVersion < CurrentFirmware; }
  bool IsIncompatible() const override { return mFirmwareVersion <= 0; }

  // The keypad's flash as the last upload left it (the stand-in device).
  const QByteArray& DeviceImage() const { return mDeviceImage; }

 private:
  // The bytes the keypad stores.
  QByteArray Image() const;

  std::array<std::unique_ptr<TWallKeypadButton>, ButtonCount> mButtons;
  norva::tKeypadZoneType mZoneType = norva::AmpZone;
  int mFirmwareVersion = CurrentFirmware;
  bool mConnected = false;
  QByteArray mDeviceImage;
};

}  // namespace norva
