#pragma once
// Small user-interface helpers on Qt's item views, styles and regions.

#include <QModelIndex>
#include <QPainter>
#include <QRect>
#include <QRegion>
#include <QString>

class QWidget;

namespace norva {

// The item-data role under which a list row keeps the identifier of the group it is shown in.
inline constexpr int GroupIDRole = Qt::UserRole + 0x4700;

// The group identifier of a list row (GroupIDRole), or -1 when the row belongs to no group.
int GetGroupID(const QModelIndex& row);

// Paints a header strip with `caption` over `rect`, as the style draws the headers of item views.
// `widget`, when given, lends its palette, font and style.
void ThemedHeaderPaint(QPainter& painter, const QRect& rect, const QString& caption,
                       const QWidget* widget = nullptr);

// A new empty region (0, 0, 0, 0).
QRegion CreateEmptyRegion();

}  // namespace norva
