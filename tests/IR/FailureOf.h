#pragma once
// The message of the failure an action raises, so that a check can hold the exact text expected.

#include <NorvaGlobal/Exceptions.h>

#include <QString>

#include <functional>

inline QString FailureOf(const std::function<void()>& action) {
  try {
    action();
  } catch (const norva::ENorvaError& error) {
    return error.Message();
  }
  return QStringLiteral("(no failure)");
}
