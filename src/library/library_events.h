// The handlers of the library file creators.
#pragma once

#include "program/events.h"

namespace tolvane {

void registerLibraryEvents(EventTable& table);

}  // namespace tolvane
