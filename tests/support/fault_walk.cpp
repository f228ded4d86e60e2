#include "fault_walk.h"

namespace tolvane::test {

FolderShot snapshot(const std::filesystem::path& folder) {
  FolderShot shot;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder))
    if (entry.is_regular_file())
      shot[std::filesystem::relative(entry.path(), folder).string()] = readFile(entry.path());
  return shot;
}

void restore(const std::filesystem::path& folder, const FolderShot& shot) {
  // Each file is written anew: one left as a link to another (a backup) must not carry
  // the write over to it.
  for (const auto& [name, bytes] : snapshot(folder)) std::filesystem::remove(folder / name);
  for (const auto& [name, bytes] : shot) writeFile(folder / name, bytes);
}

std::set<std::string> shownMessages(const ui::ScriptedServices& services) {
  std::set<std::string> shown;
  for (const auto& m : services.messages()) shown.insert(m.title + "|" + m.text);
  return shown;
}

void checkFaultedRun(const FolderShot& before, const FolderShot& after, const FolderShot& clean, bool told,
                     std::uint64_t n) {
  for (const auto& [name, bytes] : after) {
    auto old = before.find(name);
    auto done = clean.find(name);
    bool asBefore = old != before.end() && old->second == bytes;
    bool asDone = done != clean.end() && done->second == bytes;
    EXPECT_TRUE(asBefore || asDone) << name << " is neither as it was nor as the step leaves it (fault " << n
                                    << ")";
  }
  for (const auto& [name, bytes] : before)
    EXPECT_TRUE(after.count(name) || !clean.count(name)) << name << " went missing (fault " << n << ")";
  EXPECT_TRUE(told || after == clean)
      << "a failure nobody was told of left the folder otherwise (fault " << n << ")";
}

}  // namespace tolvane::test
