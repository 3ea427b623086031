#pragma once
// A drag of several model objects, kept in a list without owner (so it records no undo), owning
// them or not.

#include <OrbGlobal/Gui/OrbDragData.h>
#include <OrbGlobal/Model/OrbObjectList.h>

#include <Qt>

namespace norva {

// The cursors of a drag: one object, several objects, no drop possible here.
inline constexpr Qt::CursorShape DragCursor = Qt::DragMoveCursor;
inline constexpr Qt::CursorShape MultiDragCursor = Qt::DragCopyCursor;
inline constexpr Qt::CursorShape NoDropCursor = Qt::ForbiddenCursor;

class TOrbDragList : public TOrbDragData {
  Q_OBJECT

 public:
  static inline const QString MimeType = QStringLiteral("application/x-norva-orb-object-list");

  TOrbDragList(QWidget* source, bool ownsObjects);

  TOrbObjectList& OrbObjects() { return mOrbObjects; }
  const TOrbObjectList& OrbObjects() const { return mOrbObjects; }
  // The cursor to show at (x, y), where the target did or did not accept the drop.
  Qt::CursorShape GetDragCursor(bool accepted, int x, int y) const;

 private:
  TOrbObjectList mOrbObjects;
};

}  // namespace norva
