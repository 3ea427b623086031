#pragma once
// Proposing a button class for a command's name ("Vol Up", "skip >>", "Number 7"): each class of
// the four generic groups has a list of name patterns, tried in a fixed order.

#include <ButtonClasses/ButtonClass.h>

#include <QString>
#include <QStringView>

namespace norva {

// The pattern list of a generic class, patterns separated by ";" (empty for value 0, the reserved
// Numeric values, and every class outside the Transport, Numeric, Cursor and System groups).
QString ButtonClassPatterns(TButtonClassGroup group, int classId);

// Tries Transport, Numeric, Cursor, then System, each in increasing value order, each value's
// patterns in list order, ignoring case. The first match wins: `result` becomes that class (no
// client class) and the answer is true. Without a match `result` is left as it was.
bool FindButtonClass(QStringView name, TButtonClass& result);

}  // namespace norva
