// The windows of the remote-control morph tools: the channel listing with its ratio box,
// the dialog of the ten kinds, and the step-by-step builder form.
#pragma once

namespace tolvane::gui {

// Registers the three windows under their forms' names.
void registerErcWindows();

}  // namespace tolvane::gui
