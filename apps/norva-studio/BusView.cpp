#include "BusView.h"

#include <NorvaBusComms/Devices/BusComms.h>

#include <QHeaderView>
#include <QLineEdit>
#include <QScrollBar>
#include <QSortFilterProxyModel>
#include <QTableView>
#include <QVBoxLayout>

namespace studio {

TBusView::TBusView(QWidget* parent)
    : TNorvaBusForm(parent),
      mFilter(new QLineEdit),
      mFiltered(new QSortFilterProxyModel(this)),
      mTable(new QTableView) {
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
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(2, 2, 2, 2);
  layout->addWidget(mFilter);
  layout->addWidget(mTable);
}

TBusView::~TBusView() { Disconnect(); }

int TBusView::ShownRows() const { return mFiltered->rowCount(); }

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
