#include <Utils/Gui/InterfaceHelpers.h>

#include <QApplication>
#include <QStyle>
#include <QStyleOptionHeader>
#include <QWidget>

namespace norva {

int GetGroupID(const QModelIndex& row) {
  bool ok = false;
  const int id = row.data(GroupIDRole).toInt(&ok);
  return ok && id >= 0 ? id : -1;
}

void ThemedHeaderPaint(QPainter& painter, const QRect& rect, const QString& caption,
                       const QWidget* widget) {
  QStyleOptionHeader option;
  if (widget) option.initFrom(widget);
  option.rect = rect;
  option.text = caption;
  option.textAlignment = Qt::AlignLeft | Qt::AlignVCenter;
  option.position = QStyleOptionHeader::OnlyOneSection;
  option.state |= QStyle::State_Enabled | QStyle::State_Horizontal;
  QStyle* style = widget ? widget->style() : QApplication::style();
  style->drawControl(QStyle::CE_Header, &option, &painter, widget);
}

QRegion CreateEmptyRegion() { return QRegion(0, 0, 0, 0); }

}  // namespace norva
