#include "StreamPicture.h"

#include <QPainter>

namespace studio {

namespace {

// Word ends count in coarser units than the other lengths.
double Microseconds(const norva::TIRStreamData& stream, norva::TPeriodID id) {
  const double unit =
      id >= norva::FirstWordEndID ? norva::WordEndLengthUnit : norva::PeriodLengthUnit;
  return stream.Lengths[id] * unit * 1e6;
}

// Which pulses repeat while the key is held: the word after the first for RepeatWord2, none for
// NoRepeat, every pulse otherwise.
bool RepeatedFrom(norva::TIRStreamFormat format, bool inFirstWord) {
  switch (format) {
    case norva::NoRepeat: return false;
    case norva::RepeatWord2: return !inFirstWord;
    case norva::RepeatWord1:
    case norva::RepeatBothWords: return true;
  }
  return true;
}

constexpr int Margin = 6;
const QColor OnceColour(0x2b, 0x6c, 0xb0);
const QColor RepeatColour(0xd0, 0x7a, 0x1c);

// Coloured entries side by side from `at` (the base line of their text).
void DrawLegend(QPainter& painter, QPoint at, const QList<std::pair<QColor, QString>>& entries) {
  for (const auto& [colour, text] : entries) {
    painter.setPen(colour);
    painter.drawText(at, text);
    at.rx() += painter.fontMetrics().horizontalAdvance(text) + 16;
  }
}

}  // namespace

QList<TStreamPulse> StreamPulses(const norva::TIRStreamData& stream) {
  const int end = stream.IsEmpty() ? -1 : stream.GetEndPos(false);
  QList<TStreamPulse> pulses;
  bool inFirstWord = true;
  for (int i = 0; i <= end; ++i) {
    const norva::TPeriodIDPair& pair = stream.Pairs[static_cast<std::size_t>(i)];
    if (pair.OnID == norva::SecondWordEndID) {  // an escape over three pairs, no pulse of its own
      i += 2;
      continue;
    }
    pulses.append({Microseconds(stream, pair.OnID), Microseconds(stream, pair.OffID),
                   pair.IsWordEnd(), RepeatedFrom(stream.Format, inFirstWord)});
    if (pair.IsWordEnd()) inFirstWord = false;
  }
  return pulses;
}

TStreamPicture::TStreamPicture(QWidget* parent) : QWidget(parent) {
  setObjectName(QStringLiteral("streamPicture"));
  setMinimumHeight(72);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void TStreamPicture::SetStream(const norva::TIRStreamData& stream) {
  mPulses = StreamPulses(stream);
  mTotalMicroseconds = 0;
  for (const TStreamPulse& pulse : mPulses)
    mTotalMicroseconds += pulse.OnMicroseconds + pulse.OffMicroseconds;
  update();
}

void TStreamPicture::Clear() { SetStream({}); }

QSize TStreamPicture::sizeHint() const { return {320, 72}; }

// Time runs left to right at one scale: a pulse is a raised block, a gap the base line; word ends
// get a dashed mark, and the repeated words another colour, named in the legend.
void TStreamPicture::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), palette().base());
  const QFontMetrics metrics = painter.fontMetrics();
  const int legendTop = height() - metrics.height() - 2;
  const int high = Margin;
  const int low = legendTop - 4;
  const double width = std::max(1, this->width() - 2 * Margin);
  if (mTotalMicroseconds <= 0) {
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.drawText(rect(), Qt::AlignCenter, tr("No infra-red stream"));
    return;
  }
  const double scale = width / mTotalMicroseconds;
  double at = 0;
  for (const TStreamPulse& pulse : mPulses) {
    const double x = Margin + at * scale;
    const double pulseWidth = std::max(1.0, pulse.OnMicroseconds * scale);
    painter.fillRect(QRectF(x, high, pulseWidth, low - high),
                     pulse.Repeated ? RepeatColour : OnceColour);
    at += pulse.OnMicroseconds + pulse.OffMicroseconds;
    if (pulse.EndsWord) {
      const double endX = Margin + at * scale;
      painter.setPen(QPen(palette().color(QPalette::Text), 1, Qt::DashLine));
      painter.drawLine(QPointF(endX - 1, high - 2), QPointF(endX - 1, low + 2));
    }
  }
  painter.setPen(palette().color(QPalette::Mid));
  painter.drawLine(Margin, low, Margin + static_cast<int>(width), low);
  DrawLegend(
      painter, QPoint(Margin, legendTop + metrics.ascent()),
      {{palette().color(QPalette::Text), tr("%1 ms").arg(mTotalMicroseconds / 1000, 0, 'f', 1)},
       {OnceColour, tr("\u25A0 sent once")},
       {RepeatColour, tr("\u25A0 repeated while held")},
       {palette().color(QPalette::Text), tr("\u2506 word end")}});
}

}  // namespace studio
