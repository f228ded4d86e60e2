// The handlers of the channel viewer and the morph tools.
#pragma once

#include "program/events.h"

namespace tolvane {

void registerMorphEvents(EventTable& table);
// The dial attribute tools, the joint transfer, the mirrored copy and the morph target
// export; registerMorphEvents calls it.
void registerChannelToolEvents(EventTable& table);

}  // namespace tolvane
