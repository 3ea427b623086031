// The model object base: names, GUIDs, notification up the owner chain, class-level data and the
// registry with its refusal of classes undo cannot serve, assignment and cloning, child navigation
// with its read-only errors.
#include "ModelFixtures.h"
#include "ThrownMessage.h"

#include <OrbGlobal/Model/ListItemObject.h>
#include <OrbGlobal/Model/OrbClassRegistry.h>
#include <OrbGlobal/Model/OrbErrors.h>
#include <OrbGlobal/Model/OrbGuid.h>
#include <OrbGlobal/Model/OrbInterfaces.h>
#include <OrbGlobal/Undo/Undo.h>
#include <OrbGlobal/Undo/UndoControl.h>

#include <QDateTime>
#include <QStandardItemModel>

namespace fixture {

using namespace norva;

namespace {

class TEditableTarget : public TTarget, public norva::IEditActionForm {
  Q_OBJECT
  Q_INTERFACES(norva::IEditActionForm)

 public:
  Q_INVOKABLE explicit TEditableTarget(norva::TOrbObject* owner = nullptr) : TTarget(owner) {}
};

// Classes with a property undo cannot restore: through a part, a map, a set whose conversions were
// never registered.
class TSpottedHolder : public norva::TOrbObject {
  Q_OBJECT
  Q_PROPERTY(fixture::TSpotted* Inner MEMBER mInner)
  TSpotted* mInner = nullptr;
};

class TMapped : public norva::TOrbObject {
  Q_OBJECT
  Q_PROPERTY(QVariantMap Map MEMBER mMap)
  QVariantMap mMap;
};

using TShapes = norva::TEnumSet<TShape, 3>;

class TShaped : public norva::TOrbObject {
  Q_OBJECT
  Q_PROPERTY(fixture::TShapes Shapes MEMBER mShapes)
  TShapes mShapes;
};

// A part made of parts of its own kind; read-only properties are not edited, whatever their type.
class TNested : public norva::TOrbObject {
  Q_OBJECT
  Q_PROPERTY(fixture::TNested* Child MEMBER mChild)
  Q_PROPERTY(fixture::TSpot Spot READ GetSpot)

 public:
  TSpot GetSpot() const { return {}; }

 private:
  TNested* mChild = nullptr;
};

using OrbObjectTest = TModelTest;

TEST_F(OrbObjectTest, SetNameTrimsAndSetNameRawKeeps) {
  TDocument document;
  document.SetName(QStringLiteral(" \t Kitchen\x01 \n"));
  EXPECT_EQ(document.GetName(), QStringLiteral("Kitchen"));
  document.SetNameRaw(QStringLiteral("  Hall  "));
  EXPECT_EQ(document.GetName(), QStringLiteral("  Hall  "));
  EXPECT_TRUE(document.HasName());
  document.SetNameRaw(QString());
  EXPECT_FALSE(document.HasName());
}

TEST_F(OrbObjectTest, GUIDStringUsesTheRegistryFormAndRejectsOthers) {
  TDocument document;
  EXPECT_EQ(document.GetGUIDString(), QStringLiteral("{00000000-0000-0000-0000-000000000000}"));
  document.SetGUIDString(QStringLiteral("{6f9619ff-8b86-d011-b42d-00cf4fc964ff}"));
  EXPECT_EQ(document.GetGUIDString(), QStringLiteral("{6F9619FF-8B86-D011-B42D-00CF4FC964FF}"));
  for (const char* bad :
       {"6F9619FF-8B86-D011-B42D-00CF4FC964FF", "{6F9619FF-8B86-D011-B42D-00CF4FC964F}",
        "{6F9619FF+8B86-D011-B42D-00CF4FC964FF}", "{6F9619FG-8B86-D011-B42D-00CF4FC964FF}", "",
        "{6F9619FF-8B86-D011-B42D-00CF4FC964\xC3\xA9}"}) {
    EXPECT_THROW(document.SetGUIDString(QString::fromUtf8(bad)), EConvertError) << bad;
    // Read straight from a file's bytes, and from class information, the rule is the same.
    EXPECT_THROW(StringToGUID(QUtf8StringView(bad)), EConvertError) << bad;
    EXPECT_THROW(StringToGUID(QLatin1StringView(bad)), EConvertError) << bad;
  }
  EXPECT_EQ(StringToGUID(QUtf8StringView("{6f9619ff-8b86-d011-b42d-00cf4fc964ff}")),
            document.GetGUID());
  EXPECT_EQ(document.GetGUIDString(), QStringLiteral("{6F9619FF-8B86-D011-B42D-00CF4FC964FF}"));
}

TEST_F(OrbObjectTest, NewRevisionStampsUtcDaysOutsideUpdatesAndNewGUIDsClearIt) {
  TDocument document;
  const double before = QDateTime::currentDateTimeUtc().toMSecsSinceEpoch() / 86400000.0 + 25569;
  document.NewRevision();
  EXPECT_NEAR(document.GetRevision(), before, 1.0 / 86400);  // within a second

  TDocument updating;
  updating.BeginUpdate();
  updating.NewRevision();
  EXPECT_EQ(updating.GetRevision(), 0);

  const QUuid first = [&] {
    document.AssignNewGUID();
    return document.GetGUID();
  }();
  EXPECT_NE(first, NoGUID);
  EXPECT_EQ(document.GetRevision(), 0);
  document.AssignNewGUID();
  EXPECT_NE(document.GetGUID(), first);
}

TEST_F(OrbObjectTest, ChangesClimbTheOwnerChainWithTheFirstSenderNestedOnesOnceAtTheEnd) {
  TDocument document;
  TItem* item = document.AddItem(QStringLiteral("a"));
  int callsBefore = document.UpdateCalls();
  item->GetPart()->SetSize(3);
  EXPECT_EQ(document.UpdateCalls(), callsBefore + 1);
  EXPECT_EQ(document.LastSender(), item->GetPart());
  EXPECT_TRUE(item->GetPart()->GetModified());

  callsBefore = document.UpdateCalls();
  item->BeginUpdate();
  item->BeginUpdate();
  item->SetCount(1);
  item->SetTitle(QStringLiteral("t"));
  item->EndUpdate();
  EXPECT_EQ(document.UpdateCalls(), callsBefore);
  item->EndUpdate(false);
  EXPECT_EQ(document.UpdateCalls(), callsBefore);
  EXPECT_EQ(item->UpdateCount(), 0);
  item->EndUpdate(false);  // never below 0
  EXPECT_EQ(item->UpdateCount(), 0);
  item->EndUpdate();
  EXPECT_EQ(document.UpdateCalls(), callsBefore + 1);
  EXPECT_EQ(document.LastSender(), item);
}

TEST_F(OrbObjectTest, ClassDataComesFromClassInfoAndIsInherited) {
  TItem item;
  TEditableTarget target;
  EXPECT_TRUE(item.IsSubComponent());
  EXPECT_FALSE(target.IsSubComponent());  // inherited from TTarget
  EXPECT_EQ(item.GetClassName(), QStringLiteral("TItem"));
  EXPECT_EQ(target.GetClassGUID(), TTarget().GetClassGUID());
  EXPECT_EQ(TOrbObject().GetClassGUID(), NoGUID);
}

TEST_F(OrbObjectTest, RegistryFindsClassesByGUIDFirstRegisteredFirst) {
  RegisterOrbObjectClasses({&QObject::staticMetaObject, &TTarget::staticMetaObject,
                            &TEditableTarget::staticMetaObject, &TItem::staticMetaObject,
                            &TDocument::staticMetaObject, &TValues::staticMetaObject,
                            &TNested::staticMetaObject});
  const QList<TOrbObjectClass>* registered = GetRegisteredOrbClasses();
  ASSERT_NE(registered, nullptr);
  EXPECT_FALSE(registered->contains(&QObject::staticMetaObject));
  // TEditableTarget shares TTarget's GUID; the one registered first wins.
  EXPECT_EQ(GetOrbObjectClass(TTarget().GetClassGUID()), &TTarget::staticMetaObject);
  EXPECT_EQ(GetOrbObjectClass(QStringLiteral("{7a1d2c3b-2222-4e5f-9a0b-1c2d3e4f5a6b}")),
            &TItem::staticMetaObject);
  EXPECT_EQ(GetOrbObjectClass(QUuid::createUuid()), nullptr);
  EXPECT_THROW(GetOrbObjectClass(QStringLiteral("TItem")), EConvertError);
}

qsizetype RegisteredCount() {
  const QList<TOrbObjectClass>* registered = GetRegisteredOrbClasses();
  return registered ? registered->size() : 0;
}

TEST_F(OrbObjectTest, RegistryRefusesClassesWhoseEditsUndoCannotRestore) {
  const QList<QPair<TOrbObjectClass, QString>> refused = {
      {&TSpotted::staticMetaObject, QStringLiteral("TSpotted: property TSpotted.Spot of type "
                                                   "fixture::TSpot cannot be undone")},
      {&TSpottedHolder::staticMetaObject,
       QStringLiteral("TSpottedHolder: property TSpotted.Spot of type fixture::TSpot cannot be "
                      "undone")},
      {&TMapped::staticMetaObject,
       QStringLiteral("TMapped: property TMapped.Map of type QVariantMap cannot be undone")},
      {&TShaped::staticMetaObject,
       QStringLiteral("TShaped: property TShaped.Shapes of type "
                      "norva::TEnumSet<fixture::TShape,3> cannot be undone")},
  };
  for (const auto& [cls, reason] : refused) {
    SCOPED_TRACE(reason.toStdString());
    const qsizetype countBefore = RegisteredCount();
    EXPECT_EQ(ThrownMessage([&] {
                RegisterOrbObjectClasses({&TTarget::staticMetaObject, cls});
              }),
              QStringLiteral("Cannot register ") + reason);
    EXPECT_EQ(RegisteredCount(), countBefore);  // not even the acceptable class before it
    EXPECT_THROW(RegisterOrbObjectClass(cls), ENorvaError);
  }
}

TEST_F(OrbObjectTest, VirtualConstructionBindsTheOwnerCloneCopiesWhatAssignCopiesButNotTheGUID) {
  TDocument document;
  std::unique_ptr<TOrbObject> made(ConstructOrbObject(&TItem::staticMetaObject, &document));
  ASSERT_NE(qobject_cast<TItem*>(made.get()), nullptr);
  EXPECT_EQ(made->GetOwner(), &document);
  EXPECT_THROW(ConstructOrbObject(&QObject::staticMetaObject, nullptr), ENorvaError);

  TItem* item = document.AddItem(QStringLiteral("Lamp"));
  item->SetCount(4);
  item->GetPart()->SetSize(9);
  item->AssignNewGUID();
  std::unique_ptr<TOrbObject> clone = item->GetClone(nullptr);
  auto* copy = qobject_cast<TItem*>(clone.get());
  ASSERT_NE(copy, nullptr);
  EXPECT_EQ(copy->GetName(), QStringLiteral("Lamp"));
  EXPECT_EQ(copy->GetCount(), 4);
  EXPECT_EQ(copy->GetPart()->GetSize(), 9);
  EXPECT_NE(copy->GetPart(), item->GetPart());
  EXPECT_EQ(copy->GetGUID(), NoGUID);
  EXPECT_EQ(copy->GetOwner(), nullptr);
}

TEST_F(OrbObjectTest, AmendOnlyFromTheSameRealIdentityAssignOnlyBetweenRelatedClasses) {
  TItem target;
  TItem source;
  source.SetCount(5);
  target.Amend(&source);  // both NoGUID
  EXPECT_EQ(target.GetCount(), 0);
  source.AssignNewGUID();
  target.Amend(&source);
  EXPECT_EQ(target.GetCount(), 0);
  target.SetGUID(source.GetGUID());
  target.Amend(&source);
  EXPECT_EQ(target.GetCount(), 5);

  QObject plain;
  EXPECT_THROW(target.Assign(&plain), EConvertError);
  EXPECT_THROW(target.AssignTo(&plain), EConvertError);
  EXPECT_THROW(target.Assign(nullptr), EConvertError);
  target.AssignTo(&target);  // itself: nothing
  EXPECT_EQ(target.GetCount(), 5);
}

TEST_F(OrbObjectTest, QueryInterfaceAnswersByGUIDWithoutReferenceCounts) {
  TEditableTarget editable;
  TTarget plain;
  void* found = &plain;
  EXPECT_EQ(
      editable.QueryInterface(QUuid::fromString(QStringLiteral(NORVA_IEditActionForm_IID)), &found),
      S_OK);
  EXPECT_EQ(found, static_cast<IEditActionForm*>(&editable));
  EXPECT_EQ(
      plain.QueryInterface(QUuid::fromString(QStringLiteral(NORVA_IEditActionForm_IID)), &found),
      E_NOINTERFACE);
  EXPECT_EQ(found, nullptr);
  EXPECT_EQ(E_NOINTERFACE, static_cast<std::int32_t>(0x80004002u));
}

TEST_F(OrbObjectTest, ChildNavigationGoesThroughTheOwnersList) {
  TDocument document;
  TItem* a = document.AddItem(QStringLiteral("a"));
  TItem* b = document.AddItem(QStringLiteral("b"));
  TTarget stranger(&document);
  EXPECT_EQ(b->GetIndex(), 1);
  EXPECT_EQ(document.GetChildIndex(&stranger), -1);
  EXPECT_EQ(a->GetSibling(a, 1), b);
  EXPECT_EQ(a->GetSiblingCount(a), 2);
  EXPECT_THROW(a->GetSibling(a, 2), EListError);
  EXPECT_EQ(stranger.GetSibling(&stranger, 0), nullptr);
  EXPECT_EQ(TItem().GetIndex(), -1);

  b->Move(0);
  EXPECT_EQ(document.Item(0), b);
  const int calls = document.UpdateCalls();
  document.MoveChild(b, 2);  // index equal to Count: nothing moves, still notifies
  EXPECT_EQ(document.Item(0), b);
  EXPECT_EQ(document.UpdateCalls(), calls + 1);

  DisableUndo();
  a->Delete();
  EnableUndo();
  EXPECT_EQ(document.Items().Count(), 1);
}

TEST_F(OrbObjectTest, ReadOnlyObjectsCannotBeDeletedOrMovedAndRecordNothing) {
  TDocument document;
  TItem* a = document.AddItem(QStringLiteral("Amp"));
  document.AddItem(QStringLiteral("Keypad"));
  Undo().Empty();
  document.SetReadOnly(true);
  EXPECT_EQ(ThrownMessage<EUserError>([&] { a->Delete(); }), "Amp cannot be deleted.");
  EXPECT_EQ(ThrownMessage<EUserError>([&] { a->Move(1); }), "Amp cannot be moved.");
  a->Move(0);  // its own index: nothing to refuse
  EXPECT_EQ(document.Items().Count(), 2);
  EXPECT_EQ(document.Item(0), a);

  // Their edits are not recorded, yet mark them modified.
  a->SetCount(2);
  EXPECT_EQ(Undo().Count(), 0);
  EXPECT_TRUE(a->GetModified());
}

TEST_F(OrbObjectTest, DestroyHandlerFiresOnce) {
  int fired = 0;
  {
    TItem item;
    item.SetOnDestroy([&](TOrbObject*) { ++fired; });
  }
  EXPECT_EQ(fired, 1);
}

TEST_F(OrbObjectTest, ListRowsYieldTheirModelObjectOnly) {
  TItem item;
  QObject plain;
  const QVariant rows[] = {QVariant::fromValue<QObject*>(&item), QVariant::fromValue(&plain), 42,
                           QVariant()};
  QStandardItemModel model(4, 1);
  for (int row = 0; row < 4; ++row) model.setData(model.index(row, 0), rows[row], OrbObjectRole);
  EXPECT_EQ(GetOrbObjectFromListItem(model.index(0, 0)), &item);
  for (int row = 1; row < 4; ++row)
    EXPECT_EQ(GetOrbObjectFromListItem(model.index(row, 0)), nullptr) << row;
  EXPECT_EQ(GetOrbObjectFromListItem(QModelIndex()), nullptr);
}

}  // namespace
}  // namespace fixture

#include "OrbObjectTest.moc"
