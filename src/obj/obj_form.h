// Showing and loading the workbench: PictureOBJView on the main form, and the form's
// own load event.
#pragma once

namespace tolvane {
class Program;
}

namespace tolvane::obj {

void PictureOBJViewClick(Program& program);
void PictureOBJViewRightClick(Program& program);
// The form's load: the live view's set-up, the speed back to 1, the extra pictures hidden.
void FormOBJLoad(Program& program);

}  // namespace tolvane::obj
