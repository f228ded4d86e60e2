// The Phi file: a small text file that names a figure's geometry, its standard body
// parts with their depth in the hierarchy and their rotation order, and its inverse
// kinematic chains. This is the one place that knows its lines: the creator writes them,
// the viewer reads and rewrites them, and the part tree and the mesh tools share its
// part depths and the group filter that writes Lop.txt.
#pragma once

#include <filesystem>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace tolvane::text {
class LineWriter;
}

namespace tolvane::text::phi {

// The corrected rotation orders, with the comments that mark them.
inline constexpr const char* kSpineRepair = "yzx  #error in the rotation order in the CR2";
inline constexpr const char* kLimbRepair = "xyz  #error in rotation order in CR2";

// The head: the CR2's path, the geometry reference, a line holding one blank.
std::string headLine(std::string_view cr2Path);
std::string objLine(std::string_view objReference);
inline constexpr const char* kBlankLine = " ";
std::string figureLine(char number);
std::string hipLine(std::string_view order);
// depth - 1 tabs, the depth with a leading blank, a blank, the name, a blank, the order.
std::string bodyHead(int depth, std::string_view name);
inline std::string bodyLine(int depth, std::string_view name, std::string_view order) {
  return bodyHead(depth, name) + std::string(order);
}
// "ikChain", two tabs, the name and a blank, each link and a blank, the goal.
std::string chainLine(std::string_view name, const std::vector<std::string>& links, std::string_view goal);

// The fixed body part table: each part in the order it is written, and the depth the
// running depth is set to before the part is searched (0: no reset).
struct BodyPart {
  const char* name;
  int reset;
};
const std::vector<BodyPart>& bodyParts();

// The part tree's depth of a part by name, or 0 for a name not in the tree's table.
int treeDepth(std::string_view name);
// An entry of the part tree: 2 x depth blanks, the depth, "fig", a blank, the name.
std::string treeEntry(int depth, std::string_view name);
// The depth and name read back from an entry (trimmed; the name behind "fig").
void parseTreeEntry(std::string_view entry, int& depth, std::string& name);

// A Phi file's lines by raw read. A file that is not text (a NUL byte, a line longer
// than any Phi file has) is run-time error 13; a missing file 53.
std::vector<std::string> readLines(const std::filesystem::path& path);
// Writes the lines to `scratch` in the Work folder and puts it in the place of `target`.
void writeLines(const std::filesystem::path& scratch, const std::filesystem::path& target,
                const std::vector<std::string>& lines);

// Copies OBJ text without the named groups, as Lop.txt holds it: one leading blank of a
// line goes; a line beginning with "g" whose text from its third character is a name of
// the list starts a dropped stretch that runs to the next group line, which is tested in
// the same way. Every other line is written. The comparison is exact.
void writeWithoutGroups(const std::filesystem::path& obj, LineWriter& out, const std::set<std::string>& names);

}  // namespace tolvane::text::phi
