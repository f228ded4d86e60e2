#include "library/library_events.h"

#include "library/master_cr2.h"

namespace tolvane {

void registerLibraryEvents(EventTable& table) {
  const char* masters[] = {"MenuP3Male", "MenuP3Female", "MenuP4Male", "MenuP4Female",
                           "MenuVic",    "MenuAnyMasterStandard", "MenuAnyMasterNoFBM"};
  for (int i = 0; i < 7; ++i)
    table.add("Opening", masters[i], EventKind::Click,
              [number = i + 1](Program& p, const EventArgs&) { library::MakeMasterCR2(p, number); });
  table.add("Opening", "menuNullFig", EventKind::Click,
            [](Program& p, const EventArgs&) { library::CreateNullFigure(p); });
}

}  // namespace tolvane
