#pragma once
// Switching the recording of changes off and on, and closing user actions as undo steps.

namespace norva {

// While undo is disabled (any number of nested DisableUndo calls not yet matched), no object
// records anything. The counter is atomic; everything else belongs to the UI thread.
void DisableUndo();
// Never lets the counter stay below 0. With `clearHistory`, once undo is enabled again both
// histories are emptied (loading a document leaves no history).
void EnableUndo(bool clearHistory = false);
bool UndoDisabled();

// Undo switched off for one scope, however it ends. With `clearHistory`, both histories are
// emptied once undo is on again, as a load or a clear of a whole document leaves no history.
class TUndoSuspended {
 public:
  explicit TUndoSuspended(bool clearHistory = false) : mClearHistory(clearHistory) {
    DisableUndo();
  }
  ~TUndoSuspended() { EnableUndo(mClearHistory); }
  TUndoSuspended(const TUndoSuspended&) = delete;
  TUndoSuspended& operator=(const TUndoSuspended&) = delete;

 private:
  bool mClearHistory;
};

// While save points are disabled, Maintain closes no step: multi-step operations wrapped in these
// become one undo step.
void DisableSavePoints();
void EnableSavePoints();
bool SavePointsEnabled();

// Closes the completed user action as one step in both histories, after destroying what its
// edits discarded from the redo history; called after each command and after each undo and redo.
void MaintainUndo();

}  // namespace norva
