#include "fuzz_files.h"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <system_error>

namespace tolvane::fuzz {

namespace {

std::filesystem::path baseFolder() {
  std::error_code ec;
  // A memory file system keeps the many small writes off the disk.
  if (std::filesystem::is_directory("/dev/shm", ec) && ::access("/dev/shm", W_OK) == 0) return "/dev/shm";
  return std::filesystem::temp_directory_path();
}

struct Scratch {
  Scratch() {
    std::string pattern = (baseFolder() / "tolvane-fuzz-XXXXXX").string();
    if (::mkdtemp(pattern.data()) == nullptr) fail("cannot make a scratch folder in " + pattern);
    path = pattern;
  }
  ~Scratch() {
    std::error_code ec;
    emptyFolder(path);
    std::filesystem::remove(path, ec);
  }
  std::filesystem::path path;
};

}  // namespace

const std::filesystem::path& scratchFolder() {
  static Scratch scratch;
  return scratch.path;
}

std::filesystem::path writeInput(std::string_view name, std::string_view bytes,
                                 const std::filesystem::path& folder) {
  std::filesystem::path file = folder / std::string(name);
  std::ofstream out(file, std::ios::binary | std::ios::trunc);
  out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  out.close();
  if (!out) fail("cannot write the input to " + file.string());
  return file;
}

std::string_view asText(const std::uint8_t* data, std::size_t size) {
  return size == 0 ? std::string_view() : std::string_view(reinterpret_cast<const char*>(data), size);
}

void emptyFolder(const std::filesystem::path& folder) {
  std::error_code ec;
  for (auto it = std::filesystem::recursive_directory_iterator(folder, ec);
       !ec && it != std::filesystem::recursive_directory_iterator(); it.increment(ec))
    std::filesystem::permissions(it->path(), std::filesystem::perms::owner_all,
                                 std::filesystem::perm_options::add, ec);
  for (auto it = std::filesystem::directory_iterator(folder, ec);
       !ec && it != std::filesystem::directory_iterator(); it.increment(ec))
    std::filesystem::remove_all(it->path(), ec);
}

void fail(const std::string& what) {
  std::fprintf(stderr, "\n== fuzz finding: %s\n", what.c_str());
  std::fflush(stderr);
  std::abort();
}

}  // namespace tolvane::fuzz
