// Fuzzes the channel viewer's listing as a user reaches it: the body parts of the
// fuzzed file are listed, and the channels of each of the first parts are listed as a
// click on that entry and on the channel picture lists them. Besides the sanitizers it
// checks the listing's shape: groups of two lines per morph and seven per EMC group,
// each opening with an empty line.
#include "morph/channel_viewer.h"

#include <cstdint>
#include <string>
#include <vector>

#include "fuzz_files.h"
#include "text/list_scans.h"
#include "text/runtime_error.h"

namespace tolvane::fuzz {
namespace {

void checkGroups(const std::vector<std::string>& lines) {
  for (std::size_t i = 0; i < lines.size();) {
    check(lines[i].empty(), "a channel group that does not open with an empty line");
    std::size_t size = i + 1 < lines.size() && lines[i + 1] == "\tEMC Channel" ? 7 : 2;
    check(i + size <= lines.size(), "a channel group cut short");
    i += size;
  }
}

void run(std::string_view body) {
  std::filesystem::path file = writeInput("figure.cr2", body);
  std::vector<std::string> entries;
  try {
    text::FigureScanner in(file);
    entries = text::scanBodyParts(in, "cr2");
  } catch (const text::RuntimeError&) {
  }
  for (std::size_t i = 0; i < entries.size() && i < 4; ++i) {
    try {
      checkGroups(morph::ScanPartChannels(file.string(), morph::selectedPartOf(entries[i])));
    } catch (const text::RuntimeError&) {
    }
  }
}

}  // namespace
}  // namespace tolvane::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  tolvane::fuzz::run(tolvane::fuzz::asText(data, size));
  return 0;
}
