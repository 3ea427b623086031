#pragma once
// How platform and link code report the outcome of an operation: an errno-style code and the text
// the user is told. Only the bus object turns a failure into OnError and a message box.

#include <QString>

namespace norva {

struct TPlatformResult {
  int Code = 0;  // errno-style; 0 for success
  QString Text;  // empty for success

  bool Ok() const { return Code == 0 && Text.isEmpty(); }
  static TPlatformResult Failure(int code, QString text) { return {code, std::move(text)}; }
  // The text, a blank line, and "Error: <the system's text for the code> (<code>)": how open
  // failures are worded.
  QString Described() const;
};

}  // namespace norva
