// The mirrored morph copy: a morph of the destination copied to another body part of
// the same figure, with the sign of each chosen axis of its deltas flipped, written to
// "\mirmorph.cr2" in the Work folder. The working file stays as it was; the result can
// be opened into the workspace from the menu.
#pragma once

#include <string>
#include <vector>

namespace tolvane {
class Program;
}  // namespace tolvane

namespace tolvane::morph {

void MenuMirrorClick(Program& program);
void MirrorClick(Program& program);
void MirrorRightClick(Program& program);
// The double-click on a ListActors line in mirror mode: the copy to that part.
void MirrorToPart(Program& program);
// Opens "\mirmorph.cr2" into the workspace as the destination.
void MenuMirrorOpenClick(Program& program);

// A delta line with the signs of the chosen axes flipped and its fields joined by
// single blanks; any other line as it stands.
std::string mirrorDeltaLine(const std::string& line, const bool flip[3]);

}  // namespace tolvane::morph
