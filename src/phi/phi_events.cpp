#include "phi/phi_events.h"

#include "phi/phi_creator.h"
#include "phi/phi_viewer.h"
#include "program/program.h"

namespace tolvane {

void registerPhiEvents(EventTable& table) {
  using Plain = void (*)(Program&);
  struct Row {
    const char* form;
    const char* control;
    EventKind kind;
    Plain action;
  };
  const Row rows[] = {
      {"Opening", "MenuPhi", EventKind::Click, phi::MenuPhiClick},
      {"Opening", "MenuViewPhi", EventKind::Click, phi::MenuViewPhiClick},
      {"FormPhi", "ListPhi", EventKind::DblClick, phi::ListPhiDblClick},
      {"FormPhi", "TextPhiEdit", EventKind::DblClick, phi::TextPhiEditDblClick},
      {"FormPhi", "LabelPhiSave", EventKind::Click, phi::LabelPhiSaveClick},
      {"FormPhi", "LabelPhiDone", EventKind::Click, phi::LabelPhiDoneClick},
      {"FormPhi", "MenuPrint", EventKind::Click, phi::MenuPrintClick},
      {"FormPhi", "MenuPhiHelp", EventKind::Click, phi::MenuPhiHelpClick},
      {"FormPhi", "FormPhi", EventKind::Unload, phi::LabelPhiDoneClick},
      {"FormTree", "FormTree", EventKind::Load, phi::FormTreeLoad},
      {"FormTree", "CommandGo", EventKind::Click, phi::CommandGoClick},
      {"FormTree", "FormTree", EventKind::Unload, phi::CloseTree},
  };
  for (const Row& row : rows) {
    Plain action = row.action;
    table.add(row.form, row.control, row.kind, [action](Program& p, const EventArgs&) { action(p); });
  }
}

}  // namespace tolvane
