#pragma once
// A command of the library as it travels by drag and drop inside the studio: its GUID, name and
// button classes, so that the keypad can bind it without asking the library again.

#include <ButtonClasses/ButtonClass.h>

#include <QMimeData>
#include <QString>

#include <optional>

namespace studio {

inline constexpr char CommandMimeType[] = "application/x-norva-command";

struct TDraggedCommand {
  QString GUID;
  QString Name;
  norva::TButtonClass ButtonClass;  // the first of the command's classes, or none
};

QMimeData* CommandMimeData(const TDraggedCommand& command);
std::optional<TDraggedCommand> DraggedCommand(const QMimeData* data);

}  // namespace studio
