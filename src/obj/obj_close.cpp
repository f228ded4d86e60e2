// The workbench's close: the rewrite with pending renames, the notes appended beside
// the OBJ, the scratch files of the later tools removed, the form reset.
#include <ctime>

#include "obj/obj_lists.h"
#include "obj/obj_save.h"
#include "obj/obj_tools.h"
#include "program/program.h"
#include "text/line_writer.h"
#include "text/scratch_file.h"
#include "ui/services.h"
#include "workspace/list_readers.h"

namespace tolvane::obj {

namespace {

const char* const kCloseScratch[] = {"UV.txt",          "group.txt",     "groupsave.txt", "groupvert.txt",
                                     "groupvertex.txt", "groupface.txt", "secmapsave.txt"};

// The date as the run-time's Date prints it: 11/22/2026.
std::string dateText(Program& program) {
  std::time_t t = std::chrono::system_clock::to_time_t(program.services.now());
  std::tm tm{};
  localtime_r(&t, &tm);
  return std::to_string(tm.tm_mon + 1) + "/" + std::to_string(tm.tm_mday) + "/" +
         std::to_string(tm.tm_year + 1900);
}

void appendNotes(Program& program) {
  ui::FormOBJ& f = program.formOBJ;
  if (f.TextNotes.text().empty()) return;
  std::filesystem::path obj = filePath(program, f.captionPath());
  text::LineWriter out(obj.parent_path() / "Notes.txt", text::LineWriter::Mode::Append);
  out.WriteLine("**** " + dateText(program) + " ****");
  out.WriteLine("** " + f.captionPath() + " **");
  out.WriteLine(f.TextNotes.text());
  out.close();
}

}  // namespace

void deleteToolScratch(Program& program) {
  for (const char* name : kCloseScratch) text::deleteIgnoringErrors(program.workFile(name));
}

namespace {

// The close, from the unload or from the click that closed the list it waited for. It
// waits while the material or the group list shows, with a message for each list it
// begins to wait for.
bool closeForm(Program& program) {
  ui::FormOBJ& f = program.formOBJ;
  if (f.renamed) {
    int wait = f.ListMaterials.visible() ? 1 : f.ListGroups.visible() ? 2 : 0;
    if (wait != 0) {
      if (wait != f.closeWaiting)
        ui::msgBox(program.services, wait == 1 ? "Close the Material List first!" : "Close the Group List first!",
                   "Error!", ui::Buttons::OK, ui::Icon::Critical);
      f.closeWaiting = wait;
      return false;
    }
    f.closeWaiting = 0;
    RewriteWithRenames(program);
  }
  f.stopFlag = -1;
  f.TimerRotate.setEnabled(false);
  appendNotes(program);
  deleteToolScratch(program);
  f.reset();
  return true;
}

}  // namespace

bool CloseOBJ(Program& program) {
  program.formOBJ.closeWaiting = 0;
  return closeForm(program);
}

void ResumeClose(Program& program) {
  ui::FormOBJ& f = program.formOBJ;
  if (f.closeWaiting != 0 && closeForm(program)) f.setVisible(false);
}

}  // namespace tolvane::obj
