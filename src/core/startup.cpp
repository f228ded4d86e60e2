#include "core/startup.h"

#include "program/events.h"
#include "program/program.h"

namespace tolvane {

void registerStartupEvents(EventTable& table) { (void)table; }

}  // namespace tolvane
