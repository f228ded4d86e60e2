// The channel listing of the destination's morphs and control blocks, and the change of
// one block's control ratio: PictureChangeRatio opens FormListEMCs, a click picks the
// ratio line, Enter in Text1 rewrites that line through "\ChangeRatio.txt".
#pragma once

#include <string>
#include <vector>

namespace tolvane {
class Program;
}

namespace tolvane::erc {

// The listing as FormListEMCs shows it: the list lines, and the ratio table with one
// entry ("line#number") at the index of each ratio line plus one.
struct EmcListing {
  std::vector<std::string> lines;
  std::vector<std::string> ratioTable;
};
EmcListing listEmcs(const std::string& path);

void PictureChangeRatioClick(Program& program);
void PictureChangeRatioRightClick(Program& program);
// Fills FormListEMCs from the file named by its LabelTitle.
void FormListEMCsLoad(Program& program);
void ListEMCsClick(Program& program);
void Text1Enter(Program& program);

}  // namespace tolvane::erc
