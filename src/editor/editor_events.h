// The handlers of the Manual Editor: the hand-over from the main form and every event
// of FormEditor.
#pragma once

#include "program/events.h"

namespace tolvane {

void registerEditorEvents(EventTable& table);

}  // namespace tolvane
