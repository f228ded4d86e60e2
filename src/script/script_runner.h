// The headless script runner: plays a user's session, one step a line, against the
// same event handlers the GUI uses. Prompts are answered from the script; checks
// compare files, lists, captions, colours and messages.
#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace tolvane::script {

struct RunnerOptions {
  std::filesystem::path workDir;                      // empty: a fresh temporary folder
  std::optional<std::filesystem::path> settingsFile;  // INI file; none: in memory
  std::filesystem::path currentDir;                   // empty: the script's folder
  std::map<std::string, std::string> vars;
};

// Exit codes: 0 all passed, 1 a check failed, 2 an unanswered or mismatched prompt,
// 3 the script itself is wrong.
enum ExitCode { kPassed = 0, kCheckFailed = 1, kPromptFailed = 2, kScriptWrong = 3 };

int runScript(const std::filesystem::path& script, const RunnerOptions& options, std::ostream& out,
              std::ostream& err);

// The command line of tolvane-script.
int runnerMain(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

}  // namespace tolvane::script
