#include <IR/IRMacro.h>

#include <OrbGlobal/Xml/XmlBuilding.h>
#include <OrbGlobal/Xml/XmlLookup.h>

namespace norva {

namespace {

constexpr int AlternatingCount = 2;

}  // namespace

TIRMacro::TIRMacro(TOrbObject* owner) : TCommandObjectList(owner) {}

bool TIRMacro::GetAlternating() const {
  return mAlternating && GetCommandCount() == AlternatingCount;
}

void TIRMacro::SetAlternating(bool alternating) {
  const bool stored = alternating && GetCommandCount() == AlternatingCount;
  if (stored == GetAlternating()) return;
  Updating("Alternating");
  mAlternating = stored;
  Updated();
}

void TIRMacro::AssignTo(QObject* dest) const {
  TCommandObjectList::AssignTo(dest);
  if (auto* macro = qobject_cast<TIRMacro*>(dest); macro && macro != this)
    macro->SetAlternating(GetAlternating());
}

void TIRMacro::Save(pugi::xml_node element, bool indexed) const {
  TCommandObjectList::Save(element, indexed);
  SetXMLDOMText(AddXMLDOMElement(element, QStringLiteral("alternating")),
                GetAlternating() ? QStringLiteral("yes") : QStringLiteral("no"));
}

void TIRMacro::Load(pugi::xml_node element, bool indexed) {
  BeginUpdate();
  try {
    TCommandObjectList::Load(element, indexed);
    SetAlternating(GetXMLDOMNodeText(element, QStringLiteral("alternating"), false) ==
                   QStringLiteral("yes"));
  } catch (...) {
    EndUpdate();
    throw;
  }
  EndUpdate();
}

}  // namespace norva
