#pragma once
// Edits generated from the meta-object: any writable property of a model object, written through
// its setter with a value chosen by the property's undo kind (and, for texts with a format of
// their own, by its name).

#include "EditChoices.h"

#include <QString>

namespace norva {
class TOrbObject;
}

namespace norva::edits {

// Writes one writable property of `object` and says what it wrote ("Caption = 'Vol+'"), or
// that the setter refused the value. Empty when the object publishes no property it can write.
QString EditProperty(TOrbObject& object, TEditChoices& choices);

}  // namespace norva::edits
