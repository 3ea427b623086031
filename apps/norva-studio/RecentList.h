#pragma once
// The studio's remembered settings (QSettings "Norva/Studio", in the user's settings folder; a test
// moves that folder with QSettings::setPath) and, kept there, lists of what was used last: files,
// addresses.

#include <QSettings>
#include <QStringList>

namespace studio {

QSettings StudioSettings();

// The entries of one kind used last, newest first, at most MaxCount, under the settings key `key`.
class TRecentList {
 public:
  static constexpr int MaxCount = 8;

  explicit TRecentList(QString key) : mKey(std::move(key)) {}

  QStringList Entries() const;
  // `entry` to the front, once.
  void Add(const QString& entry) const;

 private:
  QString mKey;
};

}  // namespace studio
