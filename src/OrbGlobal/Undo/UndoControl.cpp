#include <OrbGlobal/Undo/UndoControl.h>

#include <OrbGlobal/Undo/Undo.h>

#include <atomic>

namespace norva {

namespace {
std::atomic<int> gUndoDisableCount{0};
int gSavePointDisableCount = 0;
}  // namespace

void DisableUndo() { ++gUndoDisableCount; }

void EnableUndo(bool clearHistory) {
  int count = --gUndoDisableCount;
  if (count < 0) count = ++gUndoDisableCount;
  if (clearHistory && count < 1) {
    Undo().Empty();
    Redo().Empty();
  }
}

bool UndoDisabled() { return gUndoDisableCount.load() != 0; }

void DisableSavePoints() { ++gSavePointDisableCount; }

void EnableSavePoints() {
  if (gSavePointDisableCount > 0) --gSavePointDisableCount;
}

bool SavePointsEnabled() { return gSavePointDisableCount == 0; }

// What the action's edits discarded from the redo history goes first: destroying it may purge
// entries of this very action, which must not take a save point with them.
void MaintainUndo() {
  Redo().DestroyDiscarded();
  Undo().Maintain();
  Redo().Maintain();
}

}  // namespace norva
