// The dial attribute tools of the destination figure: the hide toggle of the three
// translation dials and the force-limits toggle (single flag digits patched in place),
// the twist lines put out of action and back, bending on and off, IK chain removal,
// the tracking speed, and the two material colours.
#pragma once

#include <string>

namespace tolvane {
class Program;
struct EventArgs;
}  // namespace tolvane

namespace tolvane::morph {

// Hide/Unhide Dials: shows LabelX, LabelY and LabelZ in place of three tool pictures.
void MenuDialsClick(Program& program);
// A click on LabelX, LabelY or LabelZ: `axis` is 'X', 'Y' or 'Z'.
void HideDialClick(Program& program, char axis);

void BendClick(Program& program, bool on);
void DumpIKClick(Program& program);

// menuDialTrackSpeed shows ListChannelsReorder, whose double-click fills the box.
void MenuDialTrackSpeedClick(Program& program);
// A key in TextTrackingSpeed: Escape hides the box, Enter writes the value.
void TextTrackingSpeedKey(Program& program, const EventArgs& args);

// PictureMatColor and PictureMatHiLite: the right click explains, the double-click
// asks for a colour and writes it into the chosen material's KdColor or KsColor line.
void MatColorRightClick(Program& program);
void MatHiLiteRightClick(Program& program);
void MaterialColourDblClick(Program& program, bool highlight);

// The routines that no control starts: MenuTwist and MenuLimits do nothing. They are
// complete and take their body part by text. `entry` is "Thigh", "Hip (as alternate
// Thigh name)" or "Shoulder".
void RemoveTwist(Program& program, const std::string& entry);
void RestoreTwist(Program& program, const std::string& entry);
// `part` is a body part's name with its suffix, as "lThigh:1".
void ForceLimits(Program& program, const std::string& part);

}  // namespace tolvane::morph
