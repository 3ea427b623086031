// Arbitrary bytes as a command list file, read indexed and not: reading fails with the library's
// own failures and leaves the list as it was, or succeeds; what is then saved reads back into the
// same commands (indexed: the first of them, see below).
#include <IR/IR.h>
#include <NorvaGlobal/Exceptions.h>
#include <OrbGlobal/Undo/UndoControl.h>
#include <OrbGlobal/Xml/XmlDocument.h>

#include <cstdint>
#include <cstdlib>

namespace {

// The commands only: a macro whose empty command was left out stops alternating when read back.
QByteArray Saved(const norva::TCommandObjectList& list, bool indexed) {
  pugi::xml_document document;
  list.TCommandObjectList::Save(document.append_child("commands"), indexed);
  return norva::SaveXMLDocument(document);
}

void ReadAndSave(const pugi::xml_document& document, bool indexed) {
  norva::TIRMacro list;
  const QByteArray empty = Saved(list, indexed);
  try {
    list.Load(document.document_element(), indexed);
  } catch (const norva::ENorvaError&) {
    if (Saved(list, indexed) != empty) std::abort();  // a failed read changed the list
    return;
  }
  for (int i = 0; i < list.GetCommandCount(); ++i) {
    (void)list.GetCommand(i)->Status();
    (void)list.GetCommand(i)->GetName();
  }
  const QByteArray saved = Saved(list, indexed);
  pugi::xml_document again;
  norva::LoadXMLDocument(again, saved);
  norva::TIRMacro reread;
  reread.Load(again.document_element(), indexed);
  if (!indexed) {
    if (Saved(reread, false) != Saved(list, false)) std::abort();
    return;
  }
  // Empty commands are not written but use up their index, and an index not below the number of
  // child nodes is never read: what comes back is the first of the written commands.
  int written = 0;
  for (int i = 0; i < list.GetCommandCount() && written < reread.GetCommandCount(); ++i) {
    const norva::TCommandObject* command = list.GetCommand(i);
    if (command->IsEmpty()) continue;
    if (!reread.GetCommand(written++)->Match(command)) std::abort();
  }
  if (written != reread.GetCommandCount()) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const bool ready = [] {
    norva::RegisterCommandClasses();
    norva::DisableUndo();
    return true;
  }();
  (void)ready;
  pugi::xml_document document;
  try {
    norva::LoadXMLDocument(
        document, QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
  } catch (const norva::ENorvaError&) {
    return 0;
  }
  ReadAndSave(document, false);
  ReadAndSave(document, true);
  return 0;
}
