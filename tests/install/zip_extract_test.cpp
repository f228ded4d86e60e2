#include "install/zip_extract.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>

#include "test_files.h"
#include "zip_builder.h"

namespace tolvane::test {
namespace {

using install::extractZip;
using install::ZipLimits;
using Kind = ZipEntry::Kind;

std::vector<std::string> folderNames(const std::filesystem::path& folder) {
  std::vector<std::string> names;
  for (const auto& e : std::filesystem::recursive_directory_iterator(folder))
    names.push_back(std::filesystem::relative(e.path(), folder).string());
  std::sort(names.begin(), names.end());
  return names;
}

TEST(ZipExtract, UnpacksWithItsFoldersAndRefusesEveryUnsafeZipBeforeWritingAByte) {
  const std::string zeros(4 << 20, '\0');
  struct Case {
    const char* what;
    std::vector<ZipEntry> entries;
    ZipLimits limits;
    std::string refusal;                // empty: unpacked
    std::vector<std::string> unpacked;  // the install folder's files afterwards, besides "old.txt"
  };
  ZipLimits small;
  small.maxEntryBytes = 1 << 20;
  const Case cases[] = {
      {"folders are kept",
       {{"fig/", "", Kind::Folder}, {"fig/fig.cr2", "cr2"}, {"Runtime/textures/a.jpg", "jpg"}, {"b.bmp", "bmp"}},
       {},
       "",
       {"Runtime", "Runtime/textures", "Runtime/textures/a.jpg", "b.bmp", "fig", "fig/fig.cr2"}},
      {"a file in the way of a folder", {{"new/a.jpg", "jpg"}, {"old.txt/b.jpg", "jpg"}}, {},
       "the entry \"old.txt/b.jpg\" leads through \"old.txt\"", {}},
      {"a parent folder", {{"ok.txt", "x"}, {"../evil.txt", "evil"}}, {}, "the entry \"../evil.txt\" leads out", {}},
      {"a parent folder inside", {{"a/../../evil.txt", "evil"}}, {}, "the entry \"a/../../evil.txt\" leads out", {}},
      {"an absolute path", {{"/tmp/evil.txt", "evil"}}, {}, "the entry \"/tmp/evil.txt\" has an absolute", {}},
      {"a drive path", {{"C:/evil.txt", "evil"}}, {}, "the entry \"C:/evil.txt\" has an absolute", {}},
      {"a symbolic link", {{"ok.txt", "x"}, {"link.cr2", "/etc/passwd", Kind::Symlink}}, {},
       "the entry \"link.cr2\" is a link", {}},
      {"an encrypted entry", {{"fig.cr2", "secret text", Kind::Encrypted}}, {}, "the entry \"fig.cr2\" is encrypted",
       {}},
      {"a stated size past the limit", {{"ok.txt", "x"}, {"big.bmp", zeros}}, small,
       "the entry \"big.bmp\" would unpack to more than 1 MB", {}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    TempDir dir;
    auto folder = dir / "cr2install";
    std::filesystem::create_directories(folder);
    writeFile(folder / "old.txt", "old");
    writeZip(dir / "in.zip", c.entries);
    install::ZipResult result = extractZip(dir / "in.zip", folder, c.limits);
    EXPECT_EQ(result.refusal.substr(0, c.refusal.size()), c.refusal);
    EXPECT_EQ(result.refusal.empty(), c.refusal.empty()) << result.refusal;
    std::vector<std::string> expected = c.unpacked;
    expected.push_back("old.txt");
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(folderNames(folder), expected);
    EXPECT_EQ(readFile(folder / "old.txt"), "old");
    EXPECT_FALSE(std::filesystem::exists(dir / "evil.txt"));
  }
}

TEST(ZipExtract, AnEntryThatGrowsFarPastItsPackedSizeIsStoppedAndRemoved) {
  // Zeros pack about a thousand to one: a ratio of ten is far exceeded.
  TempDir dir;
  auto folder = dir / "cr2install";
  std::filesystem::create_directories(folder);
  writeZip(dir / "bomb.zip", {{"first.txt", "kept until the bomb"}, {"bomb.bmp", std::string(8 << 20, '\0')}});
  ZipLimits limits;
  limits.maxRatio = 10;
  limits.ratioFloor = 1 << 20;
  install::ZipResult result = extractZip(dir / "bomb.zip", folder, limits);
  EXPECT_EQ(result.refusal, "the entry \"bomb.bmp\" unpacks to far more than it holds (a zip bomb)");
  EXPECT_TRUE(folderNames(folder).empty()) << "the files of the refused job are removed again";
}

TEST(ZipExtract, DamagedEmptyAndMissingZips) {
  TempDir dir;
  auto folder = dir / "cr2install";
  std::filesystem::create_directories(folder);
  writeFile(dir / "junk.zip", std::string(5000, 'x'));
  EXPECT_EQ(extractZip(dir / "junk.zip", folder).refusal.substr(0, 35), "the zip file is damaged or is no zi");
  // A zip cut short after its first entry's header.
  writeZip(dir / "whole.zip", {{"fig.cr2", std::string(100000, 'a') + "tail"}});
  std::string whole = readFile(dir / "whole.zip");
  writeFile(dir / "cut.zip", whole.substr(0, whole.size() / 2));
  EXPECT_FALSE(extractZip(dir / "cut.zip", folder).refusal.empty());
  writeEmptyZip(dir / "empty.zip");
  install::ZipResult empty = extractZip(dir / "empty.zip", folder);
  EXPECT_EQ(empty.refusal, "");
  EXPECT_TRUE(empty.files.empty());
  EXPECT_EQ(runTimeErrorOf([&] { extractZip(dir / "missing.zip", folder); }), 53);
  EXPECT_TRUE(folderNames(folder).empty());
}

TEST(ZipExtract, AReadOnlyFolderIsARunTimeErrorAndLeavesNothing) {
  if (::geteuid() == 0) GTEST_SKIP() << "root writes into read-only folders";
  TempDir dir;
  auto folder = dir / "cr2install";
  std::filesystem::create_directories(folder);
  writeZip(dir / "in.zip", {{"fig.cr2", "cr2"}});
  std::filesystem::permissions(folder, std::filesystem::perms::owner_read | std::filesystem::perms::owner_exec);
  EXPECT_NE(runTimeErrorOf([&] { extractZip(dir / "in.zip", folder); }), 0);
  std::filesystem::permissions(folder, std::filesystem::perms::owner_all);
  EXPECT_TRUE(folderNames(folder).empty());
}

}  // namespace
}  // namespace tolvane::test
