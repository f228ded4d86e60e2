// Registers the handlers of the workspace: open, the list readers' clicks, save and
// the path boxes, the Bracket Checker, and files dropped on the main form.
#include "workspace/workspace_events.h"

#include "workspace/bracket_checker.h"
#include "workspace/list_readers.h"
#include "workspace/workspace.h"
#include "program/events.h"
#include "program/program.h"
#include "ui/services.h"

namespace tolvane {

namespace {
void info(Program& p, const std::string& text, const std::string& title) {
  ui::msgBox(p.services, text, title, ui::Buttons::OK, ui::Icon::Information);
}

// A file dropped from the desktop opens as one given on the command line.
void dropFiles(Program& p, const EventArgs& args) {
  for (const std::string& file : args.files) {
    p.opening.OpenFilePath = file;
    LoadWithoutDialog(p, file);
  }
}
}  // namespace

void registerWorkspaceEvents(EventTable& table) {
  const std::string o = "Opening";
  auto on = [&](const std::string& control, EventKind kind, std::function<void(Program&)> action) {
    table.add(o, control, kind, [action](Program& p, const EventArgs&) { action(p); });
  };
  on("MenuFileOpen", EventKind::Click, OpenFile);
  on("MenuFileSave", EventKind::Click, [](Program& p) { WritePathChanges(p, PathWriteVariant::Save); });
  on("MenuFileSaveAs", EventKind::Click, [](Program& p) { WritePathChanges(p, PathWriteVariant::SaveAs); });
  on("MenuBrack", EventKind::Click, CheckBrackets);
  on("LabelOpenSource", EventKind::Click, OpenSource);
  on("LabelOpenSource", EventKind::RightClick,
     [](Program& p) { info(p, "Click this button to open a source file.", "Information"); });
  table.add(o, o, EventKind::Drop, dropFiles);

  on("LabelMainOBJPath", EventKind::Click, LabelMainOBJPathClick);
  for (const char* label : {"LabelMainTex", "LabelMainBump", "LabelMainReflect", "LabelMainTrans"})
    on(label, EventKind::Click, [name = std::string(label)](Program& p) { MapLabelClick(p, name); });
  for (const char* box : {"TextMainOBJ", "TextMainTex", "TextMainBump", "TextMainReflect", "TextMainTrans"})
    on(box, EventKind::DblClick, [name = std::string(box)](Program& p) { PathBoxDblClick(p, name); });
  on("TextMainOBJ", EventKind::RightClick, [](Program& p) {
    ui::msgBox(
        p.services,
        "For any of these path boxes, doubleclick when you are done hand-editing, or browse by clicking "
        "the labels to the left.",
        "Note!", ui::Buttons::OK, ui::Icon::Information);
  });

  on("ListMaterials", EventKind::Click, ListMaterialsClick);
  on("TextMainTex", EventKind::MouseMove, TextMainTexMouseMove);
  on("TextMainOBJ", EventKind::MouseMove, TextMainOBJMouseMove);
  on("TimerListAllTexMaps", EventKind::Timer, HideAllTexMaps);
  on("ListAllTexMaps", EventKind::Click, HideAllTexMaps);
  on("ListAllTexMaps", EventKind::RightClick, HideAllTexMaps);

  on("TimerPushpin", EventKind::Timer, TimerPushpinTick);
  for (const char* picture : {"PictureBrktsOK", "PictureBrktLeft", "PictureBrktRight"})
    on(picture, EventKind::Click,
       [name = std::string(picture)](Program& p) { DismissBracketResult(p, name); });
}

}  // namespace tolvane
