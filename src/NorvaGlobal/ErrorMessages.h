#pragma once
// Device error codes as text for the user, and the communication-error box.

#include <NorvaGlobal/Vocabulary.h>

#include <QString>

namespace norva {

// The text of a device error; when both numbers are 0 or more, " (first, second)" is appended.
QString NorvaErrorMsg(TError error, int first, int second);

// Shows a communication error in a modal box captioned "Error" and returns true once it is closed.
bool CommError(const QString& message);

}  // namespace norva
