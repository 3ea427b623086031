#include "PacketLog.h"

#include "BusMeaning.h"

#include <NorvaGlobal/Zones.h>

namespace studio {

TPacketLog::TPacketLog(QObject* parent) : QAbstractTableModel(parent) {
  mClock.start();
  mFlush.setSingleShot(true);
  connect(&mFlush, &QTimer::timeout, this, [this] {
    ShowPending(BatchRows);
    // The rest follows as soon as the window has had its turn.
    if (!mPending.empty() && !mPaused) mFlush.start(0);
  });
}

void TPacketLog::Append(const norva::TCommandPacket& packet, TOrigin origin) {
  // Named when shown: a burst of packets that are never shown costs no naming.
  Queue({mClock.elapsed(), packet.Cmd, packet.Zone, origin, packet.GetDataBytes(), QString()});
}

void TPacketLog::AppendLinkChange(const QString& text) {
  Queue({mClock.elapsed(), 0, 0, TOrigin::Link, QByteArray(), text});
}

void TPacketLog::Queue(TEntry entry) {
  // Only the newest rows are ever shown, so a burst longer than the table is cut here already.
  if (mPending.size() >= static_cast<std::size_t>(MaxRows)) mPending.pop_front();
  mPending.push_back(std::move(entry));
  ++mTotal;
  if (!mPaused && !mFlush.isActive()) mFlush.start(FlushIntervalMs);
}

void TPacketLog::SetPaused(bool paused) {
  mPaused = paused;
  if (paused)
    mFlush.stop();
  else if (!mPending.empty())
    mFlush.start(0);
}

void TPacketLog::Flush() {
  mFlush.stop();
  ShowPending(mPending.size());
}

void TPacketLog::ShowPending(std::size_t count) {
  const auto arriving = static_cast<qsizetype>(std::min(count, mPending.size()));
  if (arriving == 0) return;
  const qsizetype excess = static_cast<qsizetype>(mRows.size()) + arriving - MaxRows;
  if (excess > 0) {
    beginRemoveRows({}, 0, static_cast<int>(excess - 1));
    mRows.erase(mRows.begin(), mRows.begin() + excess);
    endRemoveRows();
  }
  const auto first = static_cast<int>(mRows.size());
  beginInsertRows({}, first, first + static_cast<int>(arriving) - 1);
  for (auto entry = mPending.begin(); entry != mPending.begin() + arriving; ++entry) {
    if (entry->Origin != TOrigin::Link)
      entry->Meaning = BusPacketMeaning(entry->Command, entry->Data);
  }
  std::move(mPending.begin(), mPending.begin() + arriving, std::back_inserter(mRows));
  mPending.erase(mPending.begin(), mPending.begin() + arriving);
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

QString TPacketLog::OriginText(TOrigin origin) {
  switch (origin) {
    case TOrigin::Echo: return tr("echo");
    case TOrigin::Sent: return tr("sent");
    case TOrigin::Link: return tr("link");
    case TOrigin::Received: return {};
  }
  return {};
}

QString TPacketLog::Text(const TEntry& entry, int column) const {
  switch (column) {
    case TimeColumn:
      return QStringLiteral("%1.%2")
          .arg(entry.Milliseconds / 1000)
          .arg(entry.Milliseconds % 1000, 3, 10, QLatin1Char('0'));
    case CommandColumn:
      return entry.Origin == TOrigin::Link
                 ? QString()
                 : QStringLiteral("%1").arg(entry.Command, 2, 16, QLatin1Char('0')).toUpper();
    case ZoneColumn:
      return entry.Origin == TOrigin::Link ? QString() : norva::ZoneByteText(entry.Zone);
    case DataColumn: return QString::fromLatin1(entry.Data.toHex(' ').toUpper());
    case MeaningColumn: return entry.Meaning;
    case EchoColumn: return OriginText(entry.Origin);
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
                                                 QT_TR_NOOP("Echo"), QT_TR_NOOP("Meaning")};
  return section >= 0 && section < ColumnCount ? tr(names[section]) : QVariant();
}

}  // namespace studio
