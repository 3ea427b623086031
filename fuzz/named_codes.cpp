// Arbitrary bytes as a file of named codes: every line is either added as a readable stream,
// skipped as one already there, or reported, exactly one of them, and everything added holds a
// code.
#include <IR/IRStream.h>
#include <IR_Database/IR_Database.h>
#include <OrbGlobal/Undo/UndoControl.h>

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const bool ready = [] {
    norva::DisableUndo();  // nothing here is ever undone
    return true;
  }();
  (void)ready;
  const QByteArray text(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  norva::TModel model;
  const norva::TNamedCodesImport imported = norva::ImportNamedCodes(model, text);
  int lines = 0;
  for (const QByteArray& line : text.split('\n'))
    lines += QString::fromUtf8(line).trimmed().isEmpty() ? 0 : 1;
  if (imported.Added + imported.Skipped + imported.Failures.size() != lines) std::abort();
  if (model.GetCommandCount() != imported.Added) std::abort();
  for (int i = 0; i < model.GetCommandCount(); ++i) {
    auto* stream = qobject_cast<norva::TIRStream*>(model.GetCommand(i));
    if (!stream || stream->IsEmpty()) std::abort();
  }
  return 0;
}
