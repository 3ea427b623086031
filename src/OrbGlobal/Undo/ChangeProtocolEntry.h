#pragma once
// One remembered change: enough to put one object or list back as it was before the change.

namespace norva {

class TChangeProtocolEntry {
 public:
  // `affectedObject` is the object or list whose state the entry restores (not owned).
  explicit TChangeProtocolEntry(void* affectedObject) : mAffectedObject(affectedObject) {}
  virtual ~TChangeProtocolEntry() = default;
  TChangeProtocolEntry(const TChangeProtocolEntry&) = delete;
  TChangeProtocolEntry& operator=(const TChangeProtocolEntry&) = delete;

  // Restores the state; the change this makes is itself recorded (in the other history while a
  // history is reverting).
  virtual void Revert() = 0;

  void* AffectedObject() const { return mAffectedObject; }
  // True for the last entry of a completed user action.
  bool IsSavePoint() const { return mSavePoint; }

 private:
  friend class TUndo;

  void* mAffectedObject;
  // Links of the history's order, and of the entries of the same affected object, oldest first.
  TChangeProtocolEntry* mOlder = nullptr;
  TChangeProtocolEntry* mNewer = nullptr;
  TChangeProtocolEntry* mOlderSame = nullptr;
  TChangeProtocolEntry* mNewerSame = nullptr;
  bool mSavePoint = false;
};

}  // namespace norva
