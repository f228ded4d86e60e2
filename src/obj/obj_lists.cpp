#include "obj/obj_lists.h"

#include "obj/obj_load.h"
#include "obj/obj_save.h"
#include "program/program.h"
#include "text/figure_text.h"
#include "text/run_time_number.h"
#include "ui/services.h"

namespace tolvane::obj {

namespace {

struct Lists {
  ui::ColourList& rich;
  ui::ListBox& names;
  ui::ListBox& colours;
  ui::TextBox& rename;
  ui::ListBox& pending;
  ui::CheckBox& check;
  ui::ListBox& save;
};

Lists listsOf(ui::FormOBJ& f, ListKind kind) {
  if (kind == ListKind::Groups)
    return {f.RichTextBoxGroups, f.ListGroups,      f.ListGroupColors, f.TextGrpRename,
            f.ListGrpRen,        f.CheckSaveGroups, f.ListGroupsSave};
  return {f.RichTextBoxMaterials, f.ListMaterials,      f.ListMATColors,    f.TextMatRename,
          f.ListMatRen,           f.CheckSaveMaterials, f.ListMaterialsSave};
}

ui::Colour colourOfLine(const ui::ListBox& colours, int i) {
  int red = 0, green = 0, blue = 0;
  if (i < colours.listCount()) colourOfItem(colours.list(i), red, green, blue);
  return static_cast<ui::Colour>(red & 0xFF) | (static_cast<ui::Colour>(green & 0xFF) << 8) |
         (static_cast<ui::Colour>(blue & 0xFF) << 16);
}

// The box's text is the names joined by CR LF; each line, up to its line feed, takes
// the colour of the colour list's item of the same number.
void fillListing(const Lists& l) {
  std::string text;
  for (int i = 0; i < l.names.listCount(); ++i) text += (i ? "\r\n" : "") + l.names.list(i);
  std::vector<std::string> lines;
  std::vector<ui::Colour> colours;
  std::size_t start = 0;
  for (;;) {
    std::size_t lf = text.find('\n', start);
    std::string line = text.substr(start, lf == std::string::npos ? std::string::npos : lf - start);
    if (!line.empty() && line.back() == '\r') line.pop_back();
    colours.push_back(colourOfLine(l.colours, static_cast<int>(lines.size())));
    lines.push_back(line);
    if (lf == std::string::npos) break;
    start = lf + 1;
  }
  l.rich.setLines(text.empty() ? std::vector<std::string>{} : lines, colours);
}

}  // namespace

void ListCommandClick(Program& program, ListKind kind) {
  ui::FormOBJ& f = program.formOBJ;
  Lists l = listsOf(f, kind);
  if (l.rich.visible()) {
    for (ui::Control* c : std::initializer_list<ui::Control*>{
             &l.rich, &f.LabelRichRename, &l.names, &l.rename, &f.CheckSaveGroups, &f.CheckSaveMaterials})
      c->setVisible(false);
    return ResumeClose(program);
  }
  Lists other = listsOf(f, kind == ListKind::Groups ? ListKind::Materials : ListKind::Groups);
  for (ui::Control* c : std::initializer_list<ui::Control*>{&other.rich, &other.names, &other.rename})
    c->setVisible(false);
  ResumeClose(program);
  if (!f.visible()) return;
  f.LabelRichRename.setVisible(true);
  fillListing(l);
  l.rich.setListIndex(-1);
  l.rich.setVisible(true);
  f.CheckSaveGroups.setVisible(true);
  f.CheckSaveMaterials.setVisible(true);
}

void LabelRichRenameClick(Program& program) {
  ui::FormOBJ& f = program.formOBJ;
  for (ListKind kind : {ListKind::Groups, ListKind::Materials}) {
    Lists l = listsOf(f, kind);
    if (l.rich.visible()) {
      l.rich.setVisible(false);
      l.names.setVisible(true);
      return;
    }
    if (l.names.visible()) {
      l.names.setVisible(false);
      l.rename.setVisible(false);
      fillListing(l);
      l.rich.setVisible(true);
      return ResumeClose(program);
    }
  }
}

void StartRename(Program& program, ListKind kind) {
  Lists l = listsOf(program.formOBJ, kind);
  l.rename.setText(l.names.text());
  l.rename.setVisible(true);
  l.rename.setFocus();
}

void FinishRename(Program& program, ListKind kind) {
  ui::FormOBJ& f = program.formOBJ;
  Lists l = listsOf(f, kind);
  int at = l.names.listIndex();
  if (at < 0) return;
  std::string old = l.names.list(at), renamed = l.rename.text();
  l.pending.addItem(renamed.empty() ? old + "* NULL" : old + "*" + renamed);
  std::vector<std::string> items = l.names.items();
  if (renamed.empty())
    items.erase(items.begin() + at);
  else
    items[static_cast<std::size_t>(at)] = renamed;
  l.names.setItems(std::move(items));
  l.rename.setText("");
  l.rename.setVisible(false);
  f.renamed = true;
}

void SelectionModeClick(Program& program, ListKind kind) {
  Lists l = listsOf(program.formOBJ, kind);
  bool on = l.check.value();
  l.save.setVisible(on);
  l.names.setVisible(!on);
  if (!on) return;
  ResumeClose(program);
  if (!program.formOBJ.visible()) return;
  std::vector<std::string> items = l.names.items();
  items.push_back("DONE");
  l.save.setItems(std::move(items));
}

void SaveListClick(Program& program, ListKind kind) {
  ui::FormOBJ& f = program.formOBJ;
  Lists l = listsOf(f, kind);
  if (l.save.text() != "DONE") return;
  if (!SaveSelected(program, kind)) return;
  l.check.setValue(false);
  l.save.setVisible(false);
  l.names.setVisible(true);
  l.rename.setText("");
}

}  // namespace tolvane::obj
