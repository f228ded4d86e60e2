// The pose and material file editor ("PZ2 Editor"). Pose mode cuts the chosen actors,
// whole, out of the source file into a pose beside it; material mode copies the
// figure's material blocks into a new pose file, with their maps and colours changed on
// the way, and asks where to store it.
#pragma once

#include <string>

namespace tolvane {
class Program;
}

namespace tolvane::library {

// MenuPoseFile and menuMatFile: the form in its mode, loaded from the source file.
void ShowPoseEditor(Program& program, bool materialMode);

void PoseActorsDblClick(Program& program);        // ListActorsPZ2 -> ListActorsWanted
void PoseMaterialsDblClick(Program& program);     // ListMaterialsMAT -> ListMaterialsMATWanted
void PoseMaterialsClick(Program& program);        // the entry's colour in ShapePresentColor
void PoseMaterialsRightRelease(Program& program);  // the colour picker
void PoseChangeColorAdvice(Program& program, bool fromFrame);
void PoseDone(Program& program);    // LabelDonePZ2: the writer of the mode
void PoseCancel(Program& program);  // LabelCancelPZ2
void PoseUnload(Program& program);  // the window closed

// The text of a picked colour component (0-255): x / 256 at single precision, with a
// "0" in front of a leading point ("0.9960938" for 255, "0" for 0).
std::string colourComponentText(int component);
// A material file line with its map cut off: the text up to its first blank, then
// "NO_MAP".
std::string withoutMap(const std::string& line);

}  // namespace tolvane::library
