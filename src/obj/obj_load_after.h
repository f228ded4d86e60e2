// What follows the load's pass: the bound labels, the stretched copy of a model lower
// than 0.1 (Param.obj), the end of the load, and a morph's points.
#pragma once

#include <filesystem>
#include <string>

namespace tolvane {
class Program;
}

namespace tolvane::obj {

// After the pass. `fromCopy` tells a load of Param.obj, which is not stretched again.
void finishLoad(Program& program, bool fromCopy);

// Writes the stretched copy of `source` to `copy`: each vertex's y gets its own factor
// from the zeros behind its point (0.0012 and 0.012 both become .12).
void writeStretchedCopy(const std::filesystem::path& source, const std::filesystem::path& copy);

// The run-time text of a number with an "E" expanded as the morph view reads it back:
// "0.", as many zeros as the exponent says, the mantissa's digits, cut to 8 characters.
std::string expandExponent(const std::string& text);

}  // namespace tolvane::obj
