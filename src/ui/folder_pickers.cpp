#include "ui/folder_pickers.h"

#include <algorithm>
#include <fstream>
#include <sstream>
#include <system_error>

#include "text/figure_text.h"

namespace tolvane::ui {

namespace fs = std::filesystem;

std::vector<std::string> driveList(const std::string& preferred) {
  std::vector<std::string> drives;
  if (!preferred.empty()) drives.push_back(preferred);
  auto add = [&drives](const std::string& d) {
    if (std::find(drives.begin(), drives.end(), d) == drives.end()) drives.push_back(d);
  };
  add("/");
  std::ifstream mounts("/proc/mounts");
  std::string line;
  while (std::getline(mounts, line)) {
    std::istringstream fields(line);
    std::string device, point;
    fields >> device >> point;
    // Real file systems only: a device path, not proc, sysfs or the like.
    if (device.rfind("/dev/", 0) == 0 && !point.empty()) add(point);
  }
  return drives;
}

void showFolder(ComboBox& dir, const fs::path& folder) {
  std::vector<std::string> names;
  std::error_code ec;
  for (fs::directory_iterator it(folder, ec), end; !ec && it != end; it.increment(ec)) {
    std::error_code kind;
    if (it->is_directory(kind)) names.push_back(it->path().filename().string());
  }
  std::sort(names.begin(), names.end());
  dir.clear();
  dir.addItem(folder.string());
  if (folder.has_parent_path() && folder.parent_path() != folder) dir.addItem(folder.parent_path().string());
  for (const auto& n : names) dir.addItem((folder / n).string());
  dir.setText(folder.string());
}

bool matchesPattern(const std::string& name, const std::string& pattern) {
  if (pattern.empty() || pattern == "*" || pattern == "*.*") return true;
  if (pattern.rfind("*.", 0) != 0) return name == pattern;
  std::string ext = text::LCase(pattern.substr(1));
  return name.size() >= ext.size() && text::LCase(name.substr(name.size() - ext.size())) == ext;
}

void showFiles(ListBox& files, const fs::path& folder, const std::string& pattern) {
  std::vector<std::string> names;
  std::error_code ec;
  for (fs::directory_iterator it(folder, ec), end; !ec && it != end; it.increment(ec)) {
    std::error_code kind;
    if (!it->is_directory(kind) && matchesPattern(it->path().filename().string(), pattern))
      names.push_back(it->path().filename().string());
  }
  std::sort(names.begin(), names.end());
  files.setItems(std::move(names));
}

}  // namespace tolvane::ui
