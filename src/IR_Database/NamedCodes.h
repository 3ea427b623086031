#pragma once
// A file of named codes, as installers keep them beside a remote control: one code a line, its
// name, a TAB, then the Pronto hex code. Blank lines are skipped; a line that cannot be read is
// reported and the others are still taken; a code the model already holds under the same name is
// skipped, so importing a file again adds nothing.

#include <IR_Database/Model.h>

#include <QByteArray>
#include <QStringList>

namespace norva {

struct TNamedCodesImport {
  int Added = 0;
  QStringList Failures;  // "line 3: no TAB between name and code", in line order
  int Skipped = 0;       // already in the model: same name, same stream
};

// Adds every readable line of `text` (UTF-8) that the model does not hold yet to `model` as an IR
// stream with the button classes its name suggests, and a GUID of its own. The model must be
// writable.
TNamedCodesImport ImportNamedCodes(TModel& model, const QByteArray& text);

}  // namespace norva
