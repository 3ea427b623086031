#include "EditSequence.h"

#include <IR_Database/IR_Database.h>
#include <NorvaGlobal/Exceptions.h>
#include <OrbGlobal/Undo/Undo.h>
#include <OrbGlobal/Undo/UndoControl.h>
#include "EditValues.h"

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
      .arg(QString::fromUtf8(expected.mid(from, 200)), QString::fromUtf8(actual.mid(from, 200)));
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

  QString Run(int steps) {
    try {
      RunSteps(steps);
    } catch (const ENorvaError& error) {
      Fail(QStringLiteral("raised ") + error.Message());
    } catch (const std::exception& error) {
      Fail(QStringLiteral("raised ") + QString::fromLocal8Bit(error.what()));
    }
    mSubject.reset();
    EmptyHistories();
    if (mFailures.isEmpty()) return {};
    return ClassNameOf(mKind.Class) + QStringLiteral(": ") + mFailures.join(u'\n') +
           QStringLiteral("\n  steps:\n    ") + mSteps.join(QStringLiteral("\n    "));
  }

 private:
  void RunSteps(int steps) {
    EmptyHistories();
    mSubject = mKind.Create(mChoices);
    if (mKind.Opened && (Undo().CanRevert() || Redo().CanRevert())) {
      Fail(QStringLiteral("opening left %1 entries in the undo history").arg(Undo().Count()));
    }
    EmptyHistories();
    const QByteArray start = mSubject->Saved();
    CheckNames(QStringLiteral("at the start"));
    for (int step = 1; step <= steps; ++step) {
      mSteps.append(QStringLiteral("%1. %2").arg(step).arg(EditOnce()));
      MaintainUndo();
      CheckNames(QStringLiteral("after step %1").arg(step));
    }
    const QByteArray end = mSubject->Saved();

    const int undone = RevertAll(Undo(), QStringLiteral("undo"), steps);
    if (Undo().CanRevert()) Fail(QStringLiteral("more undo steps than the %1 edits").arg(steps));
    const QByteArray undoneFile = mSubject->Saved();
    if (undoneFile != start) {
      Fail(QStringLiteral("after undoing all %1 steps the file is not the one it started as: ")
               .arg(undone) +
           Difference(start, undoneFile));
    }
    const int redone = RevertAll(Redo(), QStringLiteral("redo"), undone);
    if (Redo().CanRevert() || redone != undone)
      Fail(QStringLiteral("%1 steps undone but %2 redone").arg(undone).arg(redone));
    const QByteArray redoneFile = mSubject->Saved();
    if (redoneFile != end) {
      Fail(QStringLiteral("after redoing all %1 steps the file is not the one the edits made: ")
               .arg(redone) +
           Difference(end, redoneFile));
    }
    ChangeWithoutRecording();
  }

  QString EditOnce() {
    try {
      return mSubject->Edit(mChoices);
    } catch (const ENorvaError& error) {
      return QStringLiteral("(refused: %1)").arg(error.Message());
    }
  }

  // Reverts step after step, each closed as the application closes it, at most `limit` + 1 times
  // (one more than can be right, to see that there is more).
  int RevertAll(TUndo& history, const QString& what, int limit) {
    int reverted = 0;
    while (history.CanRevert() && reverted <= limit) {
      history.Revert();
      MaintainUndo();
      ++reverted;
      CheckNames(QStringLiteral("after %1 %2").arg(what).arg(reverted));
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
      CheckNames(QStringLiteral("after change %1 without undo").arg(change));
    }
  }

  // Some of the database's own streams (so there are matches) and a few others; each named from
  // the index and by walking. The probes are no part of the document: nothing is recorded.
  void CheckNames(const QString& when) {
    const TIRDB* database = mSubject->Database();
    if (!database) return;
    QList<TIRStreamData> probes;
    const QList<TIRStream*> streams = StreamsOf(*database);
    for (int i = 0; i < 4 && !streams.isEmpty(); ++i) probes.append(mChoices.Pick(streams)->Data());
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
    if (mFailures.size() < 4) mFailures.append(what);
  }

  const TSubjectKind& mKind;
  TEditChoices& mChoices;
  std::unique_ptr<TEditSubject> mSubject;
  QStringList mSteps;
  QStringList mFailures;
};

}  // namespace

QString RunEditSequence(const TSubjectKind& kind, TEditChoices& choices, int steps) {
  return TSequence(kind, choices).Run(std::clamp(steps, 1, MaxSequenceSteps));
}

}  // namespace norva::edits
