#include "utilities/web_and_programs.h"

#include "program/program.h"
#include "text/figure_text.h"
#include "text/line_reader.h"
#include "text/scratch_file.h"
#include "ui/services.h"

namespace tolvane::utilities {

namespace {

// Opens a page or a file with the desktop's program for it ("open" verb): the
// platform's opener, started without waiting.
void openWithShell(Program& program, const std::string& target) {
  if (!program.services.startProcess("xdg-open", {target}))
    ui::msgBox(program.services, "Cannot open " + target + ": no program to show it was found.", "Error!",
               ui::Buttons::OK, ui::Icon::Critical);
}

}  // namespace

std::string webSite(Program& program) {
  return program.settings.get(kAppName, "Startup", "WebSite", kDefaultWebSite);
}

std::string publishedVersion(const std::string& firstField) {
  std::size_t blank = text::InStr(firstField, " ");
  return blank == 0 ? std::string() : text::Mid(firstField, static_cast<long long>(blank) + 1);
}

void CheckVersion(Program& program) {
  std::filesystem::path file = program.workFile("Tolvanever.txt");
  program.setBusy(true);
  std::string body = program.services.httpGet(webSite(program) + "/Tolvanever.txt").value_or("");
  // What came is written whole under a scratch name and then takes the file's name.
  text::StreamRewrite scratch(program.workFile("Tolvanever.tmp"), true);
  try {
    scratch.out().write(body);
    scratch.replace(file);
  } catch (...) {
    scratch.discard();
    program.setBusy(false);
    throw;
  }
  program.setBusy(false);
  if (text::fileLength(file) == 0) {
    ui::msgBox(program.services, "Info retrieval failed.", "Error!");
    return;
  }
  text::LineReader in(file);
  std::string version = publishedVersion(in.ReadField());
  in.close();
  if (version == kProgramVersion)
    ui::msgBox(program.services, "Your version of Tolvane is up to date!", "Info");
  else
    ui::msgBox(program.services, "Your version of Tolvane can be updated, the current version is ver " + version,
               "Info");
}

void ShowHelp(Program& program) {
  std::filesystem::path local = program.workDir / "TolvaneManual" / "TolvaneWelcome.htm";
  if (text::fileExists(local))
    openWithShell(program, local.string());
  else
    openWithShell(program, webSite(program) + "/tolvane/help/TolvaneWelcome.htm");
}

void ShowTutorials(Program& program) {
  openWithShell(program, webSite(program) + "/tolvane/tutorials/tutorials.html");
}

void StartPoser(Program& program) {
  std::string file = program.opening.LabelFileNameForEditor.caption();
  if (text::FileKind(file) != "pz3" &&
      ui::msgBox(program.services,
                 "If you start Poser with a CR2 file it will open with the default model.  Do you want to do this?",
                 "NOTE!", ui::Buttons::YesNo) != ui::Answer::Yes)
    return;
  std::string poser = program.posersFolder() + "Poser.exe";
  std::vector<std::string> args;
  if (!file.empty()) args.push_back(file);
  if (!program.services.startProcess(poser, args))
    ui::msgBox(program.services,
               "Poser could not be started: " + poser +
                   " was not found, or no program to run it (wine) is installed.",
               "Error!", ui::Buttons::OK, ui::Icon::Critical);
}

void StartQuickboot(Program& program) {
  std::string quickboot = (program.workDir / "Quickboot.exe").string();
  if (!program.services.startProcess(quickboot, {}))
    ui::msgBox(program.services,
               "Quickboot could not be started: " + quickboot +
                   " was not found, or no program to run it (wine) is installed.",
               "Error!", ui::Buttons::OK, ui::Icon::Critical);
}

}  // namespace tolvane::utilities
