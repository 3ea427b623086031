// Arbitrary bytes as a code file of every format the import reads: each reader gives entries and
// refusals that name their place, and importing them accounts for every one, added, skipped or
// refused, exactly once; everything added holds a code.
#include <IR/IRStream.h>
#include <IR_Database/IR_Database.h>
#include <OrbGlobal/Undo/UndoControl.h>

#include <cstdint>
#include <cstdlib>

namespace {

// A path in the layout the CSV form takes its make and model from.
const QString Path = QStringLiteral("codes/Acme/TV/4,-1.csv");

void CheckFormat(const norva::TCodeFileFormat& format, const QByteArray& bytes) {
  const norva::TCodeFileEntries read = format.Read(bytes, Path);
  for (const norva::TCodeFileEntry& entry : read.Entries) {
    if (entry.Place.isEmpty()) std::abort();
    if (const auto* stream = std::get_if<norva::TIRStreamData>(&entry.Code))
      if (stream->IsEmpty()) std::abort();
    if (const auto* code = std::get_if<norva::TProtocolCode>(&entry.Code))
      if (code->Protocol.isEmpty()) std::abort();
  }
  for (const norva::TCodeFileRefusal& refusal : read.Refusals)
    if (refusal.Place.isEmpty() || refusal.Reason.isEmpty()) std::abort();
  norva::TIRDB database(QStringLiteral("/nonexistent/fuzz.xml"), false);
  const norva::TCodeImportResult imported = norva::ImportCodeFile(
      database, bytes, {Path, QStringLiteral("Make"), QStringLiteral("Model"), format.Name});
  if (imported.Added + imported.Skipped + imported.Refusals.size() !=
      read.Entries.size() + read.Refusals.size())
    std::abort();
  // Codes go to the make and model the file names, or else to those given.
  int commands = 0;
  for (int m = 0; m < database.GetMakeCount(); ++m) {
    const norva::TMake* make = database.GetMake(m);
    for (int i = 0; i < make->GetModelCount(); ++i) {
      const norva::TModel* model = make->GetModel(i);
      for (int c = 0; c < model->GetCommandCount(); ++c, ++commands) {
        auto* stream = qobject_cast<const norva::TIRStream*>(model->GetCommand(c));
        if (!stream || stream->IsEmpty()) std::abort();
      }
    }
  }
  if (commands != imported.Added) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const bool ready = [] {
    norva::DisableUndo();  // nothing here is ever undone
    return true;
  }();
  (void)ready;
  const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  (void)norva::FindCodeFileFormat(bytes);
  for (const norva::TCodeFileFormat& format : norva::CodeFileFormats()) CheckFormat(format, bytes);
  return 0;
}
