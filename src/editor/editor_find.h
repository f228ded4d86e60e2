// Find in the Manual Editor: the find and replace modes, Enter in ComboFind, and F3,
// which finds again and, in replace mode, offers to replace what it found. Every find
// starts one character behind the active pane's selection start and never wraps.
#pragma once

#include <cstdint>

#include "editor/editor_panes.h"

namespace tolvane {
class Program;
}

namespace tolvane::editor {

void PictureFindClick(Program& program);
void PictureFindRightClick(Program& program);
void PictureReplaceClick(Program& program);
void PictureReplaceRightClick(Program& program);
void ComboFindEnter(Program& program);
// F3 in a pane or in ComboFind.
void FindAgain(Program& program);

// The option value the check boxes give: 2 whole word, 4 match case, 6 both.
int findOptions(const ui::FormEditor& form);
// Finds ComboFind's text in the pane from its selection start plus 1 and keeps the
// result in FoundPosition.
std::int64_t runFind(ui::FormEditor& form, ui::TextPane& pane, int options);

}  // namespace tolvane::editor
