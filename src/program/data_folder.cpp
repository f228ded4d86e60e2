#include "program/data_folder.h"

#include <system_error>

namespace tolvane {

namespace {
// The installed folder, when there is one beside the program.
std::filesystem::path installed(const std::filesystem::path& programFolder) {
  std::error_code ec;
  std::filesystem::path folder = (programFolder / TOLVANE_INSTALLED_DATA).lexically_normal();
  return std::filesystem::is_directory(folder, ec) ? folder : std::filesystem::path();
}
}  // namespace

std::filesystem::path runtimeDataFolder(const std::filesystem::path& programFolder) {
  std::filesystem::path folder = installed(programFolder);
  return folder.empty() ? std::filesystem::path(TOLVANE_SOURCE_DATA) : folder;
}

std::filesystem::path samplesFolder(const std::filesystem::path& programFolder) {
  std::filesystem::path folder = installed(programFolder);
  return folder.empty() ? std::filesystem::path(TOLVANE_SOURCE_SAMPLES) : folder / "samples";
}

std::filesystem::path runningProgramFolder() {
  std::error_code ec;
  std::filesystem::path exe = std::filesystem::read_symlink("/proc/self/exe", ec);
  return ec ? std::filesystem::current_path() : exe.parent_path();
}

}  // namespace tolvane
