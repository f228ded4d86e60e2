// The windows of the install and utility forms: the installer's folder form, the Dial
// Renamer, the renumbering form, the map viewer, and the three viewers (magnifier,
// graph paper, launcher).
#pragma once

namespace tolvane::gui {

void registerToolWindows();

}  // namespace tolvane::gui
