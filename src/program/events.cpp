#include "program/events.h"

#include <filesystem>
#include <new>

#include "text/runtime_error.h"
#include "program/program.h"
#include "ui/services.h"

namespace tolvane {

void EventTable::add(const std::string& form, const std::string& control, EventKind kind, Handler handler) {
  m_handlers[{form, control, kind}] = std::move(handler);
}

const Handler* EventTable::find(const std::string& form, const std::string& control, EventKind kind) const {
  auto it = m_handlers.find({form, control, kind});
  return it == m_handlers.end() ? nullptr : &it->second;
}

namespace {
void reportRunTimeError(Program& program, int number, const std::string& text) {
  program.setBusy(false);
  ui::msgBox(program.services, "Run-time error '" + std::to_string(number) + "':\r\n\r\n" + text, kAppName,
             ui::Buttons::OK, ui::Icon::Critical);
}
}  // namespace

void runGuarded(Program& program, const std::function<void()>& command) {
  // The handler's reading loops report to this program, whichever program came last.
  text::PaceScope pace(program.pace());
  try {
    command();
  } catch (const text::RuntimeError& e) {
    std::string text = e.text();
    if (!e.path().empty()) text += "\r\n" + e.path();
    reportRunTimeError(program, e.number(), text);
  } catch (const std::filesystem::filesystem_error& e) {
    reportRunTimeError(program, text::kPathFileAccessError, e.what());
  } catch (const std::bad_alloc&) {
    reportRunTimeError(program, text::kOutOfMemory, text::errorText(text::kOutOfMemory));
  }
}

bool fireEvent(Program& program, const std::string& form, const std::string& control, EventKind kind,
               const EventArgs& args) {
  const Handler* handler = program.events().find(form, control, kind);
  if (handler == nullptr) return false;
  runGuarded(program, [&] { (*handler)(program, args); });
  return true;
}

namespace {
const std::pair<EventKind, const char*> kKindNames[] = {
    {EventKind::Click, "click"},         {EventKind::RightClick, "rightclick"},
    {EventKind::DblClick, "dblclick"},   {EventKind::Enter, "enter"},
    {EventKind::Press, "press"},         {EventKind::Release, "release"},
    {EventKind::RightRelease, "rightrelease"}, {EventKind::Change, "change"},
    {EventKind::Key, "key"},             {EventKind::Drop, "drop"},
    {EventKind::Timer, "timer"},         {EventKind::MouseMove, "mousemove"},
    {EventKind::Load, "load"},           {EventKind::Unload, "unload"},
    {EventKind::Select, "select"},
};
}  // namespace

std::optional<EventKind> eventKindFromName(const std::string& name) {
  for (const auto& [kind, text] : kKindNames)
    if (name == text) return kind;
  return std::nullopt;
}

const char* eventKindName(EventKind kind) {
  for (const auto& [k, text] : kKindNames)
    if (k == kind) return text;
  return "?";
}

}  // namespace tolvane
