#include <OrbGlobal/Model/ListItemObject.h>

#include <OrbGlobal/Model/OrbObject.h>

namespace norva {

TOrbObject* GetOrbObjectFromListItem(const QModelIndex& item) {
  if (!item.isValid()) return nullptr;
  const QVariant data = item.data(OrbObjectRole);
  if (!data.canConvert<QObject*>()) return nullptr;
  return qobject_cast<TOrbObject*>(data.value<QObject*>());
}

}  // namespace norva
