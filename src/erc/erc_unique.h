// Gives the control blocks of a figure one new figure name: every line that holds
// "Figure " is cut there and ends in the name typed into TextERCUnique. The result is
// "Unique." plus the file's kind in the work folder; the file that was read stays.
#pragma once

namespace tolvane {
class Program;
}

namespace tolvane::erc {

// menuERCUnique: refuses other kinds, warns, and shows TextERCUnique.
void ERCUniqueMenu(Program& program);
// Enter in TextERCUnique: writes the copy and says where it is.
void TextERCUniqueEnter(Program& program);

}  // namespace tolvane::erc
