// The main of a fuzz target built without libFuzzer: runs the target's entry once on
// every file named, and on every file inside every folder named, in name order. CTest
// replays each corpus this way, so an input that once found a fault stays a test.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

std::vector<std::filesystem::path> inputsOf(const std::filesystem::path& given) {
  std::vector<std::filesystem::path> files;
  if (std::filesystem::is_directory(given)) {
    for (const auto& entry : std::filesystem::recursive_directory_iterator(given))
      if (entry.is_regular_file()) files.push_back(entry.path());
    std::sort(files.begin(), files.end());
  } else {
    files.push_back(given);
  }
  return files;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) {
    std::fprintf(stderr, "usage: %s FILE_OR_FOLDER...\n", argv[0]);
    return 2;
  }
  std::size_t count = 0;
  for (int i = 1; i < argc; ++i) {
    for (const auto& file : inputsOf(argv[i])) {
      std::ifstream in(file, std::ios::binary);
      if (!in) {
        std::fprintf(stderr, "cannot read %s\n", file.c_str());
        return 2;
      }
      std::vector<char> bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
      std::fprintf(stderr, "%s\n", file.c_str());
      LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
      ++count;
    }
  }
  std::printf("%zu inputs replayed\n", count);
  // An empty corpus is a setup fault, not a pass.
  return count > 0 ? 0 : 1;
}
