// The handlers of the channel viewer and the morph tools.
#pragma once

#include "program/events.h"

namespace tolvane {

void registerMorphEvents(EventTable& table);

}  // namespace tolvane
