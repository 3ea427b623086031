#pragma once
// The model object behind a row of a Qt item view: views keep it in the row's data under
// OrbObjectRole (as a QObject pointer).

#include <QModelIndex>

namespace norva {

class TOrbObject;

inline constexpr int OrbObjectRole = Qt::UserRole;

// None when the row is invalid, has no data, or its data is not a model object.
TOrbObject* GetOrbObjectFromListItem(const QModelIndex& item);

}  // namespace norva
