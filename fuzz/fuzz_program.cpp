#include "fuzz_program.h"

#include "fuzz_files.h"

namespace tolvane::fuzz {

namespace {

ProgramOptions optionsIn(const std::filesystem::path& folder) {
  ProgramOptions options;
  options.workDir = folder / "work";
  options.currentDir = folder / "files";
  options.appPath = options.workDir.string();
  std::filesystem::create_directories(options.workDir);
  std::filesystem::create_directories(options.currentDir);
  return options;
}

}  // namespace

ui::Answer AnsweringServices::message(const ui::Message& message) {
  messages.push_back(message);
  // One command asks a handful of questions; thousands mean a loop that never ends.
  if (messages.size() > 1000) fail("more than a thousand message boxes: " + message.text);
  switch (message.buttons) {
    case ui::Buttons::OK:
      return ui::Answer::OK;
    case ui::Buttons::OKCancel:
      return agree ? ui::Answer::OK : ui::Answer::Cancel;
    case ui::Buttons::YesNo:
      return agree ? ui::Answer::Yes : ui::Answer::No;
    case ui::Buttons::YesNoCancel:
      return agree ? ui::Answer::Yes : ui::Answer::Cancel;
    case ui::Buttons::AbortRetryIgnore:
      return agree ? ui::Answer::Ignore : ui::Answer::Abort;
    case ui::Buttons::RetryCancel:
      return ui::Answer::Cancel;
  }
  return ui::Answer::OK;
}

std::optional<std::string> AnsweringServices::fileDialog(const ui::FileDialogRequest& request) {
  if (request.kind == ui::FileDialogRequest::Kind::Open && !openFile.empty()) return openFile;
  return std::nullopt;
}

FuzzProgram::FuzzProgram(const std::filesystem::path& folder)
    : program(services, settings, optionsIn(folder)) {
  settings.save(kAppName, "Startup", "PLoc", program.currentDir.string() + "/");
}

}  // namespace tolvane::fuzz
