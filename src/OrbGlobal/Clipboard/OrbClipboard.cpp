#include <OrbGlobal/Clipboard/OrbClipboard.h>

#include <NorvaGlobal/UIServices.h>
#include <OrbGlobal/Model/OrbObject.h>

#include <cstdlib>

namespace norva {

namespace {

// Plain data, so that objects destroyed at any point of the program's end can still ask it.
struct TClipboardSlot {
  TOrbObject* object = nullptr;
  bool cut = false;
  QUuid sourceOwnerGUID;
};
constinit TClipboardSlot gSlot;

TClipboardSlot& Slot() { return gSlot; }

// A clone still held when the program ends is released with the module.
void ReleaseAtExit() {
  static const bool registered = (std::atexit(ReleaseClipboardObject), true);
  Q_UNUSED(registered);
}

}  // namespace

TOrbObject* GetClipboardObject() {
  return UIServices().ClipboardHoldsData() ? nullptr : Slot().object;
}

bool CutClipboardObject() { return Slot().cut; }

void ReleaseClipboardObject() {
  TOrbObject* held = Slot().object;
  Slot().object = nullptr;
  if (held && held->IsSubComponent()) delete held;
}

bool CheckOriginalClipboardObjectOwner(const TOrbObject* object) {
  const QUuid& source = Slot().sourceOwnerGUID;
  return !source.isNull() && object && object->GetGUID() == source;
}

void ForgetClipboardObject(const TOrbObject* object) {
  if (Slot().object == object) Slot().object = nullptr;
}

void TOrbObject::CopyToClipboard() {
  ReleaseAtExit();
  ReleaseClipboardObject();
  Slot().object = IsSubComponent() ? GetClone(nullptr).release() : this;
  UIServices().EmptyClipboard();
  Slot().cut = false;
  Slot().sourceOwnerGUID = mOwner ? mOwner->GetGUID() : NoGUID;
}

void TOrbObject::CutToClipboard() {
  CopyToClipboard();
  Delete();
  Slot().cut = true;
}

}  // namespace norva
