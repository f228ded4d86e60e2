// The handlers of the small utilities: the Dial Renamer, renumbering, the version check,
// help and outside programs, the map viewer and the three viewers.
#pragma once

#include "program/events.h"

namespace tolvane {

void registerUtilitiesEvents(EventTable& table);

}  // namespace tolvane
