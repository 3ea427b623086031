#pragma once
// Element names the DOM may hold: the Name production of XML 1.0 (fifth edition). Checked before
// an element is created, because the writer would otherwise produce a file nobody can read back.

#include <QString>

namespace norva {

bool IsValidXMLName(const QString& name);

}  // namespace norva
