// Drawing the mesh again without a load: RefreshOBJ ("R") into the still picture of
// the current view, the right-click preview into PictureNoDX, and the zoom rectangle's
// box and enlarged area.
#pragma once

#include "ui/form_obj.h"

namespace tolvane {
class Program;
}

namespace tolvane::obj {

// Reads the OBJ named in the caption with the load's line rules and projection, and
// draws the current view's picture afresh: no scratch file is written, no list changes.
void RefreshOBJ(Program& program);

// Reads the OBJ again and draws every face whole, front on, in PictureNoDX, coloured by
// the colour lists.
void PreviewOBJ(Program& program);

// Inverts the outline of a box, so that drawing it twice takes it away again. A box of
// one point is not drawn.
void invertBox(ui::DrawnPicture& picture, int x1, int y1, int x2, int y2);

// The area between the zoom corners of the current still picture, enlarged to fill
// PictureZoom.
void drawZoomArea(ui::FormOBJ& form);

}  // namespace tolvane::obj
