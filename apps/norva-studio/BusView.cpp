#include "BusView.h"

#include <NorvaBusComms/Devices/BusComms.h>

#include <QHBoxLayout>
#include <QHeaderView>
#include <QIODevice>
#include <QLineEdit>
#include <QScrollBar>
#include <QSortFilterProxyModel>
#include <QTableView>
#include <QToolButton>
#include <QVBoxLayout>

#include <functional>

namespace studio {

TBusView::TBusView(QWidget* parent)
    : TNorvaBusForm(parent),
      mFilter(new QLineEdit),
      mFiltered(new QSortFilterProxyModel(this)),
      mTable(new QTableView),
      mPause(new QToolButton),
      mClear(new QToolButton),
      mExport(new QToolButton) {
  setObjectName(QStringLiteral("bus"));
  mFilter->setPlaceholderText(tr("Filter: text any column contains"));
  mFilter->setClearButtonEnabled(true);
  mFiltered->setSourceModel(&mLog);
  mFiltered->setFilterKeyColumn(-1);
  mFiltered->setFilterCaseSensitivity(Qt::CaseInsensitive);
  connect(mFilter, &QLineEdit::textChanged, mFiltered,
          &QSortFilterProxyModel::setFilterFixedString);
  mTable->setModel(mFiltered);
  // Fixed row heights and column widths: nothing is measured per row, however many arrive.
  mTable->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  mTable->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 4);
  mTable->verticalHeader()->hide();
  mTable->horizontalHeader()->setSectionResizeMode(QHeaderView::Interactive);
  mTable->horizontalHeader()->setStretchLastSection(true);
  mTable->setSelectionBehavior(QAbstractItemView::SelectRows);
  mTable->setWordWrap(false);
  // Follows the newest row unless the user has scrolled back to read.
  connect(mFiltered, &QAbstractItemModel::rowsAboutToBeInserted, this, [this] {
    QScrollBar* bar = mTable->verticalScrollBar();
    mTable->setProperty("following", bar->value() == bar->maximum());
  });
  connect(mFiltered, &QAbstractItemModel::rowsInserted, this, [this] {
    if (mTable->property("following").toBool()) mTable->scrollToBottom();
  });
  mPause->setText(tr("Pause"));
  mPause->setCheckable(true);
  mPause->setToolTip(tr("Stop showing new packets; they are kept and shown on going on"));
  connect(mPause, &QToolButton::toggled, this, [this](bool paused) {
    mLog.SetPaused(paused);
    mPause->setText(paused ? tr("Go on") : tr("Pause"));
  });
  mClear->setText(tr("Clear"));
  connect(mClear, &QToolButton::clicked, &mLog, &TPacketLog::Clear);
  mExport->setText(tr("Export..."));
  mExport->setToolTip(tr("Write the rows shown to a tab-separated file"));
  connect(mExport, &QToolButton::clicked, this, &TBusView::ExportRequested);
  auto* bar = new QHBoxLayout;
  bar->addWidget(mFilter, 1);
  for (QToolButton* button : {mPause, mClear, mExport}) bar->addWidget(button);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(2, 2, 2, 2);
  layout->addLayout(bar);
  layout->addWidget(mTable);
}

TBusView::~TBusView() { Disconnect(); }

int TBusView::ShownRows() const { return mFiltered->rowCount(); }

bool TBusView::WriteShownRows(QIODevice& device) const {
  const auto line = [&](const std::function<QString(int column)>& cell) {
    QStringList cells;
    for (int column = 0; column < TPacketLog::ColumnCount; ++column) cells << cell(column);
    const QByteArray text = cells.join(QLatin1Char('\t')).toUtf8() + '\n';
    return device.write(text) == text.size();
  };
  bool complete = line([&](int column) {
    return mFiltered->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
  });
  for (int row = 0; complete && row < mFiltered->rowCount(); ++row)
    complete = line([&](int column) { return mFiltered->index(row, column).data().toString(); });
  return complete;
}

bool TBusView::Send(const norva::TCommandPacket& packet) {
  norva::TNorvaBusComms* bus = BusComms();
  if (!bus || !bus->LinkUp()) return false;
  mLog.Append(packet, TPacketLog::TOrigin::Sent);
  bus->SendCmd(packet);
  return true;
}

void TBusView::ProcessCommand(const norva::TCommandPacket& packet) {
  mLog.Append(packet, BusComms()->ProcessingEcho() ? TPacketLog::TOrigin::Echo
                                                   : TPacketLog::TOrigin::Received);
}

}  // namespace studio
