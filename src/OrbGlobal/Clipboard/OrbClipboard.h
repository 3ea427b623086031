#pragma once
// Copy, cut and paste of model objects. Nothing is serialised to the system clipboard: the object
// (a clone for sub-components, the object itself for top-level objects) waits in one process-wide
// slot, and the system clipboard is only emptied, so the slot counts as the clipboard's content
// until another program puts something there. TOrbObject::CopyToClipboard and CutToClipboard fill
// the slot.

#include <QUuid>

namespace norva {

class TOrbObject;

// The object in the slot, but only while the system clipboard holds no data in any format.
TOrbObject* GetClipboardObject();
// True when the slot was filled by a cut, false after a copy.
bool CutClipboardObject();
// Destroys the held object when it is a clone (a sub-component); always empties the slot.
void ReleaseClipboardObject();
// True when `object` is the owner the clipboard object was copied from (by GUID; never when that
// owner had no GUID or the copied object had no owner).
bool CheckOriginalClipboardObjectOwner(const TOrbObject* object);

// Called by a model object that is going away: the slot forgets it without destroying it again.
void ForgetClipboardObject(const TOrbObject* object);

}  // namespace norva
