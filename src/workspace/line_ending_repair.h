// Line-ending repair: a file without CR LF in its first 200 bytes is rewritten in
// 2,048-byte blocks with CR LF line ends, keeping the original under a backup name
// (and every older backup of that name under a numbered one).
// The main form asks with OK/Cancel; the Manual Editor's twin asks Yes/No.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>

#include "text/runtime_error.h"

namespace tolvane {
class Program;

// The main form's repair. An empty `path` is taken from LabelFileName's text. Sets
// OpenRefused to -1 when the user cancels.
void RepairLineEndings(Program& program, std::string& path);

// The Manual Editor's repair; returns true when the file was converted.
bool RepairLineEndingsEditor(Program& program, const std::string& path);

namespace repair {
// True when the first 200 bytes hold a CR LF pair.
bool headHasCrLf(const std::filesystem::path& path);
// "C:\x\fig.cr2" -> "C:\x\fig.new"; a path without a dot gives "new".
std::string RepairTempName(const std::string& path);
// "C:\x\fig.cr2" -> "C:\x\figCR2.bak"; a path without a dot is run-time error 5.
std::string BackupName(const std::string& path);
// Rewrites `source` into `scratch` (opened for appending) with the block rules, in
// time linear in the file's size; a line longer than `longestLine` bytes stops it with
// run-time error 5 and a message that says so.
void convertLineEndings(const std::filesystem::path& source, const std::filesystem::path& scratch,
                        std::size_t longestLine = text::kLongestLine);
// Moves the backup that is in the way to the first free numbered name beside it
// ("figCR2.bak" -> "figCR2.1.bak"); returns that name.
std::filesystem::path keepOlderBackup(const std::filesystem::path& backup);
}  // namespace repair
}  // namespace tolvane
