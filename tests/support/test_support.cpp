#include "test_support.h"

#include <gtest/gtest.h>

#include "app/app.h"

namespace tolvane::test {

TestProgram::TestProgram() {
  auto work = dir.path() / "work";
  auto cwd = dir.path() / "files";
  std::filesystem::create_directories(work);
  std::filesystem::create_directories(cwd);
  ProgramOptions options;
  options.workDir = work;
  options.currentDir = cwd;
  options.appPath = work.string();
  program = std::make_unique<Program>(services, settings, options);
  app::wire(*program);
}

void ToolBench::poserAt(const std::filesystem::path& poser) {
  t.settings.save(kAppName, "Startup", "PLoc", poser.string() + "/");
}

void ToolBench::open(const std::filesystem::path& path) {
  t->opening.LabelFileNameForEditor.setCaption(path.string());
}

std::filesystem::path ToolBench::file(const std::string& name, const Lines& lines) {
  auto path = t.files() / name;
  writeFile(path, crlf(lines));
  return path;
}

void ToolBench::fire(const std::string& form, const std::string& control, EventKind kind) {
  EXPECT_TRUE(fireEvent(*t, form, control, kind)) << form << "." << control << " has no handler";
}

}  // namespace tolvane::test
