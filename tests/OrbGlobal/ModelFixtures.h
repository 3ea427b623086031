#pragma once
// Small model classes for the object-model suites: a document owning a list of items with parts
// and references, a class with one property of every type a model class may publish, plus the
// histories' clean slate.

#include <NorvaGlobal/EnumSet.h>
#include <OrbGlobal/Model/OrbObject.h>
#include <OrbGlobal/Model/OrbObjectList.h>

#include <QByteArray>
#include <QColor>
#include <QDateTime>
#include <QFont>
#include <QList>
#include <QObject>
#include <QPoint>
#include <QRect>
#include <QSize>
#include <QString>
#include <QVariant>

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <vector>

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

// The getter, the setter keeping the contract and the field of one property.
#define FIXTURE_VALUE(Type, Name)                                       \
 public:                                                                \
  Type Get##Name() const { return m##Name; }                            \
  void Set##Name(Type value) { ChangeProperty(#Name, m##Name, value); } \
                                                                        \
 private:                                                               \
  Type m##Name{};

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
  void AssignTo(QObject* dest) const override;

  FIXTURE_VALUE(int, Size)
  FIXTURE_VALUE(double, Weight)
  FIXTURE_VALUE(TTarget*, Anchor)
};

// An item of a document: a value, a text, references of both kinds and an owned part.
class TItem : public norva::TOrbObject {
  Q_OBJECT
  Q_CLASSINFO("ClassGUID", "{7A1D2C3B-2222-4E5F-9A0B-1C2D3E4F5A6B}")
  Q_PROPERTY(int Count READ GetCount WRITE SetCount)
  Q_PROPERTY(QString Title READ GetTitle WRITE SetTitle)
  Q_PROPERTY(fixture::TTarget* Link READ GetLink WRITE SetLink)
  Q_PROPERTY(fixture::TPart* Part READ GetPart WRITE SetPart)
  Q_PROPERTY(QObject* Helper READ GetHelper WRITE SetHelper)

 public:
  Q_INVOKABLE explicit TItem(norva::TOrbObject* owner = nullptr);
  TPart* GetPart() const { return mPart.get(); }
  void SetPart(TPart* part);
  void AssignTo(QObject* dest) const override;

  FIXTURE_VALUE(int, Count)
  FIXTURE_VALUE(QString, Title)
  FIXTURE_VALUE(TTarget*, Link)
  FIXTURE_VALUE(QObject*, Helper)

 private:
  std::unique_ptr<TPart> mPart;
};

// A part holding a record: undo cannot keep it, so its changes only write a debug line and the
// class registry refuses the class.
class TSpotted : public norva::TOrbObject {
  Q_OBJECT
  Q_PROPERTY(fixture::TSpot Spot READ GetSpot WRITE SetSpot)

 public:
  Q_INVOKABLE explicit TSpotted(norva::TOrbObject* owner = nullptr) : TOrbObject(owner) {}

  FIXTURE_VALUE(TSpot, Spot)
};

// One property of every value type a model class may publish, and a reference; each starts at its
// type's default.
class TValues : public norva::TOrbObject {
  Q_OBJECT
  Q_PROPERTY(bool Bool READ GetBool WRITE SetBool)
  Q_PROPERTY(qint8 Int8 READ GetInt8 WRITE SetInt8)
  Q_PROPERTY(quint8 UInt8 READ GetUInt8 WRITE SetUInt8)
  Q_PROPERTY(qint16 Int16 READ GetInt16 WRITE SetInt16)
  Q_PROPERTY(quint16 UInt16 READ GetUInt16 WRITE SetUInt16)
  Q_PROPERTY(qint32 Int32 READ GetInt32 WRITE SetInt32)
  Q_PROPERTY(quint32 UInt32 READ GetUInt32 WRITE SetUInt32)
  Q_PROPERTY(char Char READ GetChar WRITE SetChar)
  Q_PROPERTY(char16_t Char16 READ GetChar16 WRITE SetChar16)
  Q_PROPERTY(char32_t Char32 READ GetChar32 WRITE SetChar32)
  Q_PROPERTY(QChar QtChar READ GetQtChar WRITE SetQtChar)
  Q_PROPERTY(fixture::TShape Shape READ GetShape WRITE SetShape)
  Q_PROPERTY(fixture::TFeatures Features READ GetFeatures WRITE SetFeatures)
  Q_PROPERTY(QByteArray Bytes READ GetBytes WRITE SetBytes)
  Q_PROPERTY(QString Text READ GetText WRITE SetText)
  Q_PROPERTY(float Float READ GetFloat WRITE SetFloat)
  Q_PROPERTY(double Double READ GetDouble WRITE SetDouble)
  Q_PROPERTY(qint64 Int64 READ GetInt64 WRITE SetInt64)
  Q_PROPERTY(quint64 UInt64 READ GetUInt64 WRITE SetUInt64)
  Q_PROPERTY(QDateTime DateTime READ GetDateTime WRITE SetDateTime)
  Q_PROPERTY(QVariant Variant READ GetVariant WRITE SetVariant)
  Q_PROPERTY(QColor Colour READ GetColour WRITE SetColour)
  Q_PROPERTY(QFont Font READ GetFont WRITE SetFont)
  Q_PROPERTY(QPoint Point READ GetPoint WRITE SetPoint)
  Q_PROPERTY(QPointF PointF READ GetPointF WRITE SetPointF)
  Q_PROPERTY(QSize Size READ GetSize WRITE SetSize)
  Q_PROPERTY(QSizeF SizeF READ GetSizeF WRITE SetSizeF)
  Q_PROPERTY(QRect Rect READ GetRect WRITE SetRect)
  Q_PROPERTY(QRectF RectF READ GetRectF WRITE SetRectF)
  Q_PROPERTY(QList<int> IntList READ GetIntList WRITE SetIntList)
  Q_PROPERTY(std::vector<double> DoubleVector READ GetDoubleVector WRITE SetDoubleVector)
  Q_PROPERTY(fixture::TTarget* Target READ GetTarget WRITE SetTarget)

 public:
  Q_INVOKABLE explicit TValues(norva::TOrbObject* owner = nullptr) : TOrbObject(owner) {}

  FIXTURE_VALUE(bool, Bool)
  FIXTURE_VALUE(qint8, Int8)
  FIXTURE_VALUE(quint8, UInt8)
  FIXTURE_VALUE(qint16, Int16)
  FIXTURE_VALUE(quint16, UInt16)
  FIXTURE_VALUE(qint32, Int32)
  FIXTURE_VALUE(quint32, UInt32)
  FIXTURE_VALUE(char, Char)
  FIXTURE_VALUE(char16_t, Char16)
  FIXTURE_VALUE(char32_t, Char32)
  FIXTURE_VALUE(QChar, QtChar)
  FIXTURE_VALUE(TShape, Shape)
  FIXTURE_VALUE(TFeatures, Features)
  FIXTURE_VALUE(QByteArray, Bytes)
  FIXTURE_VALUE(QString, Text)
  FIXTURE_VALUE(float, Float)
  FIXTURE_VALUE(double, Double)
  FIXTURE_VALUE(qint64, Int64)
  FIXTURE_VALUE(quint64, UInt64)
  FIXTURE_VALUE(QDateTime, DateTime)
  FIXTURE_VALUE(QVariant, Variant)
  FIXTURE_VALUE(QColor, Colour)
  FIXTURE_VALUE(QFont, Font)
  FIXTURE_VALUE(QPoint, Point)
  FIXTURE_VALUE(QPointF, PointF)
  FIXTURE_VALUE(QSize, Size)
  FIXTURE_VALUE(QSizeF, SizeF)
  FIXTURE_VALUE(QRect, Rect)
  FIXTURE_VALUE(QRectF, RectF)
  FIXTURE_VALUE(QList<int>, IntList)
  FIXTURE_VALUE(std::vector<double>, DoubleVector)
  FIXTURE_VALUE(TTarget*, Target)
};

#undef FIXTURE_VALUE

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

// Every test starts and ends with empty histories and undo enabled, and with the fixtures' set
// type registered, as an application registers its sets before its classes.
class TModelTest : public ::testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;
};

}  // namespace fixture
