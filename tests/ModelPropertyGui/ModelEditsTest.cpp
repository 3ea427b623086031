// Every model class under random user actions: undoing all of them gives back the file the object
// started as, byte for byte, redoing all of them the file the actions made, and a database names
// received codes from its index as a walk through it does. One test per class, named after it,
// so that a failing class shows by name; a failure names its seed and steps to replay them.

#include "EditSequence.h"
#include "EditSubjects.h"

#include <OrbGlobal/Model/OrbClassRegistry.h>

#include <QMap>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

using namespace norva;
using namespace norva::edits;

namespace {

constexpr std::uint32_t SequencesPerClass = 3000;
// Reports of a few sequences are shown, each naming a fault the ones before did not.
constexpr qsizetype ReportedFaults = 4;

TSequenceResult RunSeeded(const TSubjectKind& kind, std::uint32_t seed, int steps) {
  TSeededChoices choices(seed);
  return RunEditSequence(kind, choices, steps);
}

// The faults a report names: its lines before the steps that are not details of a difference,
// each cut before its particulars (names, texts, numbers of steps and bytes).
QStringList FaultsOf(const QString& report) {
  QStringList faults;
  const QString failures = report.section(QStringLiteral("\n  steps:"), 0, 0);
  for (QString line : failures.section(QStringLiteral(": "), 1).split(u'\n')) {
    if (line.isEmpty() || line.front().isSpace()) continue;
    line = line.section(QStringLiteral(": first difference"), 0, 0).section(u'\'', 0, 0);
    line.removeIf([](QChar c) { return c.isDigit(); });
    faults.append(line);
  }
  return faults;
}

// The choices of a sequence do not depend on its length, so the shortest beginning of it that
// shows one of the `wanted` faults shows the step that goes wrong.
QString ShortestReport(const TSubjectKind& kind, std::uint32_t seed, int steps,
                       const QStringList& wanted) {
  for (int shorter = 1; shorter <= steps; ++shorter) {
    const QString report = RunSeeded(kind, seed, shorter).Report;
    const QStringList named = FaultsOf(report);
    if (std::any_of(named.begin(), named.end(),
                    [&](const QString& fault) { return wanted.contains(fault); }))
      return QStringLiteral("seed %1, %2 steps: ").arg(seed).arg(shorter) + report;
  }
  return {};
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
  std::uint32_t changingSteps = 0;
  QMap<QString, int> sequencesOfFault;
  QStringList reports;
  for (std::uint32_t seed = 1; seed <= SequencesPerClass; ++seed) {
    const int steps = 1 + static_cast<int>(seed % MaxSequenceSteps);
    const TSequenceResult result = RunSeeded(kind, seed, steps);
    changingSteps += static_cast<std::uint32_t>(result.ChangingSteps);
    const QString& report = result.Report;
    if (report.isEmpty()) continue;
    ++failed;
    QStringList unseen;
    for (const QString& fault : FaultsOf(report)) {
      if (!sequencesOfFault.contains(fault)) unseen.append(fault);
      ++sequencesOfFault[fault];
    }
    if (!unseen.isEmpty() && reports.size() < ReportedFaults)
      reports.append(ShortestReport(kind, seed, steps, unseen));
  }
  QString faults;
  for (auto fault = sequencesOfFault.cbegin(); fault != sequencesOfFault.cend(); ++fault)
    faults += QStringLiteral("  %1 x %2\n").arg(fault.value(), 5).arg(fault.key());
  // Most steps change the file (several per sequence on average), or the sequences test little.
  EXPECT_GT(changingSteps, 4 * SequencesPerClass);
  EXPECT_EQ(failed, 0u) << failed << " of " << SequencesPerClass
                        << " sequences failed; sequences showing each fault:\n"
                        << faults.toStdString() << "the first to show them:\n"
                        << reports.join(QStringLiteral("\n\n")).toStdString();
}

INSTANTIATE_TEST_SUITE_P(EveryClass, TModelEdits,
                         ::testing::Range<std::size_t>(0, SubjectKinds().size()), KindName);
