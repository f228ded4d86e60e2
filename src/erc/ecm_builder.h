// The builders of the controlled morph: each copies the destination through
// "\EMC.tmp" up to the controlled channel's interpStyleLocked line, writes the
// valueOpDeltaAdd block (behind an existing one, or in its place, as the family does),
// copies the rest and ends in the save dialog.
#pragma once

#include <string>
#include <vector>

#include "ui/form_erc.h"

namespace tolvane {
class Program;
}

namespace tolvane::erc {

enum class Family { PBM, Conforming, MorphKeep, Joint, Translation };
Family familyOf(ui::ErcKind kind);

// The five lines of the block the builder writes for the form's current fields.
std::vector<std::string> controlBlock(const ui::FormECM& f, ui::ErcKind kind);

// Runs the builder of the kind that FormECM shows.
void RunBuilder(Program& program);

}  // namespace tolvane::erc
