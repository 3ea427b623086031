#pragma once
// What drag objects of the object model share: the control the drag started from, and one
// private format so that views of this program recognise a drag of model objects (the objects
// themselves travel in the drag object, never as bytes).

#include <QMimeData>
#include <QPointer>
#include <QStringList>
#include <QWidget>

namespace norva {

class TOrbDragData : public QMimeData {
  Q_OBJECT

 public:
  TOrbDragData(QWidget* source, QString format);

  QWidget* Source() const { return mSource; }
  QStringList formats() const override { return {mFormat}; }
  bool hasFormat(const QString& mimeType) const override { return mimeType == mFormat; }

 private:
  QPointer<QWidget> mSource;
  QString mFormat;
};

}  // namespace norva
