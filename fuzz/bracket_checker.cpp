// Fuzzes the Bracket Checker on the fuzzed file as the open file, with services that
// answer every prompt. Besides the sanitizers it checks that the check only reads: the
// file keeps its bytes, at most one message comes, and at most one result picture shows.
#include "workspace/bracket_checker.h"

#include <cstdint>
#include <fstream>
#include <iterator>
#include <string>

#include "fuzz_files.h"
#include "fuzz_program.h"
#include "program/events.h"

namespace tolvane::fuzz {
namespace {

void run(std::string_view body) {
  const std::filesystem::path& folder = scratchFolder();
  FuzzProgram p(folder);
  std::filesystem::path file = writeInput("figure.cr2", body, p.files());
  ui::Opening& f = p.program.opening;
  f.OpenFilePath = file.string();
  runGuarded(p.program, [&] { CheckBrackets(p.program); });

  std::ifstream in(file, std::ios::binary);
  check(std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()) == body,
        "the Bracket Checker changed the file");
  check(p.services.messages.size() <= 1, "more than one message");
  int shown = f.PictureBrktsOK.visible() + f.PictureBrktLeft.visible() + f.PictureBrktRight.visible();
  check(shown <= 1, "more than one result picture");
  check(shown == 0 || p.services.messages.empty(), "a result picture after a message");
  check(f.MenuFile.enabled() == (shown == 0), "the File menu does not wait for the picture");
}

}  // namespace
}  // namespace tolvane::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  tolvane::fuzz::run(tolvane::fuzz::asText(data, size));
  return 0;
}
