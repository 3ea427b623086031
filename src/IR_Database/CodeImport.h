#pragma once
// The import of code files: one operation for every format the database reads. The file's
// format is recognised by its content or named; its codes go to the make and model the file
// names, or else to those given; one import is one undo step. A code the model already holds
// under the same name is skipped, so importing a file again adds nothing; an entry that cannot be
// read or built is refused with its place and the reason, and the others are still imported.

#include <IR_Database/CodeFileFormats.h>
#include <IR_Database/IRDatabase.h>

namespace norva {

struct TCodeImportSource {
  QString Path;  // the file: what formats take from its place (the bytes are read by the caller)
  QString Make;  // where codes go when the file names no make and model
  QString Model;
  QString Format;  // a format's name; empty: recognised by the content
};

struct TCodeImportResult {
  int Added = 0;
  int Skipped = 0;                   // already in their model: same name, same stream
  QList<TCodeFileRefusal> Refusals;  // the reader's, then the import's; "file": no known format
  // Codes added under a second name: "line 4: Vol up is the same code as Acme - TV: Volume+".
  QStringList Duplicates;
};

// The format named (case ignored), or with no name the first that recognises the bytes; nullptr
// when there is none.
const TCodeFileFormat* FindCodeFileFormat(const QByteArray& bytes, const QString& name = {});
// "flipper, girr, lircd, csv, sendir, pronto": the names a format may be given by.
QString CodeFileFormatNames();

// Adds the codes of a file to the database as IR streams, each with a GUID of its own and the
// button classes its name suggests: streams as they are, learnt captures kept as the remote sends
// them (CaptureStream), protocol codes as the protocol engine builds them (EncodeIRStream). The
// database must be writable; the caller closes the undo step (MaintainUndo).
TCodeImportResult ImportCodeFile(TIRDB& database, const QByteArray& bytes,
                                 const TCodeImportSource& source);

}  // namespace norva
