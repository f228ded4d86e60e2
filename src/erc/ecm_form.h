// The builder's dialog and form: PictureEMC shows DialogERC, whose Ready opens FormECM
// on the destination. The user double-clicks the slave channel, the controlling figure,
// the master channel and the controlling body part, then enters the ratio; the joint-
// controlled joint computes its ratio from the dials' limits and builds at once.
#pragma once

#include <string>
#include <vector>

namespace tolvane {
class Program;
}

namespace tolvane::erc {

void PictureEMCClick(Program& program);
void PictureEMCRightClick(Program& program);
void DialogERCDone(Program& program);
void DialogERCCancel(Program& program);
// FormECM's LabelDone and LabelCancel: back to DialogERC.
void FormECMClose(Program& program);

void ListControlledMorphDblClick(Program& program);
void TextPBM1Enter(Program& program);
void ListConFigECMDblClick(Program& program);
void ListActorsECMDblClick(Program& program);
void TextPBMRatioEnter(Program& program);

// The ratio of a joint-controlled joint from the ListMinMax rows: the slave's range
// over the master's, where each row that holds a key gives the low value and the row
// behind it the high one, the later rows winning, and a zero counting as 1.
double jointRatio(const std::vector<std::string>& rows, const std::string& controllingKey,
                  const std::string& controlledKey);

}  // namespace tolvane::erc
