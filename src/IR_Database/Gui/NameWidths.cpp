#include <IR_Database/Gui/NameWidths.h>

#include <QFontMetrics>

#include <algorithm>

namespace norva {

namespace {

template <typename NameAt>
int LongestName(int count, const QFont& font, QPaintDevice* device, NameAt nameAt) {
  const QFontMetrics metrics = device ? QFontMetrics(font, device) : QFontMetrics(font);
  int widest = 0;
  for (int i = 0; i < count; ++i) widest = std::max(widest, metrics.horizontalAdvance(nameAt(i)));
  return widest;
}

}  // namespace

int GetLongestModelNameWidth(const TMake& make, const QFont& font, QPaintDevice* device) {
  return LongestName(make.GetModelCount(), font, device,
                     [&](int i) { return make.GetModel(i)->GetName(); });
}

int GetLongestCommandNameWidth(const TModel& model, const QFont& font, QPaintDevice* device) {
  return LongestName(model.GetCommandCount(), font, device,
                     [&](int i) { return model.GetCommand(i)->GetName(); });
}

}  // namespace norva
