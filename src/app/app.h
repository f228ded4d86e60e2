// The one place that names every subsystem: it builds the program's event table from
// each subsystem's registrations and wires the hooks by which one layer reaches a tool
// it may not include (the workspace showing the Manual Editor).
#pragma once

#include "program/events.h"

namespace tolvane {
class Program;
}

namespace tolvane::app {

// Every handler of every form, built on first use.
const EventTable& eventTable();

// Gives a new program its event table and its hooks; every front end calls it once.
void wire(Program& program);

}  // namespace tolvane::app
