#pragma once
// The built-in makes of a public IR database: the installation's own amplifiers, video switch and
// relay modules, and the Integra amplifier it also drives. Their "models" are read-only trees of
// command groups whose leaves hold every useful native code of a zone, built when the make is.
// Each code's GUID follows from its kind of device, zone and command, the same in every run.

#include <IR/IRTypes.h>
#include <IR_Database/Make.h>

namespace norva {

// A named node of a built-in make: child groups, and, in a leaf, commands.
class TNorvaGroup : public TCommandObjectList {
  Q_OBJECT

 public:
  Q_INVOKABLE explicit TNorvaGroup(norva::TOrbObject* owner = nullptr);

  TNorvaGroup* GetChildObject(int index) const {
    return static_cast<TNorvaGroup*>(mChildObjects.Get(index));
  }
  int GetChildObjectCount() const { return mChildObjects.Count(); }
  // Appends a child group named `name` and returns it.
  TNorvaGroup* AddGroup(const QString& name);
  // Appends a group built elsewhere (a leaf), owned by this one.
  void AddChild(TNorvaGroup* child) { mChildObjects.Add(child); }
  bool IsReadOnly() const override { return true; }
  TOrbObjectList* GetChildList(const TOrbObject* child) const override;

 private:
  // mutable: the child list is handed out by the const GetChildList.
  mutable TOrbObjectList mChildObjects;
};

// A leaf: the useful native codes of one zone (-1: all zones) for one kind of device, or the 28
// commands of one six-relay module.
class TNorvaCommandGroup : public TNorvaGroup {
  Q_OBJECT
  Q_PROPERTY(int Zone READ GetZone)
  Q_PROPERTY(norva::TNorvaCommandType CommandType READ GetCommandType)

 public:
  Q_INVOKABLE explicit TNorvaCommandGroup(norva::TOrbObject* owner = nullptr);
  // "All zones" or "Zone N", holding every command useful for the zone and type, in code order.
  TNorvaCommandGroup(TOrbObject* owner, TNorvaCommandType type, int zone);
  // "Zone N" of a six-relay module N, holding its 28 commands.
  static TNorvaCommandGroup* RelayModule(TOrbObject* owner, int module);

  int GetZone() const { return mZone; }
  TNorvaCommandType GetCommandType() const { return mCommandType; }

 private:
  int mZone = -1;
  TNorvaCommandType mCommandType = AmpCommand;
};

class TNorvaIntegraMake : public TMake {
  Q_OBJECT

 public:
  TNorvaGroup* GetNorvaCommandGroup(int index) const {
    return static_cast<TNorvaGroup*>(mNorvaCommandGroups.Get(index));
  }
  int GetNorvaCommandGroupCount() const { return mNorvaCommandGroups.Count(); }
  bool IsReadOnly() const override { return true; }

 protected:
  explicit TNorvaIntegraMake(TOrbObject* owner);
  TNorvaGroup* AddGroup(const QString& name);
  // Leaves (type, zone) for zones first..last, in `group`.
  static void AddZones(TNorvaGroup* group, TNorvaCommandType type, int first, int last);

 private:
  TOrbObjectList mNorvaCommandGroups;
};

// "NORVA": Amplifier (all zones, amp zones 0..31, preamp zones, amp zones 32..63 and 64..95),
// "V2HD Video switch" (zones 0..95) and "Sw6" (relay modules 0..15).
class TNorvaMake : public TNorvaIntegraMake {
  Q_OBJECT

 public:
  explicit TNorvaMake(TOrbObject* owner);
};

// "INTEGRA": "Quil-2.3" with all zones, amp zones 0..31 and preamp zones 0..31.
class TIntegraMake : public TNorvaIntegraMake {
  Q_OBJECT

 public:
  explicit TIntegraMake(TOrbObject* owner);
};

}  // namespace norva
