// Listeners of model objects: what they hear and in which order beside the owner's update slot,
// listeners that come and go while they are called, and lifetimes (the context's and the
// object's); a view listening to an owned object leaves the object's document informed.
#include "ModelFixtures.h"

#include <IR/IR.h>
#include <IR_Database/IR_Database.h>
#include <OrbGlobal/Undo/UndoControl.h>
#include <Testing/RecordingUIServices.h>

#include <QTemporaryDir>

#include <functional>
#include <memory>

namespace fixture {

using namespace norva;

namespace {

class UpdateListeners : public TModelTest {
 protected:
  void SetUp() override {
    TModelTest::SetUp();
    item = document.AddItem(QStringLiteral("Item"));
    Watch(document, *item);
  }

  // Two listeners on the document, one on its item.
  void Watch(TDocument& watchedDocument, TItem& watchedItem) {
    watchedDocument.SetName(QStringLiteral("Document"));
    Listen(watchedDocument, "document 1");
    Listen(watchedDocument, "document 2");
    Listen(watchedItem, "item");
  }

  TUpdateListenerId Listen(TOrbObject& object, const QString& who) {
    return object.AddUpdateListener(nullptr, [this, who](TOrbObject* sender) {
      heard << who + QStringLiteral(" hears ") + sender->GetName();
    });
  }

  TDocument document;
  TItem* item = nullptr;
  QStringList heard;
};

TEST_F(UpdateListeners, HearWhatTheUpdateSlotHearsOnceTheOwnersHaveTakenItIn) {
  struct TCase {
    const char* name;
    std::function<void(TDocument&, TItem&)> change;
    QStringList heard;
    int documentUpdates;  // calls of the document's own Updated, inside a batch too
  };
  const QStringList itemChange = {"document 1 hears Item", "document 2 hears Item",
                                  "item hears Item"};
  const TCase cases[] = {
      {"one property", [](TDocument&, TItem& changed) { changed.SetCount(7); }, itemChange, 1},
      {"unchanged value", [](TDocument&, TItem& changed) { changed.SetCount(0); }, {}, 0},
      {"a batch on the item",
       [](TDocument&, TItem& changed) {
         changed.BeginUpdate();
         changed.SetCount(1);
         changed.SetTitle(QStringLiteral("Hall"));
         changed.EndUpdate();
       },
       itemChange, 1},
      {"a batch on the document",
       [](TDocument& root, TItem& changed) {
         root.BeginUpdate();
         changed.SetCount(1);
         changed.SetTitle(QStringLiteral("Hall"));
         root.EndUpdate();
       },
       {"item hears Item", "item hears Item", "document 1 hears Document",
        "document 2 hears Document"},
       3},
      {"a batch ended without notice",
       [](TDocument& root, TItem& changed) {
         root.BeginUpdate();
         changed.SetCount(1);
         root.EndUpdate(false);
       },
       {"item hears Item"},
       1},
      {"nested batches",
       [](TDocument& root, TItem& changed) {
         root.BeginUpdate();
         root.BeginUpdate();
         changed.SetCount(1);
         root.EndUpdate();
         root.EndUpdate();
       },
       {"item hears Item", "document 1 hears Document", "document 2 hears Document"},
       3},
  };
  for (const TCase& c : cases) {
    TDocument caseDocument;
    TItem* caseItem = caseDocument.AddItem(QStringLiteral("Item"));
    Watch(caseDocument, *caseItem);
    heard.clear();
    const int updatesBefore = caseDocument.UpdateCalls();
    c.change(caseDocument, *caseItem);
    EXPECT_EQ(heard, c.heard) << c.name;
    EXPECT_EQ(caseDocument.UpdateCalls() - updatesBefore, c.documentUpdates) << c.name;
  }
}

TEST_F(UpdateListeners, ComeAndGoWhileTheyAreCalled) {
  TItem& watched = *item;
  heard.clear();
  TUpdateListenerId self = 0;
  TUpdateListenerId third = 0;
  self = watched.AddUpdateListener(nullptr, [&](TOrbObject*) {
    heard << QStringLiteral("removes itself and the third, adds a fourth");
    watched.RemoveUpdateListener(self);
    watched.RemoveUpdateListener(third);
    Listen(watched, QStringLiteral("fourth"));
  });
  Listen(watched, QStringLiteral("second"));
  third = Listen(watched, QStringLiteral("third"));

  watched.SetCount(1);
  EXPECT_EQ(heard,
            QStringList({"document 1 hears Item", "document 2 hears Item", "item hears Item",
                         "removes itself and the third, adds a fourth", "second hears Item"}));
  heard.clear();
  watched.SetCount(2);
  EXPECT_EQ(heard, QStringList({"document 1 hears Item", "document 2 hears Item", "item hears Item",
                                "second hears Item", "fourth hears Item"}));
  heard.clear();
  watched.RemoveUpdateListener(self);  // gone already: nothing
  watched.RemoveUpdateListener(0);
  watched.SetCount(3);
  EXPECT_EQ(heard.size(), 5);
}

// Also while they are called: one may destroy the object, the others then hear nothing.
TEST_F(UpdateListeners, GoWithTheirContextOrWithTheObject) {
  auto context = std::make_unique<QObject>();
  int calls = 0;
  item->AddUpdateListener(context.get(), [&](TOrbObject*) { ++calls; });
  item->SetCount(1);
  EXPECT_EQ(calls, 1);
  context.reset();
  item->SetCount(2);
  EXPECT_EQ(calls, 1);

  // The object destroyed first: the context's end later touches nothing.
  context = std::make_unique<QObject>();
  auto freeStanding = std::make_unique<TItem>();
  freeStanding->AddUpdateListener(context.get(), [&](TOrbObject*) { ++calls; });
  freeStanding.reset();
  context.reset();
  EXPECT_EQ(calls, 1);

  freeStanding = std::make_unique<TItem>();
  QStringList heardBy;
  freeStanding->AddUpdateListener(nullptr, [&](TOrbObject*) {
    heardBy << QStringLiteral("first");
    freeStanding.reset();
  });
  freeStanding->AddUpdateListener(nullptr,
                                  [&](TOrbObject*) { heardBy << QStringLiteral("second"); });
  freeStanding->SetCount(1);
  EXPECT_EQ(heardBy, QStringList({"first"}));
  EXPECT_EQ(freeStanding, nullptr);
}

TEST_F(UpdateListeners, AViewOnAnOwnedObjectLeavesItsOwnerInformed) {
  // The owner's update slot stays as the constructor bound it.
  const int updatesBefore = document.UpdateCalls();
  item->SetTitle(QStringLiteral("Kitchen"));
  EXPECT_EQ(document.UpdateCalls(), updatesBefore + 1);
  EXPECT_EQ(document.LastSender(), item);
  EXPECT_TRUE(heard.contains("item hears Item"));

  // A database drops its index of code names, before any listener asks it for a name.
  DisableUndo();
  QTemporaryDir folder;
  TRecordingUIServices services;
  const TScopedUIServices scoped(services);
  TIRDB database(folder.filePath(QStringLiteral("codes.xml")), false);
  TModel* model = database.AddNewMake()->AddNewModel();
  model->SetName(QStringLiteral("Receiver"));
  auto* stream = static_cast<TIRStream*>(model->AddNewCommandObject(&TIRStream::staticMetaObject));
  stream->SetName(QStringLiteral("Power"));
  stream->SetHexCode(QStringLiteral("0000 006D 0002 0000 0010 0020 0030 0040"));
  database.Save();
  const auto nameOf = [&] {
    TIRStream received;
    received.SetData(stream->Data());
    return database.GetNames(received) ? received.GetName() : QString();
  };
  ASSERT_EQ(nameOf(), "Power");  // the index is built

  QStringList names;
  stream->AddUpdateListener(nullptr, [&](TOrbObject*) { names << nameOf(); });
  database.AddUpdateListener(nullptr, [&](TOrbObject*) { names << nameOf(); });
  stream->SetName(QStringLiteral("Standby"));
  EXPECT_EQ(names, QStringList({"Standby", "Standby"}));
  EXPECT_EQ(nameOf(), "Standby");
  EXPECT_TRUE(database.GetNeedsSaving());
  EnableUndo();
}

}  // namespace

}  // namespace fixture
