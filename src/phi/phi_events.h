// The handlers of the Phi tools: the creator and viewer on the main form's menu,
// FormPhi and FormTree.
#pragma once

#include "program/events.h"

namespace tolvane {

void registerPhiEvents(EventTable& table);

}  // namespace tolvane
