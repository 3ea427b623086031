#pragma once
// A picture of an infra-red stream: every pulse and gap drawn to one time scale, the ends of words
// marked, and the word sent once told apart from the word repeated while the key is held.

#include <IR/IRStreamData.h>

#include <QList>
#include <QWidget>

namespace studio {

// One burst of carrier and the silence after it, in microseconds.
struct TStreamPulse {
  double OnMicroseconds = 0;
  double OffMicroseconds = 0;
  bool EndsWord = false;
  bool Repeated = false;  // part of a word sent again while the key is held
};

// The pulses of the stream up to its end, in the order they are sent; none for an empty stream or
// one without end.
QList<TStreamPulse> StreamPulses(const norva::TIRStreamData& stream);

class TStreamPicture : public QWidget {
  Q_OBJECT

 public:
  explicit TStreamPicture(QWidget* parent = nullptr);

  void SetStream(const norva::TIRStreamData& stream);
  void Clear();
  const QList<TStreamPulse>& Pulses() const { return mPulses; }
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QList<TStreamPulse> mPulses;
  double mTotalMicroseconds = 0;
};

}  // namespace studio
