// The skeleton copies of a figure: the master CR2 (actors, channels and joint data of
// a stock figure or of the open file, without its materials and, for "Remove FBM's",
// without its value parameters and morph targets) and the null figure (the hierarchy
// of the open file with every figure number made 1 and the geometry references gone).
#pragma once

#include <string>

namespace tolvane {
class Program;
}

namespace tolvane::library {

// The master entries by number: 1-5 the stock figures below the library root, 6 the
// open file ("Standard Master"), 7 the open file without its full-body morphs.
void MakeMasterCR2(Program& program, int number);

// menuNullFig: the null figure of the open file, written as PLoc + "NullFig.cr2".
void CreateNullFigure(Program& program);

}  // namespace tolvane::library
