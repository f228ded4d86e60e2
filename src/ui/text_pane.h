// An editor pane as a control of its form: visibility, colours, focus, width and place
// in front, with the text control that holds its text. The pane keeps an in-memory text
// control of its own; a view can put its editor widget in its place.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "ui/memory_text_control.h"

namespace tolvane::ui {

class TextPane : public Control {
 public:
  TextPane(Form* form, std::string name);

  // The text control now in use: the pane's own one, or the one a view attached.
  TextControl& text() { return *m_control; }
  const TextControl& text() const { return *m_control; }
  TextControl* operator->() { return m_control; }
  const TextControl* operator->() const { return m_control; }

  // Puts `control` in place of the in-memory one, handing over text, selection and
  // modified flag. Detach hands them back; a view detaches before it goes.
  void attach(TextControl* control);
  void detach();
  bool attached() const { return m_control != &m_memory; }

  // Width in pixels; kFullWidth fills the form.
  static constexpr int kFullWidth = -1;
  int width() const { return m_width; }
  void setWidth(int width) { set(m_width, width); }
  // Panes overlap; the one with the highest order is in front.
  int zOrder() const { return m_zOrder; }
  void setZOrder(int order) { set(m_zOrder, order); }

  // Tells the view that the text or selection changed through the model.
  void textChanged() { changed(); }

 private:
  static void handOver(TextControl& from, TextControl& to);

  MemoryTextControl m_memory;
  TextControl* m_control = &m_memory;
  int m_width = kFullWidth;
  int m_zOrder = 0;
};

}  // namespace tolvane::ui
