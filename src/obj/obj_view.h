// The live view and the navigation of the workbench: the renderer's set-up, the key
// table, Space and the rotation (one step per tick of TimerRotate), the view and colour
// options, the boss button, the zoom rectangle and the right-click preview.
#pragma once

#include "program/events.h"

namespace tolvane {
class Program;
}

namespace tolvane::obj {

// Camera, projection and first material at the form's load.
void SetUpView(Program& program);
// A key press on the form, by character code.
void FormOBJKey(Program& program, int code);
// One step of the rotation.
void RotateTick(Program& program);
// Draws one frame of the live view as the options say.
void DrawFrame(Program& program);

// Option clicks: 1 front, 2 side, 3 top.
void ViewOptionClick(Program& program, int view);
void ColourOptionClick(Program& program);

void LabelBossClick(Program& program);
void LabelPlayClick(Program& program);

// The zoom rectangle dragged in a still picture.
void StillPicturePress(Program& program, const EventArgs& args);
void StillPictureMove(Program& program, const EventArgs& args);

// A right button released on the form: the mesh drawn again in PictureNoDX.
void FormOBJRightRelease(Program& program);

}  // namespace tolvane::obj
