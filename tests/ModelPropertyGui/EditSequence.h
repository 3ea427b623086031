#pragma once
// One edit sequence as the property it checks: a subject of a model class takes random user
// actions, each closed as one undo step; undoing every step must give back the file it started
// as, byte for byte, and redoing every step the file it ended as. A database must name received
// codes from its index as a walk through it does, after every step, undo and redo.

#include "EditChoices.h"
#include "EditSubjects.h"

#include <QString>

namespace norva::edits {

// Fewer steps than the undo history keeps, so that undoing everything reaches the start.
inline constexpr int MaxSequenceSteps = 40;

struct TSequenceResult {
  // Empty when every check held; otherwise a report naming the class, the steps taken and what
  // differed.
  QString Report;
  // How many steps changed the file: sequences that change nothing check nothing.
  int ChangingSteps = 0;
};

// Runs `steps` edits (1..MaxSequenceSteps) on a new subject of `kind` with undo on and both
// histories emptied first.
TSequenceResult RunEditSequence(const TSubjectKind& kind, TEditChoices& choices, int steps);

}  // namespace norva::edits
