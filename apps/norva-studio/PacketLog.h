#pragma once
// The packets seen on the bus, as a table: time, command, zone, data, whether the packet was sent
// by the studio or is the echo of one, and what the command means; between them, the link's
// changes (connected, refused, lost, with the reason). Packets arrive far faster than a window can
// show them, so they are gathered and shown in batches a few times a second, and only the newest
// MaxRows are kept: a device that never stops talking costs a bounded amount of memory. A paused
// log keeps gathering (as boundedly) and shows nothing new until it goes on.

#include <NorvaBusComms/CommandPacket.h>

#include <QAbstractTableModel>
#include <QElapsedTimer>
#include <QTimer>

#include <deque>

namespace studio {

class TPacketLog : public QAbstractTableModel {
  Q_OBJECT

 public:
  enum TColumn {
    TimeColumn,
    CommandColumn,
    ZoneColumn,
    DataColumn,
    EchoColumn,
    MeaningColumn,
    ColumnCount
  };
  enum class TOrigin : std::uint8_t { Received, Echo, Sent, Link };
  static constexpr int MaxRows = 100000;
  static constexpr int FlushIntervalMs = 100;
  // Rows shown in one go: a filtered view matches each one, and a frame must stay short.
  static constexpr int BatchRows = 5000;

  explicit TPacketLog(QObject* parent = nullptr);

  // Queued now, shown with the next batch.
  void Append(const norva::TCommandPacket& packet, TOrigin origin);
  // A change of the link, told in `text`, in its place among the packets.
  void AppendLinkChange(const QString& text);
  void SetPaused(bool paused);
  bool IsPaused() const { return mPaused; }
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
    QString Meaning;
  };
  QString Text(const TEntry& entry, int column) const;
  static QString OriginText(TOrigin origin);
  // Moves up to `count` queued packets into the table.
  void ShowPending(std::size_t count);
  void Queue(TEntry entry);

  std::deque<TEntry> mRows;
  std::deque<TEntry> mPending;
  QElapsedTimer mClock;
  QTimer mFlush;
  qint64 mTotal = 0;
  bool mPaused = false;
};

}  // namespace studio
