#include "script/script_runner.h"

#include <gtest/gtest.h>

#include <sstream>

#include "script/script_line.h"
#include "test_support.h"

namespace tolvane::script {
namespace {

using test::TempDir;
using test::writeFile;

struct RunResult {
  int code;
  std::string out, err;
};

RunResult run(const TempDir& dir, const std::string& script) {
  writeFile(dir / "s.tvs", script);
  std::filesystem::create_directories(dir / "work");
  RunnerOptions options;
  options.workDir = dir / "work";
  options.currentDir = dir.path();
  std::ostringstream out, err;
  int code = runScript(dir / "s.tvs", options, out, err);
  return {code, out.str(), err.str()};
}

TEST(ScriptLine, QuotedTextsAndVariables) {
  std::string a, b;
  ASSERT_TRUE(twoQuoted(R"("Alert!" "Save "path" changes?")", a, b));
  EXPECT_EQ(a, "Alert!");
  EXPECT_EQ(b, "Save \"path\" changes?");
  ASSERT_TRUE(quoted(R"(X "a{TAB}b{CR}{LF}")", a));
  EXPECT_EQ(a, "a\tb\r\n");
  EXPECT_EQ(expandVars("$WORK/x $WORKER", {{"WORK", "/w"}, {"WORKER", "/k"}}), "/w/x /k");
  // Braces end a name, so that text may follow it; an unknown name stays as written.
  EXPECT_EQ(expandVars("${WORK}Notes.txt ${WORK}ER ${NOPE} $", {{"WORK", "/w"}, {"WORKER", "/k"}}),
            "/wNotes.txt /wER ${NOPE} $");
  std::string before, answer;
  ASSERT_TRUE(arrow(R"(msg "A" "B -> C" -> Yes)", before, answer));
  EXPECT_EQ(answer, "Yes");
  EXPECT_EQ(parseLine(1, "  # comment", {}).step, "");
}

TEST(ScriptRunner, ExitCodesTellWhatWentWrong) {
  struct Case {
    const char *what, *script;
    int code;
  } cases[] = {
      {"failed check", "check-exists nothing.txt\n", kCheckFailed},
      {"unanswered prompt", "menu MenuAbout\n", kPromptFailed},
      {"answer for another message", "msg \"Note!\" \"x\" -> OK\nmenu MenuAbout\n", kPromptFailed},
      {"answer left over", "msg-any -> OK\n", kPromptFailed},
      {"unknown step", "jump ListActors\n", kScriptWrong},
      {"unknown control", "event ListNothing click\n", kScriptWrong},
      {"unknown event kind", "event ListActors wiggle\n", kScriptWrong},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    TempDir dir;
    RunResult r = run(dir, c.script);
    EXPECT_EQ(r.code, c.code) << r.out << r.err;
  }
}

// A session whose checks pass but the last: the runner echoes the messages, counts the
// checks and names the failed line. tests/scripts/*.tvs run whole sessions that pass.
TEST(ScriptRunner, PlaysASessionAndCountsChecks) {
  TempDir dir;
  writeFile(dir / "messages.txt",
            "About Tolvane|Tolvane{CR}Ver. 5.0{CR}{CR}A workbench for Poser figure, pose, hair, prop and "
            "scene files.\n");
  writeFile(dir / "mru.txt", "/f/a.cr2\n");
  RunResult r = run(dir, R"(setting Startup PLoc /nowhere/
setting MRUFiles 0 /f/a.cr2
start
check-enabled MenuCR2Tools no
msg-any -> OK
menu MenuAbout
check-messages messages.txt
check-list ListMRU mru.txt
check-count ListMRU 1
check-entry ListMRU 0 "/f/a.cr2"
check-caption TextOpeningNotes ""
check-color PictureTrash C0E0FF
check-entry ListMRU 0 "/f/b.cr2"
)");
  EXPECT_EQ(r.code, kCheckFailed) << r.out << r.err;
  EXPECT_NE(r.out.find("msg \"About Tolvane\""), std::string::npos) << r.out;
  EXPECT_NE(r.out.find("7 passed, 1 failed"), std::string::npos) << r.out;
  EXPECT_NE(r.out.find("FAILED line 13"), std::string::npos) << r.out;
}

// Exit appends the notes to the program's folder and "Notes.txt" with no separator:
// ${WORK} glued to the name finds the file. The check files expand variables too, and a
// message line ending in "..." is a prefix.
TEST(ScriptRunner, VariablesInArgumentsAndCheckFiles) {
  TempDir dir;
  writeFile(dir / "mru.txt", "$CWD/a.cr2\n");
  writeFile(dir / "messages.txt", "About Tolvane|Tolvane{CR}Ver. 5.0...\n");
  writeFile(dir / "wrong.txt", "About Tolvane|Tolvane{CR}Ver. 6...\n");
  RunResult r = run(dir, R"(setting Startup PLoc /nowhere/
setting MRUFiles 0 ${CWD}/a.cr2
start
check-list ListMRU mru.txt
msg-any -> OK
menu MenuAbout
check-messages messages.txt
check-messages wrong.txt
type TextOpeningNotes "check the lShin morph"
exit
check-exists ${WORK}Notes.txt
)");
  EXPECT_EQ(r.code, kCheckFailed) << r.out << r.err;
  EXPECT_NE(r.out.find("3 passed, 1 failed"), std::string::npos) << r.out;
  EXPECT_NE(r.out.find("FAILED line 8"), std::string::npos) << r.out;
}

TEST(ScriptRunner, TheBinaryRunsAScript) {
  TempDir dir;
  writeFile(dir / "s.tvs", "msg \"About Tolvane\" \"Tolvane...\" -> OK\nmenu MenuAbout\n");
  std::string command = std::string(TOLVANE_SCRIPT_EXE) + " --var X=1 " + (dir / "s.tvs").string() + " > " +
                        (dir / "out.txt").string();
  EXPECT_EQ(std::system(command.c_str()), 0);
  EXPECT_NE(test::readFile(dir / "out.txt").find("0 passed, 0 failed"), std::string::npos);
  EXPECT_NE(std::system((std::string(TOLVANE_SCRIPT_EXE) + " 2>/dev/null").c_str()), 0);
}

}  // namespace
}  // namespace tolvane::script
