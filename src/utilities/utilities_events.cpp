#include "utilities/utilities_events.h"

#include <utility>

#include "program/program.h"
#include "utilities/dial_renamer.h"
#include "utilities/map_viewer.h"
#include "utilities/renumber.h"
#include "utilities/viewers.h"
#include "utilities/web_and_programs.h"

namespace tolvane {

namespace {

using Plain = void (*)(Program&);

struct Entry {
  const char* form;
  const char* control;
  EventKind kind;
  Plain handler;
};

void showRenamer(Program& p) {
  p.renamer.setVisible(true);
  utilities::RenamerLoad(p);
}

void showRenumber(Program& p) {
  p.formRenumber.setVisible(true);
  utilities::RenumberLoad(p);
}

const Entry kEntries[] = {
    {"Opening", "menuDialRenamer", EventKind::Click, showRenamer},
    {"Opening", "menuRenumberFiles", EventKind::Click, showRenumber},
    {"Opening", "menuCheckVer", EventKind::Click, utilities::CheckVersion},
    {"Opening", "MenuHelp", EventKind::Click, utilities::ShowHelp},
    {"Opening", "MenuHelpContents", EventKind::Click, utilities::ShowHelp},
    {"Opening", "menuWebTutorials", EventKind::Click, utilities::ShowTutorials},
    {"Opening", "MenuPoser", EventKind::Click, utilities::StartPoser},
    {"Opening", "MenuQuickboot", EventKind::Click, utilities::StartQuickboot},
    {"Opening", "MenuMagnifier", EventKind::Click, utilities::ShowMagnifier},
    {"Opening", "MenuGraphPaper", EventKind::Click, utilities::ShowGraphPaper},
    {"Opening", "MenuLauncher", EventKind::Click, utilities::ShowLauncher},
    {"Opening", "PictureMapViewer", EventKind::Click, utilities::MapViewerClick},
    {"Opening", "PictureMapViewer", EventKind::RightClick, utilities::MapViewerRightClick},
    {"FormViewer", "FormViewer", EventKind::Load, utilities::FormViewerLoad},
    {"Renamer", "Renamer", EventKind::Load, utilities::RenamerLoad},
    {"Renamer", "Drive1", EventKind::Change, utilities::RenamerDriveChange},
    {"Renamer", "Dir1", EventKind::Change, utilities::RenamerDirChange},
    {"Renamer", "File1", EventKind::Click, utilities::RenamerFileClick},
    {"Renamer", "LabelFriendly", EventKind::Click, [](Program& p) { utilities::RenamerModeClick(p, 1); }},
    {"Renamer", "LabelGetSR", EventKind::Click, [](Program& p) { utilities::RenamerModeClick(p, 2); }},
    {"Renamer", "Picture1", EventKind::Click, utilities::RenamerPictureClick},
    {"Renamer", "Picture1", EventKind::Drop, utilities::RenamerDrop},
    {"Renamer", "mnuHelp", EventKind::Click, utilities::RenamerHelp},
    {"Renamer", "mnuAbout", EventKind::Click, utilities::RenamerAbout},
    {"FormRenumber", "FormRenumber", EventKind::Load, utilities::RenumberLoad},
    {"FormRenumber", "Drive1", EventKind::Change, utilities::RenumberDriveChange},
    {"FormRenumber", "Dir1", EventKind::Change, utilities::RenumberDirChange},
    {"FormRenumber", "OptionBMP", EventKind::Click, [](Program& p) { utilities::RenumberOptionClick(p, false); }},
    {"FormRenumber", "OptionOBJ", EventKind::Click, [](Program& p) { utilities::RenumberOptionClick(p, true); }},
    {"FormRenumber", "CommandGo", EventKind::Click, utilities::RenumberFiles},
};

}  // namespace

void registerUtilitiesEvents(EventTable& table) {
  for (const Entry& e : kEntries) {
    Plain handler = e.handler;
    table.add(e.form, e.control, e.kind, [handler](Program& p, const EventArgs&) { handler(p); });
  }
  table.add("FormLaunch", "FormLaunch", EventKind::Drop,
            [](Program& p, const EventArgs& args) { utilities::LauncherDrop(p, args.files); });
  table.add("FormLaunch", "LabelDrop", EventKind::Drop,
            [](Program& p, const EventArgs& args) { utilities::LauncherDrop(p, args.files); });
}

}  // namespace tolvane
