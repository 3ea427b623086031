#include <KeypadDevice/AutoSaveNames.h>

#include <QFileInfo>

namespace norva {

QString AutoSavePath(const QString& folder, const QString& documentName, const QTime& time) {
  const QString stamp = time.toString(QStringLiteral("hhmmss"));
  QString target = folder + u'/';
  if (documentName.isEmpty()) {
    return target + QStringLiteral("unnamed_") + stamp + QLatin1String(KeypadFileExtension);
  }
  target += QFileInfo(documentName).fileName();
  const qsizetype dot = target.lastIndexOf(u'.');
  if (dot < 0) return QString();
  return target.insert(dot, u'_' + stamp);
}

}  // namespace norva
