#include "RecentList.h"

namespace studio {

QSettings StudioSettings() {
  return QSettings(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("Norva"),
                   QStringLiteral("Studio"));
}

QStringList TRecentList::Entries() const { return StudioSettings().value(mKey).toStringList(); }

void TRecentList::Add(const QString& entry) const {
  QStringList entries = Entries();
  entries.removeAll(entry);
  entries.prepend(entry);
  StudioSettings().setValue(mKey, entries.mid(0, MaxCount));
}

}  // namespace studio
