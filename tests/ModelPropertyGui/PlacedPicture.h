#pragma once
// A picture placed on a keypad's face, as keypad types hold their pictures: the picture kept by a
// graphic container and published as its data string, so that undo restores it as the file
// stores it, with its transparency, position and size.

#include <OrbGlobal/Model/OrbObject.h>
#include <OrbGraphics/Gui/GraphicContainer.h>

#include <QByteArray>
#include <QPoint>
#include <QSize>

#include <pugixml.hpp>

namespace norva::edits {

class TPlacedPicture : public TOrbObject {
  Q_OBJECT
  Q_CLASSINFO("ClassGUID", "{3D9A6F21-5C7B-4E18-A0D4-92B1C7E8F356}")
  Q_PROPERTY(QByteArray Picture READ GetPicture WRITE SetPicture)
  Q_PROPERTY(bool Transparent READ GetTransparent WRITE SetTransparent)
  Q_PROPERTY(QPoint Position READ GetPosition WRITE SetPosition)
  Q_PROPERTY(QSize Size READ GetSize WRITE SetSize)

 public:
  Q_INVOKABLE explicit TPlacedPicture(norva::TOrbObject* owner = nullptr);

  // The data string; "" without a picture.
  QByteArray GetPicture() const { return mPicture.GetDataString(); }
  // Keeps the transparency, which belongs to the placement rather than to the picture's bytes.
  void SetPicture(const QByteArray& dataString);
  bool GetTransparent() const { return mPicture.GetTransparent(); }
  void SetTransparent(bool transparent);
  QPoint GetPosition() const { return mPosition; }
  void SetPosition(const QPoint& position) { ChangeProperty("Position", mPosition, position); }
  QSize GetSize() const { return mSize; }
  void SetSize(const QSize& size) { ChangeProperty("Size", mSize, size); }

  // What drawing the keypad's face does to the picture: decodes it, or lets it go dormant again.
  // Neither is a change.
  void Decode() { mPicture.LoadGraphicProperties(); }
  void Dormant() { mPicture.Dormant(); }

  // To a placed picture: every property through its setter, in one update.
  void AssignTo(QObject* dest) const override;
  // A "picture" element: attributes "x", "y", "width", "height" and "transparent", the data
  // string as its text.
  void Save(pugi::xml_node parent) const;

 private:
  // mutable: reading the data string may encode a decoded picture.
  mutable TGraphicContainer mPicture;
  QPoint mPosition;
  QSize mSize;
};

}  // namespace norva::edits
