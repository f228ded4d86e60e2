// Fuzzes File, Open: the fuzzed file goes through the event table as a user's open
// does (the read-only question, the line-ending repair, the leading-blank fix, the five
// scans and the lists of the figure page), with services that answer every prompt.
// Input: a byte that picks the file's kind and whether the user agrees or refuses, then
// the file. Besides the sanitizers it checks what Open promises the user's file: it is
// still there, and a repair keeps the original bytes as the backup it names.
#include <cstdint>
#include <fstream>
#include <iterator>
#include <string>

#include "app/app.h"
#include "fuzz_files.h"
#include "fuzz_program.h"
#include "program/events.h"

namespace tolvane::fuzz {
namespace {

const char* const kKinds[] = {"cr2", "pz2", "fc2", "pz3", "hr2", "pp2"};

std::string bytesOf(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

// The backup a repair names in its closing message, if one was made.
std::string backupNamed(const std::vector<ui::Message>& messages) {
  const std::string said = " converted, original saved as ";
  for (const ui::Message& m : messages) {
    std::size_t at = m.text.find(said);
    std::size_t end = m.text.rfind("  Tolvane will now continue.");
    if (at != std::string::npos && end != std::string::npos && end > at)
      return m.text.substr(at + said.size(), end - at - said.size());
  }
  return {};
}

void run(std::uint8_t choice, std::string_view body) {
  const std::filesystem::path& folder = scratchFolder();
  emptyFolder(folder);
  FuzzProgram p(folder);
  app::wire(p.program);
  p.services.agree = (choice / 6) % 2 == 0;
  std::filesystem::path file = writeInput(std::string("figure.") + kKinds[choice % 6], body, p.files());
  p.services.openFile = file.string();
  check(fireEvent(p.program, "Opening", "MenuFileOpen", EventKind::Click), "File, Open has no handler");

  check(std::filesystem::is_regular_file(file), "the opened file is gone");
  for (const ui::Message& m : p.services.messages)
    check(m.text.rfind("Run-time error '7':", 0) != 0, "Open ran out of memory");
  std::string backup = backupNamed(p.services.messages);
  if (!backup.empty()) check(bytesOf(backup) == body, "the repair's backup does not hold the original file");
}

}  // namespace
}  // namespace tolvane::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tolvane::fuzz;
  run(size > 0 ? data[0] : 0, asText(data, size).substr(std::min<std::size_t>(size, 1)));
  return 0;
}
