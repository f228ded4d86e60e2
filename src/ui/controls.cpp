#include "ui/controls.h"

#include <algorithm>

#include "text/runtime_error.h"
#include "ui/form.h"

namespace tolvane::ui {

Control::Control(Form* form, std::string name, ControlKind kind)
    : m_form(form), m_name(std::move(name)), m_kind(kind) {
  if (m_form != nullptr) m_form->add(this);
}

void Control::changed() {
  ++m_revision;
  if (m_form != nullptr) m_form->notify(this);
}

void Control::setFocus() {
  if (m_form != nullptr) m_form->focus(this);
}

const std::string& ListBox::list(int index) const {
  if (index < 0 || index >= listCount()) text::raiseError(text::kSubscriptOutOfRange);
  return m_items[static_cast<std::size_t>(index)];
}

void ListBox::addItem(const std::string& item) {
  m_items.push_back(item);
  m_selected.push_back(0);
  changed();
}

void ListBox::removeItem(int index) {
  if (index < 0 || index >= listCount()) text::raiseError(text::kInvalidProcedureCall);
  m_items.erase(m_items.begin() + index);
  m_selected.erase(m_selected.begin() + index);
  if (m_listIndex >= listCount()) m_listIndex = listCount() - 1;
  if (m_listIndex == index) m_listIndex = -1;
  else if (m_listIndex > index) --m_listIndex;
  changed();
}

void ListBox::clear() {
  if (m_items.empty() && m_listIndex == -1) return;
  m_items.clear();
  m_selected.clear();
  m_listIndex = -1;
  changed();
}

void ListBox::setItems(std::vector<std::string> items) {
  m_items = std::move(items);
  m_selected.assign(m_items.size(), 0);
  m_listIndex = -1;
  changed();
}

void ListBox::setItem(int index, const std::string& text) {
  if (index < 0 || index >= listCount()) text::raiseError(text::kSubscriptOutOfRange);
  m_items[static_cast<std::size_t>(index)] = text;
  changed();
}

int ListBox::indexOf(const std::string& text) const {
  auto it = std::find(m_items.begin(), m_items.end(), text);
  return it == m_items.end() ? -1 : static_cast<int>(it - m_items.begin());
}

bool ListBox::selected(int index) const {
  if (index < 0 || index >= listCount()) text::raiseError(text::kSubscriptOutOfRange);
  return m_selected[static_cast<std::size_t>(index)] != 0;
}

void ListBox::setSelected(int index, bool on) {
  if (index < 0 || index >= listCount()) text::raiseError(text::kSubscriptOutOfRange);
  if (!m_multiSelect && on) std::fill(m_selected.begin(), m_selected.end(), 0);
  m_selected[static_cast<std::size_t>(index)] = on ? 1 : 0;
  if (on) m_listIndex = index;
  changed();
}

std::vector<int> ListBox::selectedIndexes() const {
  std::vector<int> out;
  for (std::size_t i = 0; i < m_selected.size(); ++i)
    if (m_selected[i]) out.push_back(static_cast<int>(i));
  return out;
}

int ListBox::selCount() const {
  return static_cast<int>(std::count(m_selected.begin(), m_selected.end(), 1));
}

void ListBox::setListIndex(int index) {
  if (index < -1 || index >= listCount()) text::raiseError(text::kInvalidProcedureCall);
  if (!m_multiSelect) {
    std::fill(m_selected.begin(), m_selected.end(), 0);
    if (index >= 0) m_selected[static_cast<std::size_t>(index)] = 1;
  }
  m_listIndex = index;
  changed();
}

std::string ListBox::text() const {
  return m_listIndex >= 0 && m_listIndex < listCount() ? m_items[static_cast<std::size_t>(m_listIndex)]
                                                       : std::string();
}

void OptionButton::setValue(bool v) {
  if (v && form() != nullptr)
    for (Control* c : form()->controls()) {
      auto* sibling = dynamic_cast<OptionButton*>(c);
      if (sibling != nullptr && sibling != this && sibling->m_container == m_container)
        sibling->CheckBox::setValue(false);
    }
  CheckBox::setValue(v);
}

void ComboBox::addItem(const std::string& item) {
  m_items.push_back(item);
  changed();
}

void ComboBox::clear() {
  m_items.clear();
  changed();
}

Form::Form(std::string name) : m_name(std::move(name)) {}

Control* Form::control(const std::string& name) const {
  auto it = m_byName.find(name);
  return it == m_byName.end() ? nullptr : it->second;
}

void Form::add(Control* control) {
  m_byName[control->name()] = control;
  m_order.push_back(control);
}

void Form::setCaption(const std::string& caption) {
  if (m_caption == caption) return;
  m_caption = caption;
  notify(nullptr);
}

void Form::setVisible(bool visible) {
  if (m_visible == visible) return;
  m_visible = visible;
  notify(nullptr);
}

void Form::setBusy(bool busy) {
  if (m_busy == busy) return;
  m_busy = busy;
  if (!busy) m_progressDone = m_progressTotal = 0;
  notify(nullptr);
}

void Form::setProgress(std::uint64_t done, std::uint64_t total) {
  if (m_progressDone == done && m_progressTotal == total) return;
  m_progressDone = done;
  m_progressTotal = total;
  notify(nullptr);
}

void Form::notify(Control* control) {
  if (m_observer) m_observer(*this, control);
}

void Form::focus(Control* control) {
  if (m_focused == control) return;
  if (m_focused != nullptr) m_focused->m_focus = false;
  m_focused = control;
  control->m_focus = true;
  control->changed();
}

}  // namespace tolvane::ui
