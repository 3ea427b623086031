// Edit sequences chosen by the input: its first byte picks the model class, the rest the user
// actions and their values. A sequence whose undo does not give back the file it started from,
// whose redo does not give back the file its actions made, or whose database names codes from a
// stale index aborts with its report.
#include "EditSequence.h"
#include "EditSubjects.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace norva::edits;
  RegisterModelClasses();
  if (size == 0) return 0;
  const auto& kinds = SubjectKinds();
  const TSubjectKind& kind = kinds.at(data[0] % kinds.size());
  TByteChoices choices(data + 1, size - 1);
  const int steps = choices.Between(1, MaxSequenceSteps);
  const QString report = RunEditSequence(kind, choices, steps).Report;
  if (report.isEmpty()) return 0;
  std::fprintf(stderr, "%s\n", report.toLocal8Bit().constData());
  std::abort();
}
