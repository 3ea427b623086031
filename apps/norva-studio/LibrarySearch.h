#pragma once
// Finding library commands as the installer types: every word of the query must begin a word,
// ignoring case, of the command's name, where it is filed (make, model, group), its button classes
// or its decode. The commands are listed once per build of the library tree; their text is gathered
// at the first search after that and kept, so a keystroke scans flat text, never the model tree.

#include <IR/CommandObject.h>

#include <QList>
#include <QString>
#include <QStringView>

#include <vector>

namespace studio {

// What a command says as a protocol: "NEC1 D=4 F=8", "unknown ..."; empty for a command that is
// no infra-red stream or a stream without end.
QString DecodeTextOf(const norva::TCommandObject& command);

// A command of the library and where it is filed (make, model, group).
struct TLibraryEntry {
  norva::TCommandObject* Command;
  QString Where;
};

class TLibrarySearch {
 public:
  void Clear();
  // Commands are found in the order they were added.
  void Add(norva::TCommandObject& command, const QString& where);
  // The commands in which every word of `query` begins a word; none for a query without words.
  QList<TLibraryEntry> Find(QStringView query) const;
  // Gathers the text of up to `count` more commands (decoding an infra-red stream takes the
  // longest); true once every command's is gathered.
  bool GatherSome(std::size_t count) const;

 private:
  std::vector<TLibraryEntry> mEntries;
  // The searchable text in lower case of the first entries, as far as it was gathered.
  mutable std::vector<QString> mText;
};

}  // namespace studio
