// Every model class under random user actions: undoing all of them gives back the file the object
// started as, byte for byte, redoing all of them the file the actions made, and a database names
// received codes from its index as a walk through it does. One test per class, named after it,
// so that a failing class shows by name; a failure names its seed and steps to replay them.

#include <OrbGlobal/Model/OrbClassRegistry.h>
#include "EditSequence.h"
#include "EditSubjects.h"

#include <gtest/gtest.h>

#include <string>

using namespace norva;
using namespace norva::edits;

namespace {

constexpr std::uint32_t SequencesPerClass = 1500;
// Reports of failures that begin alike stand for one fault; a few different ones are shown.
constexpr int ReportedFaults = 3;

QString RunSeeded(const TSubjectKind& kind, std::uint32_t seed, int steps) {
  TSeededChoices choices(seed);
  return RunEditSequence(kind, choices, steps);
}

// The choices of a sequence do not depend on its length, so its shortest failing beginning
// shows the step that goes wrong.
QString ShortestReport(const TSubjectKind& kind, std::uint32_t seed, int steps) {
  for (int shorter = 1; shorter < steps; ++shorter) {
    const QString report = RunSeeded(kind, seed, shorter);
    if (!report.isEmpty())
      return QStringLiteral("seed %1, %2 steps: ").arg(seed).arg(shorter) + report;
  }
  return QStringLiteral("seed %1, %2 steps: ").arg(seed).arg(steps) + RunSeeded(kind, seed, steps);
}

// The first line of a report without its numbers (steps, bytes).
QString FaultOf(const QString& report) {
  QString fault = report.section(u'\n', 0, 0).left(90);
  fault.removeIf([](QChar c) { return c.isDigit(); });
  return fault;
}

class TModelEdits : public ::testing::TestWithParam<std::size_t> {
 protected:
  void SetUp() override { RegisterModelClasses(); }
};

std::string KindName(const ::testing::TestParamInfo<std::size_t>& info) {
  return ClassNameOf(SubjectKinds().at(info.param).Class).toStdString();
}

}  // namespace

TEST(ModelClasses, EveryRegisteredClassIsAcceptedAndHasEditSequences) {
  const QStringList& refused = RegisterModelClasses();
  EXPECT_TRUE(refused.isEmpty()) << refused.join(u'\n').toStdString();
  const QList<TOrbObjectClass>* registered = GetRegisteredOrbClasses();
  ASSERT_NE(registered, nullptr);
  for (const TOrbObjectClass cls : *registered)
    EXPECT_NE(SubjectKindOf(cls), nullptr)
        << "no edit sequences for " << ClassNameOf(cls).toStdString();
}

TEST_P(TModelEdits, UndoAndRedoGiveBackEveryFile) {
  const TSubjectKind& kind = SubjectKinds().at(GetParam());
  std::uint32_t failed = 0;
  QStringList faults;
  QStringList reports;
  for (std::uint32_t seed = 1; seed <= SequencesPerClass; ++seed) {
    const int steps = 1 + static_cast<int>(seed % MaxSequenceSteps);
    const QString report = RunSeeded(kind, seed, steps);
    if (report.isEmpty()) continue;
    ++failed;
    if (faults.size() >= ReportedFaults || faults.contains(FaultOf(report))) continue;
    faults.append(FaultOf(report));
    reports.append(ShortestReport(kind, seed, steps));
  }
  EXPECT_EQ(failed, 0u) << failed << " of " << SequencesPerClass << " sequences failed, such as\n"
                        << reports.join(QStringLiteral("\n\n")).toStdString();
}

INSTANTIATE_TEST_SUITE_P(EveryClass, TModelEdits,
                         ::testing::Range<std::size_t>(0, SubjectKinds().size()), KindName);
