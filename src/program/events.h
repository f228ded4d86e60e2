// Events by name. Every event of every form (a click, a right click, a double click,
// Enter in a box, a drop, a timer tick) is one handler, registered under its form,
// control and kind in one table. The GUI and the script runner both dispatch through
// it; the dispatcher reports run-time errors that no tool trapped and keeps going.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

namespace tolvane {

class Program;

enum class EventKind {
  Click, RightClick, DblClick, Enter, Press, Release, RightRelease, Change,
  Key, Drop, Timer, MouseMove, Load, Unload, Select
};

struct EventArgs {
  int keyCode = 0;      // Key: the key code (13 Enter, 27 Escape, 114 F3, ...)
  int shift = 0;        // 1 Shift, 2 Ctrl, 4 Alt
  int button = 1;       // 1 left, 2 right
  double x = 0, y = 0;  // mouse position in the control
  std::string source;   // Drop: "Form.Control" the lines were dragged from
  std::vector<std::string> files;  // Drop: files dropped from the desktop
};

using Handler = std::function<void(Program&, const EventArgs&)>;

class EventTable {
 public:
  void add(const std::string& form, const std::string& control, EventKind kind, Handler handler);
  const Handler* find(const std::string& form, const std::string& control, EventKind kind) const;
  bool has(const std::string& form, const std::string& control, EventKind kind) const {
    return find(form, control, kind) != nullptr;
  }

 private:
  std::map<std::tuple<std::string, std::string, EventKind>, Handler> m_handlers;
};

// Runs the handler for the event, if there is one; returns whether there was. A
// run-time error that escapes the handler is shown as "Run-time error 'N':" with its
// text; the busy pointer is reset and the program goes on.
bool fireEvent(Program& program, const std::string& form, const std::string& control, EventKind kind,
               const EventArgs& args = {});

// Runs any command under the same error report as an event.
void runGuarded(Program& program, const std::function<void()>& command);

std::optional<EventKind> eventKindFromName(const std::string& name);
const char* eventKindName(EventKind kind);

}  // namespace tolvane
