// Registers the handlers of the OBJ workbench and of the main form's OBJ tools.
#include "obj/obj_events.h"

#include "obj/mash.h"
#include "obj/obj_form.h"
#include "obj/obj_lists.h"
#include "obj/obj_load.h"
#include "obj/obj_redraw.h"
#include "obj/obj_scaler.h"
#include "obj/obj_view.h"
#include "program/program.h"

namespace tolvane {

namespace {
using Action = void (*)(Program&);

void on(EventTable& table, const std::string& control, EventKind kind, Action action) {
  table.add("FormOBJ", control, kind, [action](Program& p, const EventArgs&) { action(p); });
}

void registerView(EventTable& table) {
  using namespace obj;
  on(table, "FormOBJ", EventKind::Load, FormOBJLoad);
  on(table, "LabelView", EventKind::Click, LoadObj);
  on(table, "TimerRotate", EventKind::Timer, RotateTick);
  table.add("FormOBJ", "FormOBJ", EventKind::Key,
            [](Program& p, const EventArgs& a) { FormOBJKey(p, a.keyCode); });
  on(table, "FormOBJ", EventKind::RightRelease, FormOBJRightRelease);
  const char* views[] = {"OptionFrontView", "OptionSideView", "OptionTopView"};
  for (int i = 0; i < 3; ++i)
    table.add("FormOBJ", views[i], EventKind::Click,
              [i](Program& p, const EventArgs&) { ViewOptionClick(p, i + 1); });
  for (const char* option : {"OptionColorGroups", "OptionColorMaterials", "OptionNoColors"})
    on(table, option, EventKind::Click, ColourOptionClick);
  on(table, "LabelBoss", EventKind::Click, LabelBossClick);
  on(table, "LabelPlay", EventKind::Click, LabelPlayClick);
  for (const char* still : {"PictureStore", "PictureStore2", "PictureStore3"}) {
    table.add("FormOBJ", still, EventKind::Press, StillPicturePress);
    table.add("FormOBJ", still, EventKind::MouseMove, StillPictureMove);
  }
  on(table, "LabelHotKeys", EventKind::Click, [](Program& p) { p.formOBJ.ListHotKeys.setVisible(true); });
  on(table, "ListHotKeys", EventKind::RightClick,
     [](Program& p) { p.formOBJ.ListHotKeys.setVisible(false); });
  on(table, "LabelHotKeys", EventKind::RightClick,
     [](Program& p) { p.formOBJ.ListHotKeys.setVisible(false); });
  on(table, "PictureNotes", EventKind::Click,
     [](Program& p) { p.formOBJ.TextNotes.setVisible(!p.formOBJ.TextNotes.visible()); });
}

void registerLists(EventTable& table) {
  using namespace obj;
  for (ListKind kind : {ListKind::Groups, ListKind::Materials}) {
    bool groups = kind == ListKind::Groups;
    auto add = [&](const char* control, EventKind event, void (*action)(Program&, ListKind)) {
      table.add("FormOBJ", control, event, [action, kind](Program& p, const EventArgs&) { action(p, kind); });
    };
    add(groups ? "CommandListGroups" : "CommandListMats", EventKind::Click, ListCommandClick);
    add(groups ? "ListGroups" : "ListMaterials", EventKind::DblClick, StartRename);
    add(groups ? "CheckSaveGroups" : "CheckSaveMaterials", EventKind::Click, SelectionModeClick);
    add(groups ? "ListGroupsSave" : "ListMaterialsSave", EventKind::Click, SaveListClick);
    const char* box = groups ? "TextGrpRename" : "TextMatRename";
    table.add("FormOBJ", box, EventKind::Key, [kind](Program& p, const EventArgs& a) {
      if (a.keyCode == 13) FinishRename(p, kind);
    });
  }
  on(table, "LabelRichRename", EventKind::Click, LabelRichRenameClick);
  on(table, "FormOBJ", EventKind::Unload, [](Program& p) {
    if (CloseOBJ(p)) p.formOBJ.setVisible(false);
  });
}
}  // namespace

void registerObjEvents(EventTable& table) {
  registerView(table);
  registerLists(table);
  table.add("Opening", "PictureOBJView", EventKind::Click,
            [](Program& p, const EventArgs&) { obj::PictureOBJViewClick(p); });
  table.add("Opening", "PictureOBJView", EventKind::RightClick,
            [](Program& p, const EventArgs&) { obj::PictureOBJViewRightClick(p); });
  table.add("Opening", "PictureOBJView", EventKind::Enter,
            [](Program& p, const EventArgs&) { obj::PictureOBJViewClick(p); });
  auto main = [&](const char* control, EventKind kind, Action action) {
    table.add("Opening", control, kind, [action](Program& p, const EventArgs&) { action(p); });
  };
  main("PictureMash", EventKind::Click, obj::PictureMashClick);
  main("PictureMash", EventKind::RightClick, obj::PictureMashRightClick);
  main("PictureScaleObj", EventKind::Click, obj::PictureScaleObjClick);
  main("PictureScaleObj", EventKind::RightClick, obj::PictureScaleObjRightClick);
  main("SliderOBJScale", EventKind::Change, obj::SliderOBJScaleChange);
  table.add("Opening", "TextOBJScale", EventKind::Key, [](Program& p, const EventArgs& a) {
    if (a.keyCode == 13) obj::ObjScaler(p);
  });
}

}  // namespace tolvane
