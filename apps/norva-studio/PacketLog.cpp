#include "PacketLog.h"

#include <NorvaGlobal/Zones.h>

namespace studio {

TPacketLog::TPacketLog(QObject* parent) : QAbstractTableModel(parent) {
  mClock.start();
  mFlush.setInterval(FlushIntervalMs);
  mFlush.setSingleShot(true);
  connect(&mFlush, &QTimer::timeout, this, &TPacketLog::Flush);
}

void TPacketLog::Append(const norva::TCommandPacket& packet, TOrigin origin) {
  // Only the newest rows are ever shown, so a burst longer than the table is cut here already
  // (now and then, so that cutting costs nothing per packet).
  if (mPending.size() >= 2 * static_cast<std::size_t>(MaxRows))
    mPending.erase(mPending.begin(), mPending.begin() + MaxRows);
  mPending.push_back({mClock.elapsed(), packet.Cmd, packet.Zone, origin, packet.GetDataBytes()});
  ++mTotal;
  if (!mFlush.isActive()) mFlush.start();
}

void TPacketLog::Flush() {
  if (mPending.empty()) return;
  if (mPending.size() > static_cast<std::size_t>(MaxRows))
    mPending.erase(mPending.begin(), mPending.end() - MaxRows);
  const auto arriving = static_cast<qsizetype>(mPending.size());
  const qsizetype excess = static_cast<qsizetype>(mRows.size()) + arriving - MaxRows;
  if (excess > 0) {
    const auto dropped = std::min(excess, static_cast<qsizetype>(mRows.size()));
    beginRemoveRows({}, 0, static_cast<int>(dropped - 1));
    mRows.erase(mRows.begin(), mRows.begin() + dropped);
    endRemoveRows();
  }
  const auto first = static_cast<int>(mRows.size());
  beginInsertRows({}, first, first + static_cast<int>(arriving) - 1);
  for (TEntry& entry : mPending) mRows.push_back(std::move(entry));
  mPending.clear();
  endInsertRows();
}

void TPacketLog::Clear() {
  beginResetModel();
  mRows.clear();
  mPending.clear();
  mTotal = 0;
  endResetModel();
}

int TPacketLog::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(mRows.size());
}

int TPacketLog::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : ColumnCount;
}

QString TPacketLog::Text(const TEntry& entry, int column) const {
  switch (column) {
    case TimeColumn:
      return QStringLiteral("%1.%2")
          .arg(entry.Milliseconds / 1000)
          .arg(entry.Milliseconds % 1000, 3, 10, QLatin1Char('0'));
    case CommandColumn:
      return QStringLiteral("%1").arg(entry.Command, 2, 16, QLatin1Char('0')).toUpper();
    case ZoneColumn: {
      if (entry.Zone == 0xFF) return tr("all");
      QString text = QString::number(norva::GetDecodedZone(entry.Zone));
      if (norva::IsPreampZone(entry.Zone)) text += tr(" preamp");
      if (norva::IsPagePresetZone(entry.Zone)) text += tr(" page/preset");
      return text;
    }
    case DataColumn: return QString::fromLatin1(entry.Data.toHex(' ').toUpper());
    case EchoColumn:
      return entry.Origin == TOrigin::Echo   ? tr("echo")
             : entry.Origin == TOrigin::Sent ? tr("sent")
                                             : QString();
    default: return {};
  }
}

QVariant TPacketLog::data(const QModelIndex& index, int role) const {
  if (role != Qt::DisplayRole || !index.isValid() || index.row() >= rowCount()) return {};
  return Text(mRows[static_cast<std::size_t>(index.row())], index.column());
}

QVariant TPacketLog::headerData(int section, Qt::Orientation orientation, int role) const {
  if (role != Qt::DisplayRole || orientation != Qt::Horizontal) return {};
  static const char* const names[ColumnCount] = {QT_TR_NOOP("Time"), QT_TR_NOOP("Command"),
                                                 QT_TR_NOOP("Zone"), QT_TR_NOOP("Data"),
                                                 QT_TR_NOOP("Echo")};
  return section >= 0 && section < ColumnCount ? tr(names[section]) : QVariant();
}

}  // namespace studio
