#pragma once
// Column widths for lists of models and commands: the widest name, in pixels, as Qt's font
// metrics measure it on a paint device (a widget, a printer) or for a font.

#include <IR_Database/Make.h>

#include <QFont>
#include <QPaintDevice>

namespace norva {

int GetLongestModelNameWidth(const TMake& make, const QFont& font, QPaintDevice* device = nullptr);
int GetLongestCommandNameWidth(const TModel& model, const QFont& font,
                               QPaintDevice* device = nullptr);

}  // namespace norva
