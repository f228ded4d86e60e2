// The morph target export: a right-button release on a morph line of ListChannels
// applies the morph's deltas to the body part's vertices of the main OBJ and writes
// the whole mesh as "\NewMor.obj" in the Work folder, through the delta list
// "\Extract.obj". Numbers with an exponent are expanded to plain decimals first.
#pragma once

#include <string>
#include <string_view>

namespace tolvane {
class Program;
struct EventArgs;
}  // namespace tolvane

namespace tolvane::morph {

void ExportMorphTarget(Program& program);

// A number's text as a plain decimal: lower case, and where it holds "e" the
// mantissa's point moved by the exponent ("1.5e-005" gives "0.000015"); a text
// without an exponent stays as it is.
std::string plainDecimal(std::string_view number);

}  // namespace tolvane::morph
