#include "BindingMemory.h"

#include <QCoreApplication>

namespace studio {

namespace {

const QString Group = QStringLiteral("bindings");
constexpr QChar Separator = u'\t';

}  // namespace

void TBindingMemory::Remember(const QString& guid, const QString& library, const QString& command) {
  mWanted.insert(guid, {library, command});
}

QString TBindingMemory::Wanted(const QString& guid) const {
  const auto found = mWanted.constFind(guid);
  if (found == mWanted.cend()) return {};
  return QCoreApplication::translate("studio::TBindingMemory", "%1 in %2")
      .arg(found->Command, found->Library);
}

void TBindingMemory::Load(QSettings& settings) {
  settings.beginGroup(Group);
  for (const QString& guid : settings.childKeys()) {
    const QString value = settings.value(guid).toString();
    Remember(guid, value.section(Separator, 0, 0), value.section(Separator, 1));
  }
  settings.endGroup();
}

void TBindingMemory::Save(QSettings& settings) const {
  settings.beginGroup(Group);
  for (auto it = mWanted.cbegin(); it != mWanted.cend(); ++it)
    settings.setValue(it.key(), it->Library + Separator + it->Command);
  settings.endGroup();
}

}  // namespace studio
