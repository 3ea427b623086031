#pragma once
// The bus panel: a bus form that logs every packet the bus delivers (echoes of the studio's own
// marked) and every packet the studio sends, in a table that a filter narrows to the rows whose
// text contains it. The newest row stays in view while the view is scrolled to the end. The log
// can be paused, cleared and exported.

#include "PacketLog.h"

#include <NorvaBusComms/Gui/BusForm.h>

class QIODevice;
class QLineEdit;
class QToolButton;
class QSortFilterProxyModel;
class QTableView;

namespace studio {

class TBusView : public norva::TNorvaBusForm {
  Q_OBJECT

 public:
  explicit TBusView(QWidget* parent = nullptr);
  ~TBusView() override;

  TPacketLog& Log() { return mLog; }
  QTableView* Table() const { return mTable; }
  QLineEdit* Filter() const { return mFilter; }
  // The rows the filter lets through.
  int ShownRows() const;
  QToolButton* PauseButton() const { return mPause; }
  QToolButton* ClearButton() const { return mClear; }
  QToolButton* ExportButton() const { return mExport; }
  // The rows the filter lets through, with the column names first, tab-separated; false when
  // `device` took less than all of it.
  bool WriteShownRows(QIODevice& device) const;

  // Sends over the bus this form is registered with and logs it; false when no link is up.
  bool Send(const norva::TCommandPacket& packet);

  void ProcessCommand(const norva::TCommandPacket& packet) override;
  void ConnectionChange() override { emit ConnectionChanged(); }
  void Disconnected() override { emit ConnectionChanged(); }

 signals:
  void ConnectionChanged();
  // The installer asked for the shown rows in a file.
  void ExportRequested();

 private:
  TPacketLog mLog;
  QLineEdit* mFilter;
  QSortFilterProxyModel* mFiltered;
  QTableView* mTable;
  QToolButton* mPause;
  QToolButton* mClear;
  QToolButton* mExport;
};

}  // namespace studio
