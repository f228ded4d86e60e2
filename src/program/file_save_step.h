// The save step that ends most tools: a save dialog in the current folder with a
// proposed name; a cancel leaves the scratch file where it is; a chosen name equal to
// the current file deletes that file first, any other file of the chosen name goes too,
// and the scratch file takes the chosen name.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace tolvane {
class Program;

// Returns the chosen name, or nothing when the user cancelled.
std::optional<std::string> FileSaveStep(Program& program, const std::filesystem::path& scratch,
                                        const std::string& proposedName, const std::string& currentFile);
}  // namespace tolvane
