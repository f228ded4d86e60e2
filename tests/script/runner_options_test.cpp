// The runner's command line, read by the same rules as the desktop program's: --help
// and --version answer and stop, a value follows its option or an equals sign, "--"
// ends the options, and anything else is refused with the usage.
#include <gtest/gtest.h>
#include <unistd.h>

#include <sstream>

#include "program/data_folder.h"
#include "script/script_runner.h"
#include "test_support.h"

namespace tolvane::script {
namespace {

TEST(RunnerOptions, EachFormOfTheCommandLine) {
  test::TempDir dir;
  // A script that checks the variables and the current directory it was given.
  test::writeFile(dir / "s.tvs", "check-caption LabelFileName \"\"\n");
  test::writeFile(dir / "-odd.tvs", "check-caption LabelFileName \"\"\n");
  const std::string s = (dir / "s.tvs").string();
  struct Case {
    std::vector<std::string> args;
    int code;
    const char* out;  // a piece of standard output
    const char* err;  // a piece of standard error
  };
  const Case cases[] = {
      {{"--help"}, 0, "usage: tolvane-script [--work DIR]", ""},
      {{"-h", s}, 0, "-v, --version", ""},
      {{"--version"}, 0, "tolvane-script ", ""},
      {{s}, 0, "1 passed, 0 failed", ""},
      {{"--work=" + (dir / "w").string(), "--var=X=1", s}, 0, "1 passed", ""},
      {{"--cwd", dir.path().string(), "--", (dir / "-odd.tvs").string()}, 0, "1 passed", ""},
      {{}, 3, "", "usage: tolvane-script"},
      {{"--frobnicate", s}, 3, "", "unknown option --frobnicate"},
      {{"--work"}, 3, "", "--work needs a value"},
      {{"--var", "X", s}, 3, "", "--var takes NAME=VALUE"},
      {{s, s}, 3, "", "one script at a time"},
  };
  std::filesystem::create_directories(dir / "w");
  for (const Case& c : cases) {
    std::string shown;
    for (const std::string& a : c.args) shown += a + " ";
    SCOPED_TRACE(shown);
    std::ostringstream out, err;
    EXPECT_EQ(runnerMain(c.args, out, err), c.code) << err.str();
    EXPECT_NE(out.str().find(c.out), std::string::npos) << out.str();
    EXPECT_NE(err.str().find(c.err), std::string::npos) << err.str();
  }
}

// The run-time files are found beside an installed program, else in the source tree.
TEST(RuntimeFiles, InstalledOrInTheBuildFolder) {
  test::TempDir dir;
  const std::filesystem::path bin = dir / "usr/bin";
  std::filesystem::create_directories(bin);
  EXPECT_EQ(runtimeDataFolder(bin), std::filesystem::path(TOLVANE_SAMPLES).parent_path() / "data");
  EXPECT_EQ(samplesFolder(bin), std::filesystem::path(TOLVANE_SAMPLES));
  EXPECT_TRUE(std::filesystem::exists(runtimeDataFolder(bin) / "Quillmere3.wav"));

  std::filesystem::create_directories(dir / "usr/share/tolvane/samples");
  EXPECT_EQ(runtimeDataFolder(bin), dir / "usr/share/tolvane");
  EXPECT_EQ(samplesFolder(bin), dir / "usr/share/tolvane/samples");
}

// The Work folder: the override, else a portable copy's own folder when it can be
// written, else the per-user data folder; an installed program never takes its bin.
TEST(RuntimeFiles, WorkFolderOfAPortableAndAnInstalledProgram) {
  test::TempDir dir;
  const std::filesystem::path portable = dir / "portable", bin = dir / "usr/bin", data = dir / "data";
  for (const auto& f : {portable, bin, dir / "usr/share/tolvane"}) std::filesystem::create_directories(f);
  struct Case {
    const char* name;
    std::filesystem::path chosen, program, expected;
  };
  const Case cases[] = {
      {"override", dir / "mine", bin, dir / "mine"},
      {"portable copy", "", portable, portable},
      {"installed", "", bin, data},
      {"missing folder", "", dir / "gone", data},
  };
  for (const Case& c : cases) EXPECT_EQ(chooseWorkFolder(c.chosen, c.program, data), c.expected) << c.name;
  if (::geteuid() != 0) {  // root writes into any folder
    std::filesystem::permissions(portable,
                                 std::filesystem::perms::owner_read | std::filesystem::perms::owner_exec);
    EXPECT_EQ(chooseWorkFolder("", portable, data), data);
    std::filesystem::permissions(portable, std::filesystem::perms::owner_all);
  }
  EXPECT_TRUE(std::filesystem::is_empty(portable));  // the probe is gone
}

}  // namespace
}  // namespace tolvane::script
