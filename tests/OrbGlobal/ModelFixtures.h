#pragma once
// Small model classes for the object-model suites: a document owning a list of items whose
// properties cover every kind the undo protocol records, plus the histories' clean slate.

#include <NorvaGlobal/EnumSet.h>
#include <OrbGlobal/OrbObject.h>
#include <OrbGlobal/OrbObjectList.h>

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QString>

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>

namespace fixture {
Q_NAMESPACE

enum TShape : std::uint8_t { shapeRound, shapeSquare, shapeOval };
Q_ENUM_NS(TShape)

enum TFeature : std::uint8_t { featureLight, featureSound, featureTimer, featureLock };
Q_ENUM_NS(TFeature)

using TFeatures = norva::TEnumSet<TFeature, 4>;

// A record: no undo kind takes it.
struct TSpot {
  int X = 0;
  int Y = 0;
  bool operator==(const TSpot&) const = default;
};

// A top-level object other objects refer to.
class TTarget : public norva::TOrbObject {
  Q_OBJECT
  Q_CLASSINFO("SubComponent", "false")
  Q_CLASSINFO("ClassGUID", "{2B9C3E4F-1111-4A5B-8C6D-7E8F90A1B2C3}")

 public:
  Q_INVOKABLE explicit TTarget(norva::TOrbObject* owner = nullptr) : TOrbObject(owner) {}
};

// A part owned by an item; its setter in the item copies it.
class TPart : public norva::TOrbObject {
  Q_OBJECT
  Q_PROPERTY(int Size READ GetSize WRITE SetSize)
  Q_PROPERTY(double Weight READ GetWeight WRITE SetWeight)
  Q_PROPERTY(fixture::TTarget* Anchor READ GetAnchor WRITE SetAnchor)

 public:
  Q_INVOKABLE explicit TPart(norva::TOrbObject* owner = nullptr) : TOrbObject(owner) {}

  int GetSize() const { return mSize; }
  void SetSize(int size) { ChangeProperty("Size", mSize, size); }
  double GetWeight() const { return mWeight; }
  void SetWeight(double weight) { ChangeProperty("Weight", mWeight, weight); }
  TTarget* GetAnchor() const { return mAnchor; }
  void SetAnchor(TTarget* anchor) { ChangeProperty("Anchor", mAnchor, anchor); }
  void AssignTo(QObject* dest) const override;

 private:
  int mSize = 0;
  double mWeight = 0;
  TTarget* mAnchor = nullptr;
};

class TItem : public norva::TOrbObject {
  Q_OBJECT
  Q_CLASSINFO("ClassGUID", "{7A1D2C3B-2222-4E5F-9A0B-1C2D3E4F5A6B}")
  Q_PROPERTY(int Count READ GetCount WRITE SetCount)
  Q_PROPERTY(fixture::TShape Shape READ GetShape WRITE SetShape)
  Q_PROPERTY(fixture::TFeatures Features READ GetFeatures WRITE SetFeatures)
  Q_PROPERTY(QByteArray Code READ GetCode WRITE SetCode)
  Q_PROPERTY(QString Title READ GetTitle WRITE SetTitle)
  Q_PROPERTY(double Level READ GetLevel WRITE SetLevel)
  Q_PROPERTY(qint64 Serial READ GetSerial WRITE SetSerial)
  Q_PROPERTY(QList<int> Steps READ GetSteps WRITE SetSteps)
  Q_PROPERTY(fixture::TTarget* Link READ GetLink WRITE SetLink)
  Q_PROPERTY(fixture::TPart* Part READ GetPart WRITE SetPart)
  Q_PROPERTY(fixture::TSpot Spot READ GetSpot WRITE SetSpot)
  Q_PROPERTY(QObject* Helper READ GetHelper WRITE SetHelper)

 public:
  Q_INVOKABLE explicit TItem(norva::TOrbObject* owner = nullptr);

  int GetCount() const { return mCount; }
  void SetCount(int count) { ChangeProperty("Count", mCount, count); }
  TShape GetShape() const { return mShape; }
  void SetShape(TShape shape) { ChangeProperty("Shape", mShape, shape); }
  TFeatures GetFeatures() const { return mFeatures; }
  void SetFeatures(TFeatures features) { ChangeProperty("Features", mFeatures, features); }
  QByteArray GetCode() const { return mCode; }
  void SetCode(const QByteArray& code) { ChangeProperty("Code", mCode, code); }
  QString GetTitle() const { return mTitle; }
  void SetTitle(const QString& title) { ChangeProperty("Title", mTitle, title); }
  double GetLevel() const { return mLevel; }
  void SetLevel(double level) { ChangeProperty("Level", mLevel, level); }
  qint64 GetSerial() const { return mSerial; }
  void SetSerial(qint64 serial) { ChangeProperty("Serial", mSerial, serial); }
  QList<int> GetSteps() const { return mSteps; }
  void SetSteps(const QList<int>& steps) { ChangeProperty("Steps", mSteps, steps); }
  TTarget* GetLink() const { return mLink; }
  void SetLink(TTarget* link) { ChangeProperty("Link", mLink, link); }
  TPart* GetPart() const { return mPart.get(); }
  void SetPart(TPart* part);
  TSpot GetSpot() const { return mSpot; }
  void SetSpot(TSpot spot) { ChangeProperty("Spot", mSpot, spot); }
  QObject* GetHelper() const { return mHelper; }
  void SetHelper(QObject* helper) { ChangeProperty("Helper", mHelper, helper); }

  void AssignTo(QObject* dest) const override;

 private:
  int mCount = 0;
  TShape mShape = shapeRound;
  TFeatures mFeatures;
  QByteArray mCode;
  QString mTitle;
  double mLevel = 0;
  qint64 mSerial = 0;
  QList<int> mSteps;
  TTarget* mLink = nullptr;
  std::unique_ptr<TPart> mPart;
  TSpot mSpot;
  QObject* mHelper = nullptr;
};

// The root: owns its items, reacts to every change below it, may be made read-only.
class TDocument : public norva::TOrbObject {
  Q_OBJECT
  Q_CLASSINFO("SubComponent", "false")
  Q_CLASSINFO("ClassGUID", "{0F1E2D3C-3333-4B5A-8978-695A4B3C2D1E}")

 public:
  Q_INVOKABLE explicit TDocument(norva::TOrbObject* owner = nullptr);

  norva::TOrbObjectList& Items() { return mItems; }
  TItem* AddItem(const QString& name);
  TItem* Item(int index) const { return static_cast<TItem*>(mItems.Get(index)); }

  norva::TOrbObjectList* GetChildList(const norva::TOrbObject* child) const override;
  bool IsReadOnly() const override { return mReadOnly; }
  void SetReadOnly(bool readOnly) { mReadOnly = readOnly; }

  using TOrbObject::Updated;
  void Updated(norva::TOrbObject* sender) override;
  int UpdateCalls() const { return mUpdateCalls; }
  norva::TOrbObject* LastSender() const { return mLastSender; }

 private:
  // mutable: the child list is handed out by the const GetChildList.
  mutable norva::TOrbObjectList mItems;
  bool mReadOnly = false;
  int mUpdateCalls = 0;
  norva::TOrbObject* mLastSender = nullptr;
};

// Every test starts and ends with empty histories and undo enabled.
class TModelTest : public ::testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;
};

}  // namespace fixture
