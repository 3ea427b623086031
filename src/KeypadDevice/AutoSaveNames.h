#pragma once
// Where an auto-save of a keypad document goes: one file per clock second of the day, named after
// the document.

#include <QString>
#include <QTime>

namespace norva {

// The extension of keypad configuration files, dot included.
inline constexpr char KeypadFileExtension[] = ".keycfg";

// `folder` + "/" and then, for a document without a name, "unnamed_" + `time` as "hhmmss" +
// ".keycfg"; otherwise the file-name part of `documentName` with "_hhmmss" inserted before the
// last "." of the whole path. That dot may lie in the folder part when the name has no extension
// (the time then lands in a folder name), and with no dot at all the result is empty: nothing is
// auto-saved.
QString AutoSavePath(const QString& folder, const QString& documentName, const QTime& time);

}  // namespace norva
