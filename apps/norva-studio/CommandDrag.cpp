#include "CommandDrag.h"

#include <QDataStream>
#include <QIODevice>

namespace studio {

QMimeData* CommandMimeData(const TDraggedCommand& command) {
  QByteArray bytes;
  QDataStream out(&bytes, QIODevice::WriteOnly);
  out << command.GUID << command.Name << command.ButtonClass.GetOrdValue();
  auto* data = new QMimeData;
  data->setData(QLatin1String(CommandMimeType), bytes);
  data->setText(command.Name);
  return data;
}

std::optional<TDraggedCommand> DraggedCommand(const QMimeData* data) {
  if (!data || !data->hasFormat(QLatin1String(CommandMimeType))) return std::nullopt;
  QDataStream in(data->data(QLatin1String(CommandMimeType)));
  TDraggedCommand command;
  quint32 ordinal = 0;
  in >> command.GUID >> command.Name >> ordinal;
  if (in.status() != QDataStream::Ok) return std::nullopt;
  command.ButtonClass.SetOrdValue(ordinal);
  return command;
}

}  // namespace studio
