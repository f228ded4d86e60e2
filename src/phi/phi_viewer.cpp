#include "phi/phi_viewer.h"

#include <set>

#include "program/program.h"
#include "text/figure_text.h"
#include "text/line_reader.h"
#include "text/line_writer.h"
#include "text/phi_file.h"
#include "text/runtime_error.h"
#include "text/scratch_file.h"
#include "text/scratch_move.h"
#include "ui/services.h"

namespace tolvane::phi {

void ShowPhiFile(Program& program, const std::string& path) {
  std::vector<std::string> lines = text::phi::readLines(text::nativePath(path));
  ui::FormPhi& f = program.formPhi;
  f.LabelPhiFileName.setCaption(path);
  f.ListPhi.setItems(std::move(lines));
  f.TextPhiEdit.setText("");
  f.LabelPhiSave.setVisible(false);
  f.setVisible(true);
}

void MenuViewPhiClick(Program& program) {
  ui::FileDialogRequest request;
  request.kind = ui::FileDialogRequest::Kind::Open;
  request.filter = "PHI(*.phi)|*.phi";
  request.startFolder = program.currentDir;
  auto chosen = program.services.fileDialog(request);
  if (!chosen || chosen->empty()) return;
  program.setCurrentDirFromFile(*chosen);
  ShowPhiFile(program, *chosen);
}

void ListPhiDblClick(Program& program) {
  ui::FormPhi& f = program.formPhi;
  int i = f.ListPhi.listIndex();
  if (i < 0) return;
  f.TextPhiEdit.setText(f.ListPhi.list(i));
}

void TextPhiEditDblClick(Program& program) {
  ui::FormPhi& f = program.formPhi;
  int i = f.ListPhi.listIndex();
  if (i < 0) return;
  f.ListPhi.setItem(i, f.TextPhiEdit.text());
  f.LabelPhiSave.setVisible(true);
}

// The lines take the file's place through a scratch copy, so that a failed write
// leaves the file as it was.
void LabelPhiSaveClick(Program& program) {
  ui::FormPhi& f = program.formPhi;
  std::string path = f.LabelPhiFileName.caption();
  text::phi::writeLines(program.workFile("\\PhiSave.txt"), text::nativePath(path), f.ListPhi.items());
  ui::msgBox(program.services, "Modified Phi file saved.", "Note!");
  f.LabelPhiSave.setVisible(false);
}

void LabelPhiDoneClick(Program& program) { program.formPhi.setVisible(false); }

void MenuPrintClick(Program& program) {
  ui::FormPhi& f = program.formPhi;
  ui::PrintJob job;
  job.title = "Phi File for " + f.LabelPhiFileName.caption();
  job.text = job.title + "\r\n";
  for (const std::string& line : f.ListPhi.items()) job.text += "   " + line + "\r\n";
  program.services.print(job);
}

void MenuPhiHelpClick(Program& program) {
  ui::msgBox(program.services,
             "Doubleclick a line to edit it in the lower text box.  When you are done editing, doubleclick the "
             "edited line.  The 'Save File' button will appear, you may edit further or save at any time.",
             "Help", ui::Buttons::OK, ui::Icon::Information);
}

namespace {

// The body parts behind the figure's hip, from the first figureResFile to the next.
std::vector<std::string> treeEntries(const std::filesystem::path& cr2) {
  text::LineReader in(cr2);
  std::string field;
  do field = in.ReadField();
  while (!text::contains(field, "figureResFile"));
  in.ReadField();
  do field = in.ReadField();
  while (!text::contains(field, "actor hip:"));
  in.ReadField();
  std::vector<std::string> entries;
  // A name the table does not know takes the depth of the part before it; before the
  // first part that is the hip's, 0.
  int depth = 0;
  while (in.readField(field) && !field.empty() && !text::contains(field, "figureResFile")) {
    if (!text::hasPrefix(field, "actor")) continue;
    std::size_t colon = field.find(':');
    std::string name = text::Mid(field, 7, colon == std::string::npos ? -1 : static_cast<long long>(colon) - 6);
    if (int d = text::phi::treeDepth(name)) depth = d;
    entries.push_back(text::phi::treeEntry(depth, name));
  }
  return entries;
}

}  // namespace

void FormTreeLoad(Program& program) {
  ui::FormTree& f = program.formTree;
  f.setCaption(ui::kFormTreeCaption);
  f.ListPhi.clear();
  f.setVisible(true);
  std::string cr2 = program.opening.LabelFileNameForEditor.caption();
  if (cr2.empty()) {
    ui::msgBox(program.services, "Open the appropriate CR2 file.", "Note");
    auto chosen = ui::openDialog(program.services, program.currentDir);
    if (!chosen || chosen->empty()) {
      CloseTree(program);
      return;
    }
    program.setCurrentDirFromFile(*chosen);
    cr2 = *chosen;
  }
  f.ListPhi.setItems(treeEntries(text::nativePath(cr2)));
}

void CommandGoClick(Program& program) {
  ui::FormTree& f = program.formTree;
  int chosen = f.ListPhi.listIndex();
  if (chosen < 0) return;
  int depth = 0;
  std::string name;
  text::phi::parseTreeEntry(f.ListPhi.list(chosen), depth, name);
  std::set<std::string> names{name};
  for (int i = chosen + 1; i < f.ListPhi.listCount(); ++i) {
    int d = 0;
    std::string n;
    text::phi::parseTreeEntry(f.ListPhi.list(i), d, n);
    if (d <= depth) break;
    names.insert(n);
  }
  std::string obj = f.objPath.empty() ? program.opening.TextMainOBJ.text() : f.objPath;
  std::filesystem::path lop = program.workFile("\\Lop.txt");
  text::deleteIgnoringErrors(lop);
  {
    text::LineWriter out(lop, text::LineWriter::Mode::Append);
    text::phi::writeWithoutGroups(text::nativePath(obj), out, names);
    out.close();
  }
  ui::FileDialogRequest request;
  request.kind = ui::FileDialogRequest::Kind::Save;
  request.filter = "OBJ(*.obj)";
  request.startFolder = program.currentDir;
  auto target = program.services.fileDialog(request);
  if (!target || target->empty()) return;  // Lop.txt stays for the mesh tools
  program.setCurrentDirFromFile(*target);
  text::moveScratchInto(lop, text::nativePath(*target), true);
  program.opening.TextMainOBJ.setText(*target);
  CloseTree(program);
}

void CloseTree(Program& program) {
  ui::FormTree& f = program.formTree;
  f.setVisible(false);
  f.objPath.clear();
  std::string returnTo = std::move(f.returnTo);
  f.returnTo.clear();
  if (!returnTo.empty()) fireEvent(program, returnTo, "FormTree", EventKind::Unload);
}

}  // namespace tolvane::phi
