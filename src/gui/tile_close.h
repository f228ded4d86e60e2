// The closing effect of the main window: the window fills with the tile picture, row
// by row, with a short wait between rows.
#pragma once

class QWidget;

namespace tolvane::gui {

void paintTileClose(QWidget& window, int rowWaitMs = 10);

}  // namespace tolvane::gui
