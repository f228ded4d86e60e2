#include "program/data_folder.h"

#include <fcntl.h>
#include <unistd.h>

#include <string>
#include <system_error>

namespace tolvane {

namespace {
// The installed folder, when there is one beside the program.
std::filesystem::path installed(const std::filesystem::path& programFolder) {
  std::error_code ec;
  std::filesystem::path folder = (programFolder / TOLVANE_INSTALLED_DATA).lexically_normal();
  return std::filesystem::is_directory(folder, ec) ? folder : std::filesystem::path();
}
// Whether a file can be made in `folder`: the one test that holds for root as well as
// for a user, and on file systems mounted read-only.
bool canWriteIn(const std::filesystem::path& folder) {
  std::string probe = (folder / ".tolvane-probe-XXXXXX").string();
  int fd = ::mkostemp(probe.data(), O_CLOEXEC);
  if (fd < 0) return false;
  ::close(fd);
  ::unlink(probe.c_str());
  return true;
}
}  // namespace

bool isInstalled(const std::filesystem::path& programFolder) { return !installed(programFolder).empty(); }

std::filesystem::path chooseWorkFolder(const std::filesystem::path& chosen,
                                       const std::filesystem::path& programFolder,
                                       const std::filesystem::path& userData) {
  if (!chosen.empty()) return chosen;
  if (!isInstalled(programFolder) && canWriteIn(programFolder)) return programFolder;
  return userData;
}

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
