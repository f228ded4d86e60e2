// Registers the handlers of the remote-control morph tools: the channel listing and
// ratio change, the controlled morph builder, and the unique figure name.
#pragma once

#include "program/events.h"

namespace tolvane {

void registerErcEvents(EventTable& table);

}  // namespace tolvane
