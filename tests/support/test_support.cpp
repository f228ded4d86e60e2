#include "test_support.h"

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

}  // namespace tolvane::test
