#pragma once
// An infra-red stream built as a native code of the installation's own amplifiers, relay modules
// and video switches. It remembers the zone, command and kind of device it was built for; files
// keep only the stream, so a stream read back is a plain TIRStream.

#include <IR/IRStream.h>
#include <IR/NorvaCodes.h>

namespace norva {

class TNorvaIRStream : public TIRStream {
  Q_OBJECT
  Q_CLASSINFO("ClassGUID", "{A4C2E8F1-6B3D-4E9A-8C7B-1D2E3F4A5B6C}")

 public:
  Q_INVOKABLE explicit TNorvaIRStream(norva::TOrbObject* owner = nullptr);

  // -1 for all zones.
  int GetZone() const { return mZone; }
  TNorvaCommand GetCommand() const { return mCommand; }
  TNorvaCommandType GetCommandType() const { return mCommandType; }

  // Builds the native frame of the command for the zone (-1 = all zones, else 0..95), in one
  // update: name, category, and the keypad function the command is, as a button class.
  void SetNorva(int zone, TNorvaCommand command, TNorvaCommandType type);
  // The frame's bytes as "01 FF 04", checksum left out.
  QString GetNorvaStr() const { return NorvaFrameText(Data()); }
  // A relay module's command (module = zone), named and filed under "Norva Sw6, zone N".
  void SetNorvaSw6(int zone, TSw6Cmd command);
  // The older frame relay modules understand.
  void SetNorvaCodeOld(std::uint8_t a, std::uint8_t b);

 protected:
  // Zone, command and kind go with the stream whenever it is copied or put back as a whole.
  void CopyDerived(const TIRStream& source) override;
  bool SameDerived(const TIRStream& other) const override;

 private:
  int mZone = -1;
  TNorvaCommand mCommand = nvStandbyCmd;
  TNorvaCommandType mCommandType = AmpCommand;
};

}  // namespace norva
