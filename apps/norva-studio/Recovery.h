#pragma once
// Keypad configurations to recover on start: the auto-saved copies (KeypadDevice/AutoSaveNames.h)
// written since the studio last closed cleanly, or last offered them, that are newer than the
// file they copy. A copy of an unnamed document, or of one whose file is unknown, has no file to
// be older than.

#include <QDateTime>
#include <QString>
#include <QStringList>

#include <vector>

namespace studio {

struct TRecoverable {
  QString AutoSave;  // the copy's path
  QString Keypad;    // the configuration file it copies; "" when unnamed or unknown
  QDateTime SavedAt;
};

// The newest copy of each document in `autoSaveFolder` saved after `since` (any, when invalid),
// newest first. `keypads` are the configuration files the copies may belong to, newest first.
std::vector<TRecoverable> FindRecoverable(const QString& autoSaveFolder, const QStringList& keypads,
                                          const QDateTime& since);

}  // namespace studio
