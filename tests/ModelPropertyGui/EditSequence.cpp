#include "EditSequence.h"

#include "EditValues.h"

#include <IR_Database/IR_Database.h>
#include <NorvaGlobal/Exceptions.h>
#include <OrbGlobal/Undo/Undo.h>
#include <OrbGlobal/Undo/UndoControl.h>

#include <QStringList>

#include <algorithm>
#include <exception>
#include <memory>

namespace norva::edits {

namespace {

void EmptyHistories() {
  while (UndoDisabled()) EnableUndo();
  while (!SavePointsEnabled()) EnableSavePoints();
  Undo().Empty();
  Redo().Empty();
}

// An excerpt of a file on report lines of their own, each indented.
QString Excerpt(const QByteArray& file, qsizetype from) {
  return QString::fromUtf8(file.mid(from, 200)).replace(u'\n', QStringLiteral("\n              "));
}

// Where two files first differ, with the text around that place in each.
QString Difference(const QByteArray& expected, const QByteArray& actual) {
  qsizetype at = 0;
  while (at < expected.size() && at < actual.size() && expected[at] == actual[at]) ++at;
  const qsizetype from = std::max<qsizetype>(0, at - 80);
  return QStringLiteral(
             "first difference at byte %1 of %2 (now %3 bytes)\n"
             "    expected: ...%4...\n    actual:   ...%5...")
      .arg(at)
      .arg(expected.size())
      .arg(actual.size())
      .arg(Excerpt(expected, from), Excerpt(actual, from));
}

QList<TIRStream*> StreamsOf(const TIRDB& database) {
  QList<TIRStream*> streams;
  for (int m = 0; m < database.GetMakeCount(); ++m) {
    const TMake* make = database.GetMake(m);
    for (int i = 0; i < make->GetModelCount(); ++i) {
      const TModel* model = make->GetModel(i);
      for (int c = 0; c < model->GetCommandCount(); ++c)
        if (auto* stream = qobject_cast<TIRStream*>(model->GetCommand(c))) streams.append(stream);
    }
  }
  return streams;
}

QString Naming(bool found, const TIRStream& stream) {
  return found ? QStringLiteral("'%1' in '%2'").arg(stream.GetName(), stream.GetCategory())
               : QStringLiteral("not found");
}

class TSequence {
 public:
  TSequence(const TSubjectKind& kind, TEditChoices& choices) : mKind(kind), mChoices(choices) {}

  TSequenceResult Run(int steps) {
    try {
      RunSteps(steps);
    } catch (const ENorvaError& error) {
      Fail(QStringLiteral("raised ") + error.Message());
    } catch (const std::exception& error) {
      Fail(QString::fromLocal8Bit(error.what()));
    }
    mSubject.reset();
    EmptyHistories();
    TSequenceResult result{{}, static_cast<int>(mChangingSteps.size())};
    if (!mFailures.isEmpty()) {
      result.Report = ClassNameOf(mKind.Class) + QStringLiteral(": ") + mFailures.join(u'\n') +
                      QStringLiteral("\n  steps:\n    ") + mSteps.join(QStringLiteral("\n    "));
    }
    return result;
  }

 private:
  void RunSteps(int steps) {
    EmptyHistories();
    mSubject = mKind.Create(mChoices);
    if (mKind.Opened && (Undo().CanRevert() || Redo().CanRevert())) {
      Fail(QStringLiteral("opening left %1 entries in the undo history").arg(Undo().Count()));
    }
    EmptyHistories();
    mFiles = {mSubject->Saved()};
    CheckNames(QStringLiteral("at the start"));
    int recorded = 0;
    for (int step = 1; step <= steps; ++step) {
      const int stepsBefore = Undo().NumSavePoints();
      mSteps.append(QStringLiteral("%1. %2").arg(step).arg(EditOnce()));
      MaintainUndo();
      const bool undoable = Undo().NumSavePoints() > stepsBefore;
      if (undoable) ++recorded;
      const QByteArray file = mSubject->Saved();
      if (file != mFiles.last()) {
        if (!undoable) {
          Fail(QStringLiteral("step %1 changed the file but left no undo step: ").arg(step) +
               Difference(mFiles.last(), file));
        }
        mFiles.append(file);
        mChangingSteps.append(step);
      }
      CheckNames(QStringLiteral("after step %1").arg(step));
    }
    const int undone = RevertAll(Undo(), QStringLiteral("undo"), recorded);
    if (undone != recorded)
      Fail(QStringLiteral("%1 steps recorded but %2 undone").arg(recorded).arg(undone));
    RevertAll(Redo(), QStringLiteral("redo"), undone);
    ChangeWithoutRecording();
  }

  QString EditOnce() {
    try {
      return mSubject->Edit(mChoices);
    } catch (const ENorvaError& error) {
      return QStringLiteral("(refused: %1)").arg(error.Message());
    }
  }

  // Reverts step after step, each closed as the application closes it, at most one more time than
  // `limit` (to show that there is more). After each the file must be the one before the step
  // undone, or the one the step redone made; a step that changed no file (a name files do not
  // keep, a document marked changed) leaves the file as it was, and need not be redone. In the
  // end undoing must reach the start, redoing the file the edits made.
  int RevertAll(TUndo& history, const QString& what, int limit) {
    const bool undoing = &history == &Undo();
    const int last = static_cast<int>(mFiles.size()) - 1;
    int at = undoing ? last : 0;  // the file the reverts have reached
    bool differed = false;
    int reverted = 0;
    while (history.CanRevert() && reverted <= limit) {
      history.Revert();
      MaintainUndo();
      ++reverted;
      CheckNames(QStringLiteral("after %1 %2").arg(what).arg(reverted));
      if (differed) continue;
      const QByteArray file = mSubject->Saved();
      if (file == mFiles.at(at)) continue;
      const int next = undoing ? at - 1 : at + 1;
      if (next >= 0 && next <= last && file == mFiles.at(next)) {
        at = next;
        continue;
      }
      differed = true;
      if (next < 0 || next > last) {
        Fail(QStringLiteral("%1 %2 changed the file past every step").arg(what).arg(reverted));
        continue;
      }
      Fail(QStringLiteral("%1 of step %2 gave another file than %3: ")
               .arg(what)
               .arg(mChangingSteps.at(undoing ? at - 1 : at))
               .arg(undoing ? QStringLiteral("the one before it")
                            : QStringLiteral("the one it made")) +
           Difference(mFiles.at(next), file));
    }
    if (!differed && at != (undoing ? 0 : last)) {
      Fail(undoing ? QStringLiteral("undoing all steps did not reach the start")
                   : QStringLiteral("redoing all steps did not reach the file the edits made"));
    }
    return reverted;
  }

  // Changes no undo step records (stream edits with undo off, and the stream operations that by
  // design record nothing) must still reach the database's index.
  void ChangeWithoutRecording() {
    TIRDB* database = mSubject->Database();
    if (!database) return;
    for (int change = 1; change <= 3; ++change) {
      const QList<TIRStream*> streams = StreamsOf(*database);
      if (streams.isEmpty()) return;
      TIRStream* stream = mChoices.Pick(streams);
      const TIRStreamData before = stream->Data();
      const TUndoSuspended undoOff;
      QString done;
      switch (mChoices.Below(4)) {
        case 0:
          stream->ClearIDPairs();
          done = QStringLiteral("ClearIDPairs");
          break;
        case 1: {
          const int index = mChoices.Between(0, 3);
          const TPeriodIDPair pair{static_cast<TPeriodID>(mChoices.Below(4)),
                                   static_cast<TPeriodID>(mChoices.Below(16))};
          stream->SetPeriodIDPair(index, pair);
          done = QStringLiteral("SetPeriodIDPair(%1, %2/%3)")
                     .arg(index)
                     .arg(int{pair.OnID})
                     .arg(int{pair.OffID});
          break;
        }
        case 2:
          stream->SetHexCode(HexCodeValue(mChoices));
          done = QStringLiteral("SetHexCode");
          break;
        default:
          stream->Delete();
          done = QStringLiteral("deleted");
          break;
      }
      mSteps.append(QStringLiteral("without undo %1: a stream %2").arg(change).arg(done));
      CheckNames(QStringLiteral("after change %1 without undo").arg(change), {before});
    }
  }

  // `probes`, some of the database's own streams (so there are matches), some it held before and a
  // few others; each named from the index and by walking. The probes are no part of the document:
  // nothing is recorded.
  void CheckNames(const QString& when, QList<TIRStreamData> probes = {}) {
    const TIRDB* database = mSubject->Database();
    if (!database) return;
    const QList<TIRStream*> streams = StreamsOf(*database);
    for (int i = 0; i < 4 && !streams.isEmpty(); ++i) probes.append(mChoices.Pick(streams)->Data());
    // Streams the database held before: a stale index still finds them.
    for (int i = 0; i < 2 && !mSeen.isEmpty(); ++i) probes.append(mChoices.Pick(mSeen));
    for (const TIRStream* stream : streams) {
      if (mSeen.size() < MaxSeen && !mSeen.contains(stream->Data())) mSeen.append(stream->Data());
    }
    const TUndoSuspended undoOff;
    for (int i = 0; i < 2; ++i) {
      TIRStream other;
      other.SetHexCode(HexCodeValue(mChoices));
      probes.append(other.Data());
    }
    for (const TIRStreamData& probe : probes) {
      TIRStream byIndex;
      byIndex.SetData(probe);
      TIRStream byWalking;
      byWalking.SetData(probe);
      const bool indexed = database->GetNames(byIndex);
      const bool walked = database->GetNamesByWalking(byWalking);
      if (indexed == walked && byIndex.GetName() == byWalking.GetName() &&
          byIndex.GetCategory() == byWalking.GetCategory())
        continue;
      Fail(QStringLiteral("%1: GetNames gives %2, GetNamesByWalking %3 for the stream %4 / %5")
               .arg(when, Naming(indexed, byIndex), Naming(walked, byWalking),
                    probe.GetPeriodLengthsString(), probe.GetPeriodIDPairsString()));
      return;
    }
  }

  void Fail(const QString& what) {
    if (mFailures.size() < MaxFailures) mFailures.append(what);
  }

  const TSubjectKind& mKind;
  TEditChoices& mChoices;
  std::unique_ptr<TEditSubject> mSubject;
  QStringList mSteps;
  // The file at the start and after each step that changed it, and those steps.
  QList<QByteArray> mFiles;
  QList<int> mChangingSteps;
  // Streams the database has held, as probes for its naming.
  static constexpr qsizetype MaxSeen = 64;
  // Enough for each kind of check to report once.
  static constexpr qsizetype MaxFailures = 10;
  QList<TIRStreamData> mSeen;
  QStringList mFailures;
};

}  // namespace

TSequenceResult RunEditSequence(const TSubjectKind& kind, TEditChoices& choices, int steps) {
  return TSequence(kind, choices).Run(std::clamp(steps, 1, MaxSequenceSteps));
}

}  // namespace norva::edits
