#include "ui/text_pane.h"

namespace tolvane::ui {

TextPane::TextPane(Form* form, std::string name) : Control(form, std::move(name), ControlKind::TextPane) {}

void TextPane::handOver(TextControl& from, TextControl& to) {
  std::int64_t start = from.selStart();
  std::int64_t length = from.selLength();
  bool modified = from.modified();
  to.setText(from.text());
  to.setSelection(start, length);
  to.setSelColor(from.selColor());
  to.setModified(modified);
}

void TextPane::attach(TextControl* control) {
  if (control == nullptr || control == m_control) return;
  handOver(*m_control, *control);
  m_memory.setText({});
  m_control = control;
  changed();
}

void TextPane::detach() {
  if (!attached()) return;
  handOver(*m_control, m_memory);
  m_control = &m_memory;
  changed();
}

}  // namespace tolvane::ui
