#include "PlacedPicture.h"

#include <OrbGlobal/Model/AssignTarget.h>
#include <OrbGlobal/Xml/XmlBuilding.h>

namespace norva::edits {

TPlacedPicture::TPlacedPicture(norva::TOrbObject* owner) : TOrbObject(owner) {}

void TPlacedPicture::SetPicture(const QByteArray& dataString) {
  if (dataString == GetPicture()) return;
  Updating("Picture");
  const bool transparent = mPicture.GetTransparent();
  mPicture.SetDataString(dataString);
  mPicture.SetTransparent(transparent);
  Updated();
}

void TPlacedPicture::SetTransparent(bool transparent) {
  if (transparent == GetTransparent()) return;
  Updating("Transparent");
  mPicture.SetTransparent(transparent);
  Updated();
}

void TPlacedPicture::AssignTo(QObject* dest) const {
  const TAssignTarget<TPlacedPicture> picture(this, dest);
  TOrbObject::AssignTo(dest);
  if (!picture) return;
  picture->BeginUpdate();
  picture->SetPicture(GetPicture());
  picture->SetTransparent(GetTransparent());
  picture->SetPosition(mPosition);
  picture->SetSize(mSize);
  picture->EndUpdate();
}

void TPlacedPicture::Save(pugi::xml_node parent) const {
  pugi::xml_node element = AddXMLDOMElement(parent, "picture");
  element.append_attribute("x") = mPosition.x();
  element.append_attribute("y") = mPosition.y();
  element.append_attribute("width") = mSize.width();
  element.append_attribute("height") = mSize.height();
  element.append_attribute("transparent") = GetTransparent();
  SetXMLDOMText(element, GetPicture().constData());
}

}  // namespace norva::edits
