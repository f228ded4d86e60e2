#include "obj/geometry_export_events.h"

#include "obj/mat_coord.h"
#include "obj/obj_extract.h"
#include "program/program.h"

namespace tolvane {

void registerGeometryExportEvents(EventTable& table) {
  using Plain = void (*)(Program&);
  struct Entry {
    const char* form;
    const char* control;
    EventKind kind;
    Plain handler;
  };
  const Entry entries[] = {
      {"Opening", "PictureOBJExtract", EventKind::Click, obj::OBJExtractor},
      {"Opening", "PictureOBJExtract", EventKind::RightClick, obj::OBJExtractRightClick},
      {"Opening", "ListOBJExtract", EventKind::Click, obj::OBJExtractListClick},
      {"Opening", "menuNewCR2ExtOBJ", EventKind::Click, obj::NewCR2ExtOBJ},
      {"Opening", "MenuCoordMat", EventKind::Click, obj::MatCoordinator},
      {"FormMatCoord", "CommandClose", EventKind::Click, [](Program& p) { p.formMatCoord.setVisible(false); }},
  };
  for (const Entry& e : entries) {
    Plain handler = e.handler;
    table.add(e.form, e.control, e.kind, [handler](Program& p, const EventArgs&) { handler(p); });
  }
}

}  // namespace tolvane
