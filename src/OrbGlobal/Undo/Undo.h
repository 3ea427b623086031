#pragma once
// A history of changes, oldest first, in steps closed by save points; the global Undo and Redo
// histories. Reverting the undo history records the reverse changes in the redo history, so a
// redo is a revert of that one.

#include <OrbGlobal/Undo/ChangeProtocolEntry.h>

#include <memory>
#include <unordered_map>

namespace norva {

class TUndo {
 public:
  // A step count above this makes Maintain drop the oldest step.
  static constexpr int MaxSavePoints = 50;

  TUndo() = default;
  ~TUndo() { Empty(); }
  TUndo(const TUndo&) = delete;
  TUndo& operator=(const TUndo&) = delete;

  // Walks from the nearer end: meant for inspection, not for loops over the history.
  TChangeProtocolEntry* GetChange(int index) const;
  TChangeProtocolEntry* FirstChange() const { return mOldest; }
  TChangeProtocolEntry* LastChange() const { return mNewest; }
  int Count() const { return mCount; }
  int NumSavePoints() const { return mSavePointCount; }
  bool CanRevert() const { return mCount > 0; }
  // True while this history is being reverted.
  bool Undoing() const { return mUndoing; }

  void Add(std::unique_ptr<TChangeProtocolEntry> entry);
  // Destroys every entry, the discarded ones too.
  void Empty();
  // Takes every entry out, as Empty does, but destroys them only at DestroyDiscarded or Empty. A
  // fresh edit discards the redo history from inside a setter, and an entry may hold the very
  // object being edited: the object must outlive its setter.
  void Discard();
  // Destroys what Discard took out; called once the user action is complete.
  void DestroyDiscarded();
  // Reverts the newest step: at least the newest entry, then back to the previous save point.
  // An exception from an entry propagates and leaves that entry in the history.
  void Revert();
  // Closes the current step with a save point (unless save points are disabled) and drops the
  // oldest step when more than MaxSavePoints are held. Never raises.
  void Maintain();
  // Takes out and destroys every entry that restores `object`, newest first, discarded ones too.
  void RemoveChangesAffectingObject(const void* object);

 private:
  void Unlink(TChangeProtocolEntry* entry);
  void MarkSavePoint(TChangeProtocolEntry* entry);
  void DropOldestStep();

  TChangeProtocolEntry* mOldest = nullptr;
  TChangeProtocolEntry* mNewest = nullptr;
  int mCount = 0;
  int mSavePointCount = 0;
  bool mUndoing = false;
  // The newest entry of each affected object: destroying an object finds its entries without
  // walking the whole history.
  std::unordered_map<const void*, TChangeProtocolEntry*> mNewestByObject;
  // What Discard took out, indexed alike so that destroyed objects are purged from it too; created
  // by the first Discard.
  std::unique_ptr<TUndo> mDiscarded;
};

// The global histories; they live as long as the process and are emptied when it ends.
TUndo& Undo();
TUndo& Redo();

// Appends a new entry: to Undo (discarding Redo, since a fresh edit discards what could be redone)
// unless Undo is being reverted; to Redo while Undo is reverted; and to Undo without touching Redo
// while Redo is reverted.
void RecordEntry(std::unique_ptr<TChangeProtocolEntry> entry);

template <typename TEntry>
TEntry* RecordChange(std::unique_ptr<TEntry> entry) {
  TEntry* recorded = entry.get();
  RecordEntry(std::move(entry));
  return recorded;
}

}  // namespace norva
