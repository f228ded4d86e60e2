// The drive, folder and file pickers of the small tool forms, as plain models: the drive
// is a combo box of mount points, the folder a combo box whose text is the folder's path
// and whose entries are the folders it leads to, the file list a list box of the folder's files
// that match a pattern. The tools fill them through these helpers.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "ui/controls.h"

namespace tolvane::ui {

// The drives of this platform: "/" and the mount points of real file systems, with
// `preferred` first when it is given and not already among them.
std::vector<std::string> driveList(const std::string& preferred = {});

// Sets the folder picker to `folder` and lists, as full paths, the folder itself, its
// parent and its sub-folders (sorted), so that choosing an entry moves there.
void showFolder(ComboBox& dir, const std::filesystem::path& folder);

// Lists the files of `folder` whose names match `pattern` ("*.*", "*.bmp", "*.cr2",
// case-insensitive as the platform's file list matches), sorted.
void showFiles(ListBox& files, const std::filesystem::path& folder, const std::string& pattern);

// Whether `name` matches a pattern of the file lists: "*" and "*.*" match every name,
// "*.ext" a name that ends in ".ext" in any case.
bool matchesPattern(const std::string& name, const std::string& pattern);

}  // namespace tolvane::ui
