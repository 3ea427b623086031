#include "Recovery.h"

#include <KeypadDevice/AutoSaveNames.h>

#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QRegularExpression>

#include <algorithm>

namespace studio {

namespace {

// "Lounge_120405.keycfg" is a copy of "Lounge"; "unnamed_120405.keycfg" of a new document.
QString DocumentOf(const QString& autoSaveName) {
  static const QRegularExpression stamped(
      QStringLiteral("^(.+)_\\d{6}%1$")
          .arg(QRegularExpression::escape(QString::fromLatin1(norva::KeypadFileExtension))),
      QRegularExpression::CaseInsensitiveOption);
  const QRegularExpressionMatch match = stamped.match(autoSaveName);
  return match.hasMatch() ? match.captured(1) : QString();
}

QString KeypadNamed(const QString& document, const QStringList& keypads) {
  const auto found = std::find_if(keypads.begin(), keypads.end(), [&](const QString& keypad) {
    return QFileInfo(keypad).completeBaseName() == document;
  });
  return found == keypads.end() ? QString() : *found;
}

}  // namespace

std::vector<TRecoverable> FindRecoverable(const QString& autoSaveFolder, const QStringList& keypads,
                                          const QDateTime& since) {
  QHash<QString, TRecoverable> newest;  // by document
  const QFileInfoList copies = QDir(autoSaveFolder).entryInfoList(QDir::Files);
  for (const QFileInfo& copy : copies) {
    const QString document = DocumentOf(copy.fileName());
    const QDateTime savedAt = copy.lastModified();
    if (document.isEmpty() || (since.isValid() && savedAt <= since)) continue;
    const QString keypad = KeypadNamed(document, keypads);
    if (!keypad.isEmpty() && QFileInfo::exists(keypad) &&
        QFileInfo(keypad).lastModified() >= savedAt)
      continue;
    TRecoverable& kept = newest[document];
    if (!kept.SavedAt.isValid() || kept.SavedAt < savedAt)
      kept = {copy.absoluteFilePath(), keypad, savedAt};
  }
  std::vector<TRecoverable> found(newest.begin(), newest.end());
  std::sort(found.begin(), found.end(),
            [](const TRecoverable& a, const TRecoverable& b) { return a.SavedAt > b.SavedAt; });
  return found;
}

}  // namespace studio
