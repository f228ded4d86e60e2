// The Phi file creator (MenuPhi): reads a CR2 and writes its Phi file beside it, with
// the standard body parts at their fixed depths, each part's rotation order checked
// against the figure's rules, and the inverse kinematic chains; then shows the file.
#pragma once

namespace tolvane {
class Program;
}

namespace tolvane::phi {

// The contact the "Unconventional CR2" message names.
inline constexpr const char* kContactAddress = "tolvane-support@tolvane.org";

void MenuPhiClick(Program& program);

}  // namespace tolvane::phi
