#include "ui/text_pane.h"

namespace tolvane::ui {

TextPane::TextPane(Form* form, std::string name) : Control(form, std::move(name), ControlKind::TextPane) {}

}  // namespace tolvane::ui
