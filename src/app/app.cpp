#include "app/app.h"

#include "editor/editor_events.h"
#include "editor/editor_handover.h"
#include "erc/erc_events.h"
#include "install/install_events.h"
#include "library/library_events.h"
#include "morph/morph_events.h"
#include "obj/geometry_export_events.h"
#include "obj/obj_events.h"
#include "phi/phi_events.h"
#include "program/program.h"
#include "utilities/utilities_events.h"
#include "workspace/workspace_events.h"

namespace tolvane::app {

const EventTable& eventTable() {
  static const EventTable table = [] {
    EventTable t;
    registerStartupEvents(t);
    registerWorkspaceEvents(t);
    registerMorphEvents(t);
    registerEditorEvents(t);
    registerLibraryEvents(t);
    registerObjEvents(t);
    registerErcEvents(t);
    registerPhiEvents(t);
    registerGeometryExportEvents(t);
    registerInstallEvents(t);
    registerUtilitiesEvents(t);
    return t;
  }();
  return table;
}

void wire(Program& program) {
  program.setEvents(&eventTable());
  program.onShowEditor = [&program] { editor::ShowEditorWithDestination(program); };
}

}  // namespace tolvane::app
