// The handlers of the install tool: the menu line, the three inventory pictures and the
// installer's folder form.
#pragma once

#include "program/events.h"

namespace tolvane {

void registerInstallEvents(EventTable& table);

}  // namespace tolvane
