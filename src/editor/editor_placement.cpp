#include "editor/editor_placement.h"

#include "text/run_time_number.h"
#include "text/runtime_error.h"
#include "program/program.h"

namespace tolvane::editor {

namespace {
constexpr const char* kSection = "Editor";

struct Entry {
  const char* key;
  int ui::FormEditor::*value;
  int minimum;
};
constexpr Entry kEntries[] = {
    {"Left", &ui::FormEditor::Left, -10000},
    {"Top", &ui::FormEditor::Top, -10000},
    {"Width", &ui::FormEditor::Width, 200},
    {"Height", &ui::FormEditor::Height, 150},
};
}  // namespace

void loadPlacement(Program& program) {
  ui::FormEditor& form = program.formEditor;
  for (const Entry& e : kEntries) {
    std::string value = program.settings.get(kAppName, kSection, e.key, "");
    if (value.empty()) continue;
    int number = static_cast<int>(text::Val(value));
    if (number >= e.minimum) form.*e.value = number;
  }
}

void savePlacement(Program& program) {
  ui::FormEditor& form = program.formEditor;
  text::ignoreErrors([&] {
    for (const Entry& e : kEntries)
      program.settings.save(kAppName, kSection, e.key, std::to_string(form.*e.value));
  });
}

}  // namespace tolvane::editor
