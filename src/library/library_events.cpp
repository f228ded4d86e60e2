#include "library/library_events.h"

#include <utility>

#include "library/converters.h"
#include "library/geometry_switch.h"
#include "library/master_cr2.h"

namespace tolvane {

void registerLibraryEvents(EventTable& table) {
  const char* masters[] = {"MenuP3Male", "MenuP3Female", "MenuP4Male", "MenuP4Female",
                           "MenuVic",    "MenuAnyMasterStandard", "MenuAnyMasterNoFBM"};
  for (int i = 0; i < 7; ++i)
    table.add("Opening", masters[i], EventKind::Click,
              [number = i + 1](Program& p, const EventArgs&) { library::MakeMasterCR2(p, number); });
  using Plain = void (*)(Program&);
  const std::pair<const char*, Plain> plain[] = {{"menuNullFig", library::CreateNullFigure},
                                                 {"menuGeomSwitch", library::GeomSwitchMenu},
                                                 {"MenuMakeMTL", library::MakeMTL},
                                                 {"MenuPZ3AVI", library::MakeAVIBackground},
                                                 {"MenuP3P4Cam", library::RestoreCamera}};
  for (const auto& entry : plain) {
    Plain handler = entry.second;
    table.add("Opening", entry.first, EventKind::Click, [handler](Program& p, const EventArgs&) { handler(p); });
  }
  table.add("Opening", "ListAltGeomActors", EventKind::DblClick,
            [](Program& p, const EventArgs&) { library::AltGeomActorsDblClick(p); });
  table.add("Opening", "ListAltGeomActors", EventKind::RightClick,
            [](Program& p, const EventArgs&) { library::AltGeomActorsRightClick(p); });
}

}  // namespace tolvane
