#pragma once
// The packets seen on the bus, as a table: time, command, zone, data and whether the packet was
// sent by the studio or is the echo of one. Packets arrive far faster than a window can show them,
// so they are gathered and shown in batches a few times a second, and only the newest MaxRows are
// kept: a device that never stops talking costs a bounded amount of memory.

#include <NorvaBusComms/CommandPacket.h>

#include <QAbstractTableModel>
#include <QElapsedTimer>
#include <QTimer>

#include <deque>

namespace studio {

class TPacketLog : public QAbstractTableModel {
  Q_OBJECT

 public:
  enum TColumn { TimeColumn, CommandColumn, ZoneColumn, DataColumn, EchoColumn, ColumnCount };
  enum class TOrigin : std::uint8_t { Received, Echo, Sent };
  static constexpr int MaxRows = 100000;
  static constexpr int FlushIntervalMs = 100;
  // Rows shown in one go: a filtered view matches each one, and a frame must stay short.
  static constexpr int BatchRows = 5000;

  explicit TPacketLog(QObject* parent = nullptr);

  // Queued now, shown with the next batch.
  void Append(const norva::TCommandPacket& packet, TOrigin origin);
  // Shows all that is queued at once (the batch timer shows it a batch at a time).
  void Flush();
  void Clear();
  // Packets queued or shown since the start or the last Clear.
  qint64 Total() const { return mTotal; }

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  struct TEntry {
    qint64 Milliseconds;  // since the log started
    norva::TCommand Command;
    std::uint8_t Zone;
    TOrigin Origin;
    QByteArray Data;
  };
  QString Text(const TEntry& entry, int column) const;
  // Moves up to `count` queued packets into the table.
  void ShowPending(std::size_t count);

  std::deque<TEntry> mRows;
  std::deque<TEntry> mPending;
  QElapsedTimer mClock;
  QTimer mFlush;
  qint64 mTotal = 0;
};

}  // namespace studio
