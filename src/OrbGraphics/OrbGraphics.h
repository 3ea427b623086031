#pragma once
// Pictures inside documents, bitmap effects, and the docking user interface (NorvaRuntime::Gui).

#include <OrbGraphics/Gui/BitmapEffects.h>
#include <OrbGraphics/Gui/DockPanel.h>
#include <OrbGraphics/Gui/Graphic.h>
#include <OrbGraphics/Gui/GraphicContainer.h>
#include <OrbGraphics/Gui/PopupList.h>
