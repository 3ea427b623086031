#pragma once
// The message of the error an action raises, to compare with the exact text a user is shown.

#include <NorvaGlobal/Exceptions.h>

#include <QString>

namespace norva {

// "(nothing raised)" when the action raises nothing, so that the comparison fails and says so.
template <typename Error = ENorvaError, typename Action>
QString ThrownMessage(Action&& action) {
  try {
    action();
  } catch (const Error& error) {
    return error.Message();
  }
  return QStringLiteral("(nothing raised)");
}

}  // namespace norva
