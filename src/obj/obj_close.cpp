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

bool CloseOBJ(Program& program) {
  ui::FormOBJ& f = program.formOBJ;
  if (f.renamed) {
    if (f.ListMaterials.visible() || f.ListGroups.visible()) {
      ui::msgBox(program.services,
                 f.ListMaterials.visible() ? "Close the Material List first!" : "Close the Group List first!",
                 "Error!", ui::Buttons::OK, ui::Icon::Critical);
      return false;
    }
    RewriteWithRenames(program);
  }
  f.stopFlag = -1;
  f.TimerRotate.setEnabled(false);
  appendNotes(program);
  deleteToolScratch(program);
  f.reset();
  return true;
}

}  // namespace tolvane::obj
