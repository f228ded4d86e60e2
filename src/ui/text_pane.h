// An editor pane as a control of its form: visibility, colours, focus, width and place
// in front, with the text control that holds its text in memory. A view draws the pane
// from the text control and edits through it, so the handlers and the view always see
// the same text.
#pragma once

#include <cstdint>
#include <string>

#include "ui/memory_text_control.h"

namespace tolvane::ui {

class TextPane : public Control {
 public:
  TextPane(Form* form, std::string name);

  TextControl& text() { return m_control; }
  const TextControl& text() const { return m_control; }
  TextControl* operator->() { return &m_control; }
  const TextControl* operator->() const { return &m_control; }

  // Width in pixels; kFullWidth fills the form.
  static constexpr int kFullWidth = -1;
  int width() const { return m_width; }
  void setWidth(int width) { set(m_width, width); }
  // Panes overlap; the one with the highest order is in front.
  int zOrder() const { return m_zOrder; }
  void setZOrder(int order) { set(m_zOrder, order); }

  // Tells the view that the text or the selection changed.
  void textChanged() { changed(); }

 private:
  MemoryTextControl m_control;
  int m_width = kFullWidth;
  int m_zOrder = 0;
};

}  // namespace tolvane::ui
