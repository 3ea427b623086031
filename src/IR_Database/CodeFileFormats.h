#pragma once
// The formats of code files the import reads: each recognised by its content and read by a pure
// reader, so that a file needs no particular name and a format may still be named explicitly.

#include <IR_Database/CodeFileEntries.h>

#include <QByteArray>
#include <QList>
#include <QString>

namespace norva {

struct TCodeFileFormat {
  QString Name;  // as typed after --format: "pronto", "flipper", "girr", "lircd", "csv", "sendir"
  // Whether the bytes have this format's shape (cheap: the first lines or the root element).
  bool (*Recognises)(const QByteArray& bytes);
  // `path` gives what a format takes from the file's place (the CSV form's make and model).
  TCodeFileEntries (*Read)(const QByteArray& bytes, const QString& path);
};

// Every format, in the order recognition tries them.
const QList<TCodeFileFormat>& CodeFileFormats();

}  // namespace norva
