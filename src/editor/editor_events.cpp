// Registers the handlers of the Manual Editor.
#include "program/events.h"

namespace tolvane {

void registerEditorEvents(EventTable& table) { (void)table; }

}  // namespace tolvane
