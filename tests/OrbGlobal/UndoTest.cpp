// Undo and redo: every publishable property type registers and comes back exactly, steps and save
// points, the 50-step bound, list edits restored with the very same objects, and histories purged
// of destroyed objects.
#include "ModelFixtures.h"

#include <NorvaGlobal/DebugOutput.h>
#include <NorvaGlobal/Exceptions.h>
#include <OrbGlobal/Model/OrbClassRegistry.h>
#include <OrbGlobal/Undo/ListEntries.h>
#include <OrbGlobal/Undo/PropertyEntries.h>
#include <OrbGlobal/Undo/SubObjectSnapshot.h>
#include <OrbGlobal/Undo/Undo.h>
#include <OrbGlobal/Undo/UndoControl.h>
#include <Testing/RecordingUIServices.h>

#include <QPointer>
#include <QStringList>

#include <functional>

namespace fixture {

using namespace norva;

namespace {

// Captures the debug output for one test.
class TDebugLines {
 public:
  TDebugLines() : mPrevious(SetDebugOutputSink([this](const QString& line) { mLines << line; })) {}
  ~TDebugLines() { SetDebugOutputSink(mPrevious); }
  const QStringList& Lines() const { return mLines; }

 private:
  QStringList mLines;
  TDebugSink mPrevious;
};

class UndoTest : public TModelTest {
 protected:
  void SetUp() override {
    TModelTest::SetUp();
    item = document.AddItem(QStringLiteral("item"));
    Undo().Empty();
  }

  // One user action: the edit, then the step is closed.
  void Step(const std::function<void()>& edit) {
    edit();
    MaintainUndo();
  }

  TDocument document;
  TItem* item = nullptr;
};

struct TTypeCase {
  const char* property;
  QVariant changed;
};

// A value of each TValues property other than its default.
QList<TTypeCase> ChangedValues(TTarget& target) {
  QFont font(QStringLiteral("Sans"), 17);
  font.setItalic(true);
  return {
      {"Bool", true},
      {"Int8", QVariant::fromValue<qint8>(-128)},
      {"UInt8", QVariant::fromValue<quint8>(255)},
      {"Int16", QVariant::fromValue<qint16>(-32768)},
      {"UInt16", QVariant::fromValue<quint16>(65535)},
      {"Int32", QVariant::fromValue<qint32>(-2147483647 - 1)},
      {"UInt32", QVariant::fromValue<quint32>(0xFFFFFFFFu)},
      {"Char", QVariant::fromValue('x')},
      {"Char16", QVariant::fromValue(u'\u20ac')},
      {"Char32", QVariant::fromValue(U'\U0001F50A')},
      {"QtChar", QVariant::fromValue(QChar(0x00e9))},
      {"Shape", QVariant::fromValue(shapeOval)},
      {"Features", QVariant::fromValue(TFeatures{featureSound, featureLock})},
      {"Bytes", QByteArray("\x00\xff", 2)},
      {"Text", QStringLiteral("Zone \u00e9")},
      {"Float", 0.1f},
      {"Double", -2.5},
      {"Int64", QVariant::fromValue<qint64>(-0x123456789ALL)},
      {"UInt64", QVariant::fromValue<quint64>(0xFFFFFFFFFFFFFFFFull)},
      {"DateTime", QDateTime(QDate(2024, 2, 29), QTime(23, 59, 58, 999), Qt::UTC)},
      {"Variant", QVariant::fromValue(QStringList{QStringLiteral("a")})},
      {"Colour", QColor(10, 20, 30, 40)},  // from no colour to a translucent one
      {"Font", font},
      // Plain Qt value types; the floating-point ones with fractions no 32-bit ordinal could keep.
      {"Point", QPoint(-3, 70000)},
      {"PointF", QPointF(0.1, -2.75)},
      {"Size", QSize(640, -1)},
      {"SizeF", QSizeF(1e-3, 2.5)},
      {"Rect", QRect(-1, 2, 300, 4)},
      {"RectF", QRectF(0.5, -0.25, 1.125, 1e9)},
      {"IntList", QVariant::fromValue(QList<int>{3, 1, 2})},
      {"DoubleVector", QVariant::fromValue(std::vector<double>{0.5, -1})},
      {"Target", QVariant::fromValue(&target)},
      {"NameRaw", QStringLiteral(" spaced ")},
  };
}

TEST_F(UndoTest, EveryPublishableTypeIsUndoneAndRedoneExactly) {
  ASSERT_NO_THROW(RegisterOrbObjectClass(&TValues::staticMetaObject));
  TTarget target;
  TValues values(&document);
  for (const TTypeCase& type : ChangedValues(target)) {
    SCOPED_TRACE(type.property);
    const QVariant initial = values.property(type.property);
    ASSERT_NE(initial, type.changed);
    Step([&] { ASSERT_TRUE(values.setProperty(type.property, type.changed)); });
    ASSERT_EQ(Undo().Count(), 1);
    const auto* entry = dynamic_cast<TChangedProperty*>(Undo().LastChange());
    ASSERT_NE(entry, nullptr);
    EXPECT_EQ(entry->PropertyName(), QString::fromLatin1(type.property));

    Undo().Revert();
    MaintainUndo();
    EXPECT_EQ(values.property(type.property), initial);
    Redo().Revert();
    MaintainUndo();
    EXPECT_EQ(values.property(type.property), type.changed);
    Undo().Revert();
    Undo().Empty();
    Redo().Empty();
  }
}

TEST_F(UndoTest, SnapshotsKeepEveryPublishableType) {
  TTarget target;
  TValues values;
  const QList<TTypeCase> cases = ChangedValues(target);
  for (const TTypeCase& type : cases) values.setProperty(type.property, type.changed);
  const std::unique_ptr<TOrbObject> restored = TSubObjectSnapshot(&values).Restore();
  ASSERT_NE(qobject_cast<TValues*>(restored.get()), nullptr);
  for (const TTypeCase& type : cases) {
    EXPECT_EQ(restored->property(type.property), type.changed) << type.property;
  }
}

// The part's own entries would restore it by themselves; without them only the sub-object entry's
// snapshot can.
void KeepOnlyTheSubObjectEntry(TItem& item) { Undo().RemoveChangesAffectingObject(item.GetPart()); }

// A reference the snapshot holds comes back, or as none when its object was destroyed meanwhile.
TEST_F(UndoTest, SubObjectsComeBackFromTheirSnapshot) {
  for (const bool anchorDestroyed : {false, true}) {
    SCOPED_TRACE(anchorDestroyed ? "anchor destroyed meanwhile" : "anchor alive");
    auto anchor = std::make_unique<TTarget>();
    TTarget* const anchorAddress = anchor.get();
    item->GetPart()->SetSize(4);
    item->GetPart()->SetWeight(1.25);
    item->GetPart()->SetAnchor(anchor.get());
    Undo().Empty();

    TPart replacement;
    replacement.SetSize(8);
    replacement.SetWeight(3);
    Step([&] { item->SetPart(&replacement); });
    KeepOnlyTheSubObjectEntry(*item);
    ASSERT_EQ(Undo().Count(), 1);
    ASSERT_NE(dynamic_cast<TChangedSubObjectProperty*>(Undo().LastChange()), nullptr);
    EXPECT_EQ(item->GetPart()->GetAnchor(), nullptr);
    if (anchorDestroyed) anchor.reset();

    Undo().Revert();
    EXPECT_EQ(item->GetPart()->GetSize(), 4);
    EXPECT_EQ(item->GetPart()->GetWeight(), 1.25);
    EXPECT_EQ(item->GetPart()->GetAnchor(), anchorDestroyed ? nullptr : anchorAddress);
    EXPECT_EQ(item->GetPart()->GetOwner(), item);
    item->GetPart()->SetAnchor(nullptr);
  }
}

TEST_F(UndoTest, AReferenceToADestroyedObjectComesBackAsNone) {
  auto target = std::make_unique<TTarget>();
  item->SetLink(target.get());
  Step([&] { item->SetLink(nullptr); });
  target.reset();
  Undo().Revert();
  EXPECT_EQ(item->GetLink(), nullptr);
}

TEST_F(UndoTest, UnchangedValuesAndFreeStandingSubComponentsRecordNothingTopLevelObjectsDo) {
  item->SetCount(0);
  item->SetTitle(QString());
  item->SetName(QStringLiteral("  item "));
  TItem loose;
  loose.SetCount(3);
  EXPECT_EQ(Undo().Count(), 0);
  TTarget top;
  top.SetName(QStringLiteral("top"));
  EXPECT_EQ(Undo().Count(), 1);
}

TEST_F(UndoTest, UnknownNamesAndUnsupportedKindsOnlyWriteTheirLine) {
  TDebugLines debug;
  item->Updating("NoSuchProperty");
  TSpotted spotted(item);
  spotted.SetSpot({1, 2});
  QObject helper;
  item->SetHelper(&helper);
  EXPECT_EQ(Undo().Count(), 0);
  EXPECT_EQ(debug.Lines(), QStringList({QStringLiteral("Unpublished property NoSuchProperty"),
                                        QStringLiteral("Unsupported property type: Spot")}));
  EXPECT_TRUE(item->GetModified());
  EXPECT_TRUE(spotted.GetModified());
}

TEST_F(UndoTest, OwnerPropertiesAreRecordedOnTheOwner) {
  item->GetPart()->Updating("Count", true);
  ASSERT_EQ(Undo().Count(), 1);
  const auto* entry = dynamic_cast<TChangedOrdProperty*>(Undo().LastChange());
  ASSERT_NE(entry, nullptr);
  EXPECT_EQ(entry->AffectedObject(), item);
  EXPECT_EQ(entry->PropertyName(), QStringLiteral("Count"));
}

TEST_F(UndoTest, RevertUndoesOnlyTheLastStepRedoReappliesItUntilAFreshEdit) {
  Step([&] { item->SetCount(1); });
  Step([&] { item->SetCount(2); });
  Step([&] {
    item->SetCount(3);
    item->SetTitle(QStringLiteral("three"));
  });
  Undo().Revert();
  EXPECT_EQ(item->GetCount(), 2);
  EXPECT_TRUE(item->GetTitle().isEmpty());
  EXPECT_EQ(Redo().Count(), 2);
  MaintainUndo();
  EXPECT_EQ(Redo().NumSavePoints(), 1);

  Undo().Revert();
  MaintainUndo();
  EXPECT_EQ(item->GetCount(), 1);
  Redo().Revert();
  MaintainUndo();
  EXPECT_EQ(item->GetCount(), 2);
  EXPECT_TRUE(Redo().CanRevert());  // redoing does not discard what is left to redo
  Redo().Revert();
  MaintainUndo();
  EXPECT_EQ(item->GetCount(), 3);
  EXPECT_EQ(item->GetTitle(), QStringLiteral("three"));
  EXPECT_FALSE(Redo().CanRevert());
  EXPECT_EQ(Undo().NumSavePoints(), 3);

  Undo().Revert();
  MaintainUndo();
  ASSERT_TRUE(Redo().CanRevert());
  Step([&] { item->SetTitle(QStringLiteral("new")); });
  EXPECT_FALSE(Redo().CanRevert());  // a fresh edit discards what was left to redo
}

TEST_F(UndoTest, RevertRevertsAtLeastOneEntryEvenWithoutASavePoint) {
  item->SetCount(1);
  item->SetCount(2);
  Undo().Revert();
  EXPECT_EQ(item->GetCount(), 0);  // no save point at all: everything is one step
  Step([&] { item->SetCount(5); });
  item->SetCount(6);
  Undo().Revert();
  EXPECT_EQ(item->GetCount(), 5);
}

TEST_F(UndoTest, SavePointsDisabledMakeOneStepOfSeveralActions) {
  Step([&] { item->SetCount(1); });
  DisableSavePoints();
  Step([&] { item->SetCount(2); });
  Step([&] { item->SetTitle(QStringLiteral("x")); });
  Step([&] { document.AddItem(QStringLiteral("second")); });
  EnableSavePoints();
  EnableSavePoints();  // never below 0
  MaintainUndo();
  EXPECT_EQ(Undo().NumSavePoints(), 2);
  Undo().Revert();
  EXPECT_EQ(item->GetCount(), 1);
  EXPECT_TRUE(item->GetTitle().isEmpty());
  EXPECT_EQ(document.Items().Count(), 1);
}

TEST_F(UndoTest, MaintainKeepsAtMostFiftySteps) {
  for (int step = 1; step <= TUndo::MaxSavePoints + 1; ++step) {
    item->SetCount(step);
    item->SetTitle(QString::number(step));
    MaintainUndo();
  }
  EXPECT_EQ(Undo().NumSavePoints(), 50);
  EXPECT_EQ(Undo().Count(), 100);
  while (Undo().CanRevert()) Undo().Revert();
  EXPECT_EQ(item->GetCount(), 1);  // the first step's entries are gone
  EXPECT_EQ(item->GetTitle(), QStringLiteral("1"));
}

TEST_F(UndoTest, DeletedItemsLiveInTheEntryAndComeBackAtTheirIndex) {
  document.AddItem(QStringLiteral("b"));
  document.AddItem(QStringLiteral("c"));
  Undo().Empty();
  QPointer<TItem> b = document.Item(1);
  Step([&] { b->SetCount(4); });
  Step([&] { b->Delete(); });
  ASSERT_TRUE(b);
  EXPECT_EQ(document.Items().IndexOf(b), -1);
  Undo().Revert();
  MaintainUndo();
  EXPECT_EQ(document.Item(1), b.data());
  Undo().Revert();
  EXPECT_EQ(b->GetCount(), 0);
  // Redo deletes the very same object again, and undoing that brings it back once more.
  Redo().Revert();
  Redo().Revert();
  EXPECT_EQ(document.Items().IndexOf(b), -1);
  EXPECT_EQ(b->GetCount(), 4);
  Undo().Revert();
  EXPECT_EQ(document.Item(1), b.data());
  // Emptying the history that holds it destroys it.
  Redo().Revert();
  Undo().Empty();
  EXPECT_FALSE(b);
}

TEST_F(UndoTest, AddedItemsAreTakenOutAndRedoneAsTheSameObject) {
  Step([&] { document.AddItem(QStringLiteral("new")); });
  QPointer<TItem> added = document.Item(1);
  Undo().Revert();
  MaintainUndo();
  EXPECT_EQ(document.Items().Count(), 1);
  ASSERT_TRUE(added);  // held by the redo entry
  Redo().Revert();
  EXPECT_EQ(document.Item(1), added.data());
  EXPECT_EQ(added->GetName(), QStringLiteral("new"));
}

// An inspector still showing an item whose creation was undone edits an object only the redo
// history holds. The fresh edit discards that history, yet the item lives on until the action is
// closed; then it goes with its entries, and the action is still one closed step.
TEST_F(UndoTest, EditingAnObjectOnlyTheRedoHistoryHoldsOutlivesTheAction) {
  const QList<std::function<void(TItem&)>> edits = {
      [](TItem& i) { i.SetCount(5); },
      [](TItem& i) { i.GetPart()->SetSize(3); },
      [](TItem& i) { i.SetName(QStringLiteral("renamed")); },
  };
  for (const auto& edit : edits) {
    Undo().Empty();
    Step([&] { document.AddItem(QStringLiteral("new")); });
    QPointer<TItem> added = document.Item(1);
    Undo().Revert();
    MaintainUndo();
    ASSERT_TRUE(added);  // held by the redo entry only

    edit(*added);
    ASSERT_TRUE(added);
    EXPECT_FALSE(Redo().CanRevert());
    item->SetCount(item->GetCount() + 1);
    added->SetName(QStringLiteral("last"));
    MaintainUndo();
    EXPECT_FALSE(added);
    EXPECT_EQ(Undo().Count(), 1);  // the live item's change
    EXPECT_EQ(Undo().NumSavePoints(), 1);
    EXPECT_EQ(document.Items().Count(), 1);
  }
}

TEST_F(UndoTest, MovedItemsGoBackToTheirOldIndex) {
  document.AddItem(QStringLiteral("b"));
  document.AddItem(QStringLiteral("c"));
  TItem* a = item;
  Step([&] { a->Move(2); });
  EXPECT_EQ(document.Item(2), a);
  const auto* entry = dynamic_cast<TMovedListItem*>(Undo().LastChange());
  ASSERT_NE(entry, nullptr);
  EXPECT_EQ(entry->ListIndex(), 2);
  EXPECT_EQ(entry->OriginalIndex(), 0);
  Undo().Revert();
  EXPECT_EQ(document.Item(0), a);
  Redo().Revert();
  EXPECT_EQ(document.Item(2), a);
}

TEST_F(UndoTest, DestroyingAnObjectPurgesItFromBothHistories) {
  auto loose = std::make_unique<TTarget>();
  Step([&] { loose->SetName(QStringLiteral("one")); });
  Step([&] { item->SetCount(1); });
  Step([&] { loose->SetName(QStringLiteral("two")); });
  Undo().Revert();
  MaintainUndo();
  ASSERT_EQ(Redo().Count(), 1);
  ASSERT_EQ(Undo().Count(), 2);
  loose.reset();
  EXPECT_EQ(Redo().Count(), 0);
  EXPECT_EQ(Undo().Count(), 1);
  EXPECT_EQ(Undo().NumSavePoints(), 1);
  Undo().Revert();
  EXPECT_EQ(item->GetCount(), 0);
}

TEST_F(UndoTest, DestroyingADocumentLeavesNoEntryBehind) {
  {
    TDocument local;
    TItem* a = local.AddItem(QStringLiteral("a"));
    local.AddItem(QStringLiteral("b"));
    a->SetCount(3);
    a->GetPart()->SetSize(2);
    local.Items().Move(0, 1);
    local.Items().Delete(0);
    MaintainUndo();
    Undo().Revert();
    EXPECT_GT(Redo().Count(), 0);
  }
  EXPECT_EQ(Undo().Count(), 0);
  EXPECT_EQ(Redo().Count(), 0);
}

TEST_F(UndoTest, EnableUndoWithClearEmptiesBothHistoriesOnlyWhenFullyEnabled) {
  Step([&] { item->SetCount(1); });
  Step([&] { item->SetCount(2); });
  Undo().Revert();
  DisableUndo();
  DisableUndo();
  item->SetCount(7);
  EXPECT_EQ(Undo().Count(), 1);
  EnableUndo(true);
  EXPECT_TRUE(Undo().CanRevert());
  EnableUndo(true);
  EXPECT_FALSE(Undo().CanRevert());
  EXPECT_FALSE(Redo().CanRevert());
  EnableUndo();  // never stays below 0
  EXPECT_FALSE(UndoDisabled());
  item->SetCount(8);
  EXPECT_EQ(Undo().Count(), 1);
}

class TFailingEntry : public TChangeProtocolEntry {
 public:
  explicit TFailingEntry(void* object) : TChangeProtocolEntry(object) {}
  void Revert() override { throw ENorvaError(QStringLiteral("cannot")); }
};

TEST_F(UndoTest, RevertShowsTheBusyCursorWhileItRunsAndAFailingOneKeepsItsEntry) {
  TRecordingUIServices ui;
  TScopedUIServices scoped(ui);
  int depthDuringRevert = -1;
  item->SetCount(1);
  item->SetOnUpdate([&](TOrbObject*) { depthDuringRevert = ui.BusyDepth(); });
  Undo().Revert();
  EXPECT_EQ(depthDuringRevert, 1);
  EXPECT_EQ(ui.BusyDepth(), 0);

  item->SetCount(1);
  Undo().Add(std::make_unique<TFailingEntry>(item));
  EXPECT_THROW(Undo().Revert(), ENorvaError);
  EXPECT_FALSE(Undo().Undoing());
  EXPECT_EQ(ui.BusyDepth(), 0);
  EXPECT_EQ(Undo().Count(), 2);
  EXPECT_EQ(item->GetCount(), 1);
}

TEST_F(UndoTest, GetChangeWalksFromEitherEnd) {
  for (int i = 1; i <= 5; ++i) item->SetCount(i);
  for (int i = 0; i < 5; ++i) {
    const auto* entry = dynamic_cast<TChangedOrdProperty*>(Undo().GetChange(i));
    ASSERT_NE(entry, nullptr);
    EXPECT_EQ(entry->PrevValue(), i);
  }
  EXPECT_EQ(Undo().GetChange(5), nullptr);
  EXPECT_EQ(Undo().GetChange(-1), nullptr);
}

}  // namespace
}  // namespace fixture
