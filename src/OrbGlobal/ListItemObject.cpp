#include <OrbGlobal/ListItemObject.h>

#include <OrbGlobal/OrbObject.h>

namespace norva {

TOrbObject* GetOrbObjectFromListItem(const QModelIndex& item) {
  if (!item.isValid()) return nullptr;
  const QVariant data = item.data(OrbObjectRole);
  if (!data.canConvert<QObject*>()) return nullptr;
  return qobject_cast<TOrbObject*>(data.value<QObject*>());
}

}  // namespace norva
