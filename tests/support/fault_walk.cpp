#include "fault_walk.h"

namespace tolvane::test {

FolderShot snapshot(const std::filesystem::path& folder) {
  FolderShot shot;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder))
    if (entry.is_regular_file())
      shot[std::filesystem::relative(entry.path(), folder).string()] = readFile(entry.path());
  return shot;
}

void checkFaultedRun(const FolderShot& before, const FolderShot& after, const FolderShot& clean, bool reported,
                     std::uint64_t n) {
  for (const auto& [name, bytes] : after) {
    auto old = before.find(name);
    auto done = clean.find(name);
    bool asBefore = old != before.end() && old->second == bytes;
    bool asDone = done != clean.end() && done->second == bytes;
    EXPECT_TRUE(asBefore || asDone) << name << " is neither as it was nor as the step leaves it (fault " << n << ")";
  }
  for (const auto& [name, bytes] : before)
    if (!after.count(name)) EXPECT_TRUE(!clean.count(name)) << name << " went missing (fault " << n << ")";
  if (!reported)
    EXPECT_TRUE(after == clean || after == before)
        << "a failure nobody was told of left the folder in between (fault " << n << ")";
}

}  // namespace tolvane::test
