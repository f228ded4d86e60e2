#include "install/install_events.h"

#include <utility>

#include "install/install_cr2.h"
#include "install/inventory.h"
#include "program/program.h"
#include "ui/services.h"

namespace tolvane {

namespace {

void info(Program& program, const char* text) {
  ui::msgBox(program.services, text, "Information", ui::Buttons::OK, ui::Icon::Information);
}

}  // namespace

void registerInstallEvents(EventTable& table) {
  using Plain = void (*)(Program&);
  const std::pair<const char*, Plain> opening[] = {{"MenuInstallCR2", install::MenuInstallCR2Click},
                                                   {"PictureInstallCR2", install::InstallCR2Click},
                                                   {"PictureCR2InstallCancel", install::CancelInstall},
                                                   {"PicturePrintCR2Files", install::PrintCR2Files}};
  for (const auto& entry : opening) {
    Plain handler = entry.second;
    table.add("Opening", entry.first, EventKind::Click, [handler](Program& p, const EventArgs&) { handler(p); });
  }
  table.add("Opening", "PicturePrintCR2Files", EventKind::RightClick,
            [](Program& p, const EventArgs&) { info(p, "Click this to print the list of files."); });
  table.add("Opening", "PictureInstallCR2", EventKind::RightClick, [](Program& p, const EventArgs&) {
    info(p, "Click this to install the files referred to in the CR2.");
  });
  table.add("Opening", "PictureCR2InstallCancel", EventKind::RightClick,
            [](Program& p, const EventArgs&) { info(p, "Click here to cancel installing the CR2."); });

  const char* form = "FormCR2Install";
  const std::pair<std::pair<const char*, EventKind>, Plain> install[] = {
      {{"DirCR2Install", EventKind::Enter}, install::InstallIntoFolder},
      {{"DirCR2Install", EventKind::Change}, install::DirCR2InstallChange},
      {{"DriveCR2Install", EventKind::Change}, install::DriveCR2InstallChange},
      {{"LabelNewDir", EventKind::Click}, install::NewDirClick},
      {{"TextNewDir", EventKind::Enter}, install::NewDirEnter},
      {{"LabelRemoveDir", EventKind::Click}, install::RemoveDirClick}};
  for (const auto& entry : install) {
    Plain handler = entry.second;
    table.add(form, entry.first.first, entry.first.second, [handler](Program& p, const EventArgs&) { handler(p); });
  }
}

}  // namespace tolvane
