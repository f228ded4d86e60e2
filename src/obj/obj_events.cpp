// Registers the handlers of the OBJ workbench and of the main form's OBJ tools.
#include "obj/obj_events.h"

#include "obj/mash.h"
#include "obj/obj_form.h"
#include "obj/obj_lists.h"
#include "obj/obj_load.h"
#include "obj/obj_redraw.h"
#include "obj/obj_scaler.h"
#include "obj/obj_tools.h"
#include "obj/obj_view.h"
#include "program/program.h"

namespace tolvane {

namespace {
using Action = void (*)(Program&);

void StillPictureDown(Program& p, const EventArgs& a);
void StillPictureDrag(Program& p, const EventArgs& a);
void StillPictureUp(Program& p, const EventArgs& a);

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
    table.add("FormOBJ", still, EventKind::Press, StillPictureDown);
    table.add("FormOBJ", still, EventKind::MouseMove, StillPictureDrag);
    table.add("FormOBJ", still, EventKind::Release, StillPictureUp);
  }
  on(table, "LabelHotKeys", EventKind::Click, [](Program& p) { p.formOBJ.ListHotKeys.setVisible(true); });
  on(table, "ListHotKeys", EventKind::RightClick,
     [](Program& p) { p.formOBJ.ListHotKeys.setVisible(false); });
  on(table, "LabelHotKeys", EventKind::RightClick,
     [](Program& p) { p.formOBJ.ListHotKeys.setVisible(false); });
  on(table, "PictureNotes", EventKind::Click,
     [](Program& p) { p.formOBJ.TextNotes.setVisible(!p.formOBJ.TextNotes.visible()); });
}

// The still pictures take a mouse drag for the lopper in lop mode, for the secondary
// mesh while one is held, and for the zoom rectangle otherwise.
void StillPictureDown(Program& p, const EventArgs& a) {
  ui::FormOBJ& f = p.formOBJ;
  if (f.lopMode != 0) return obj::StillPictureLopPress(p, a);
  if (f.secondaryHeld) {
    f.boxX1 = static_cast<int>(a.x);
    f.boxY1 = static_cast<int>(a.y);
    f.boxDragging = a.button == 1;
    return;
  }
  obj::StillPicturePress(p, a);
}

void StillPictureDrag(Program& p, const EventArgs& a) {
  ui::FormOBJ& f = p.formOBJ;
  if (f.lopMode != 0) return obj::StillPictureLopMove(p, a);
  if (f.secondaryHeld) {
    if (!f.boxDragging || a.button != 1) return;
    int x = static_cast<int>(a.x), y = static_cast<int>(a.y);
    obj::MoveTopAdd(p, f.currentView, x - f.boxX1, y - f.boxY1);
    f.boxX1 = x;
    f.boxY1 = y;
    return;
  }
  obj::StillPictureMove(p, a);
}

void StillPictureUp(Program& p, const EventArgs& a) {
  ui::FormOBJ& f = p.formOBJ;
  if (f.lopMode != 0) return obj::StillPictureLopRelease(p, a);
  f.boxDragging = false;
}

void registerTools(EventTable& table) {
  using namespace obj;
  on(table, "LabelMirror", EventKind::Click, LabelMirrorClick);
  on(table, "PictureAddOBJ", EventKind::Click, PictureAddOBJClick);
  on(table, "PictureMerge", EventKind::Click, PictureMergeClick);
  on(table, "LabelUVMap", EventKind::Click, LabelUVMapClick);
  on(table, "LabelSecMap", EventKind::Click, LabelSecMapClick);
  on(table, "LabelSaveMap", EventKind::Click, LabelSaveMapClick);
  for (bool secondary : {false, true}) {
    const char* box = secondary ? "TextMapSizeSec" : "TextMapSize";
    table.add("FormOBJ", box, EventKind::Key, [secondary](Program& p, const EventArgs& a) {
      if (a.keyCode == 13) SaveMapTemplate(p, secondary);
    });
    table.add("FormOBJ", box, EventKind::Enter,
              [secondary](Program& p, const EventArgs&) { MapSizeFocus(p, secondary); });
  }
  on(table, "LabelMakeUV", EventKind::Click, LabelMakeUVClick);
  on(table, "LabelViewCR2TexMap", EventKind::Click, LabelViewCR2TexMapClick);
  on(table, "LabelViewCR2TexMap", EventKind::RightClick, LabelViewCR2TexMapRightClick);
  on(table, "LabelApplyMap", EventKind::Click, LabelApplyMapClick);
  on(table, "LabelApplyMap", EventKind::RightClick, LabelApplyMapRightClick);
  on(table, "PictureLop", EventKind::Click, PictureLopClick);
  on(table, "PicturePhiLopper", EventKind::Click, PicturePhiLopperClick);
  on(table, "PicturePhiLopper", EventKind::RightClick, PicturePhiLopperRightClick);
  on(table, "FormTree", EventKind::Unload, PhiLopperReturn);
  on(table, "PictureNewFile", EventKind::Click, PictureNewFileClick);
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
  registerTools(table);
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
