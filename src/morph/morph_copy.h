// Morph copy: PictureCopyToDest takes the morph channel, or the control block of an
// EMC group, selected in ListChannels out of the source file and writes it into the
// destination's actor of the same bare name, through "\SaveMorph.txt" and
// "\InsertMorph.txt"; the destination changes only when the user saves.
#pragma once

namespace tolvane {
class Program;
}

namespace tolvane::morph {

void CopyToDestClick(Program& program);
void CopyToDestRightClick(Program& program);

}  // namespace tolvane::morph
