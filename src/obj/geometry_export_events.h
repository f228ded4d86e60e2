// The handlers of the embedded geometry export, the external-OBJ library file and the
// Material Coordinator.
#pragma once

#include "program/events.h"

namespace tolvane {

void registerGeometryExportEvents(EventTable& table);

}  // namespace tolvane
