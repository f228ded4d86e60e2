// The external file inventory: every line of a figure that mentions a picture or a
// geometry file, as it stands, in the file's order, with a line repeated only where it
// is not the same as the one before. It is the list the install walks.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace tolvane {
class Program;
}

namespace tolvane::install {

// How many of the known extensions (".obj", ".bmp", ".png", ".gif", ".bum", ".tif",
// ".jpg", ".pict") the line holds, in any case; a line is listed once for each.
int knownExtensionCount(std::string_view line);

// The inventory of a figure file: its mentions, neighbours that are equal made one.
std::vector<std::string> externalFileLines(const std::filesystem::path& figure);

// Repairs the line ends of the CR2, fills ListboxListCR2Files and shows the three
// install pictures, with the note when nothing is listed.
void ListCR2Files(Program& program, std::string cr2);

// PicturePrintCR2Files: the list on the printer under its heading.
void PrintCR2Files(Program& program);

}  // namespace tolvane::install
