// The still pictures drawn with QPainter: a painter over a QImage that wraps the form's
// own pixels, so that what the window shows and what the runner compares are the same.
#pragma once

#include <memory>

#include "ui/raster.h"

namespace tolvane::gui {

std::unique_ptr<ui::PicturePainter> qtPainter(ui::Raster& raster);

}  // namespace tolvane::gui
