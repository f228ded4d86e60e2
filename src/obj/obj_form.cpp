#include "obj/obj_form.h"

#include "obj/obj_view.h"
#include "program/program.h"
#include "text/figure_text.h"
#include "ui/services.h"

namespace tolvane::obj {

void PictureOBJViewClick(Program& program) {
  ui::Opening& o = program.opening;
  if (o.TextMainOBJ.text().empty() && text::FileKind(o.OpenFilePath) != "obj") {
    ui::msgBox(program.services, "There is no OBJ associated with this file!", "Error!", ui::Buttons::OK,
               ui::Icon::Critical);
    return;
  }
  for (ui::Control* c :
       std::initializer_list<ui::Control*>{&o.OptionChannelRename, &o.OptionBodyPartRename,
                                           &o.PictureChangeRatio, &o.SliderOBJScale, &o.TextOBJScale})
    c->setVisible(false);
  ui::FormOBJ& f = program.formOBJ;
  if (!f.visible()) {
    FormOBJLoad(program);
    f.setVisible(true);
  }
}

void PictureOBJViewRightClick(Program& program) {
  ui::msgBox(program.services, "Click this button to view the geometry of the model in the main OBJ file.",
             "Information", ui::Buttons::OK, ui::Icon::Information);
}

void FormOBJLoad(Program& program) {
  ui::FormOBJ& f = program.formOBJ;
  f.loaded = false;
  // A new showing of the form starts the view afresh: the angle, the zoom and the
  // camera height last only while the form stays open.
  f.speed = 1;
  f.angle = 0;
  f.zoom = 0;
  f.cameraHeight = 0;
  f.PictureUVMap.setVisible(false);
  f.PictureObjViewer2.setVisible(false);
  SetUpView(program);
}

}  // namespace tolvane::obj
