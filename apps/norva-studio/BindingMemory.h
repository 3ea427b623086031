#pragma once
// What each keypad binding last resolved to: the command's name and the library that held it,
// remembered between runs, so that a binding the open library cannot resolve says what it wanted.

#include <QHash>
#include <QSettings>
#include <QString>

namespace studio {

class TBindingMemory {
 public:
  void Remember(const QString& guid, const QString& library, const QString& command);
  // "Volume up in library Lounge"; empty when nothing is remembered for the GUID.
  QString Wanted(const QString& guid) const;

  void Load(QSettings& settings);
  void Save(QSettings& settings) const;

 private:
  struct TWanted {
    QString Library;
    QString Command;
  };
  QHash<QString, TWanted> mWanted;
};

}  // namespace studio
