// The workspace's handlers: start-up and exit, open, the list readers' clicks, save and
// the path boxes, the Bracket Checker and files dropped on the main form.
#pragma once

#include "program/events.h"

namespace tolvane {

void registerStartupEvents(EventTable& table);
void registerWorkspaceEvents(EventTable& table);

}  // namespace tolvane
