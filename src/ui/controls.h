// The controls of the form models as plain values: list box, label, text box, picture
// button, check box, option, menu item, timer, frame, slider, image and combo box.
// Each control belongs to a form, carries its form name, and tells the form when it
// changes, so that a view refreshes only what changed.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tolvane::ui {

// Colours as the forms keep them: six hex digits, blue-green-red (0xBBGGRR).
using Colour = std::uint32_t;
constexpr Colour kToolRest = 0xC0E0FF;   // a tool picture at rest
constexpr Colour kToolOn = 0x008000;     // a tool picture that is on
constexpr Colour kRed = 0x0000FF;        // the standard colour number 12
constexpr Colour kBlack = 0x000000;
constexpr Colour kWhite = 0xFFFFFF;

enum class ControlKind { Label, TextBox, ListBox, Picture, CheckBox, Option, Menu, Timer, Frame, Slider, Image, ComboBox, TextPane };

class Form;

class Control {
 public:
  Control(Form* form, std::string name, ControlKind kind);
  virtual ~Control() = default;
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  const std::string& name() const { return m_name; }
  ControlKind kind() const { return m_kind; }
  Form* form() const { return m_form; }
  std::uint64_t revision() const { return m_revision; }

  bool visible() const { return m_visible; }
  void setVisible(bool v) { set(m_visible, v); }
  bool enabled() const { return m_enabled; }
  void setEnabled(bool v) { set(m_enabled, v); }
  const std::string& toolTip() const { return m_toolTip; }
  void setToolTip(const std::string& v) { set(m_toolTip, v); }
  Colour foreColor() const { return m_foreColor; }
  void setForeColor(Colour v) { set(m_foreColor, v); }
  Colour backColor() const { return m_backColor; }
  void setBackColor(Colour v) { set(m_backColor, v); }
  int top() const { return m_top; }
  void setTop(int v) { set(m_top, v); }
  bool hasFocus() const { return m_focus; }
  void setFocus();

  void changed();  // tells the form's observer

 protected:
  template <class T>
  void set(T& member, const T& value) {
    if (member == value) return;
    member = value;
    changed();
  }

 private:
  friend class Form;
  Form* m_form;
  std::string m_name;
  ControlKind m_kind;
  std::uint64_t m_revision = 0;
  bool m_visible = true;
  bool m_enabled = true;
  bool m_focus = false;
  std::string m_toolTip;
  Colour m_foreColor = kBlack;
  Colour m_backColor = kWhite;
  int m_top = 0;
};

class Label : public Control {
 public:
  Label(Form* form, std::string name) : Control(form, std::move(name), ControlKind::Label) {}
  const std::string& caption() const { return m_caption; }
  void setCaption(const std::string& v) { set(m_caption, v); }

 private:
  std::string m_caption;
};

class TextBox : public Control {
 public:
  TextBox(Form* form, std::string name, bool multiLine = false)
      : Control(form, std::move(name), ControlKind::TextBox), m_multiLine(multiLine) {}
  const std::string& text() const { return m_text; }
  void setText(const std::string& v) { set(m_text, v); }
  bool multiLine() const { return m_multiLine; }

 private:
  std::string m_text;
  bool m_multiLine;
};

class ListBox : public Control {
 public:
  ListBox(Form* form, std::string name, bool multiSelect = false)
      : Control(form, std::move(name), ControlKind::ListBox), m_multiSelect(multiSelect) {}

  int listCount() const { return static_cast<int>(m_items.size()); }
  const std::string& list(int index) const;  // error 381-like misuse throws error 9
  const std::vector<std::string>& items() const { return m_items; }
  void addItem(const std::string& item);
  void removeItem(int index);
  void clear();
  void setItems(std::vector<std::string> items);
  void setItem(int index, const std::string& text);
  int indexOf(const std::string& text) const;  // -1 when absent

  bool selected(int index) const;
  void setSelected(int index, bool on);
  std::vector<int> selectedIndexes() const;
  int selCount() const;
  // Current entry, -1 for none. In a single-selection list it is the selection too.
  int listIndex() const { return m_listIndex; }
  void setListIndex(int index);
  bool multiSelect() const { return m_multiSelect; }
  // The text of the current entry, empty when there is none.
  std::string text() const;

 private:
  std::vector<std::string> m_items;
  std::vector<char> m_selected;
  int m_listIndex = -1;
  bool m_multiSelect;
};

// A picture used as a tool button; its back colour tells its mode.
class Picture : public Control {
 public:
  Picture(Form* form, std::string name) : Control(form, std::move(name), ControlKind::Picture) {
    setBackColor(kToolRest);
  }
};

class CheckBox : public Control {
 public:
  CheckBox(Form* form, std::string name, ControlKind kind = ControlKind::CheckBox)
      : Control(form, std::move(name), kind) {}
  bool value() const { return m_value; }
  virtual void setValue(bool v) { set(m_value, v); }
  const std::string& caption() const { return m_caption; }
  void setCaption(const std::string& v) { set(m_caption, v); }

 private:
  bool m_value = false;
  std::string m_caption;
};

class Frame;

// Option buttons with the same container, a frame or the form itself (nullptr), are one
// group: turning one on turns the others off, as the window's radio buttons do.
class OptionButton : public CheckBox {
 public:
  OptionButton(Form* form, std::string name, const Frame* container = nullptr)
      : CheckBox(form, std::move(name), ControlKind::Option), m_container(container) {}
  const Frame* container() const { return m_container; }
  void setValue(bool v) override;

 private:
  const Frame* m_container;
};

class MenuItem : public Control {
 public:
  MenuItem(Form* form, std::string name, std::string caption)
      : Control(form, std::move(name), ControlKind::Menu), m_caption(std::move(caption)) {}
  const std::string& caption() const { return m_caption; }
  void setCaption(const std::string& v) { set(m_caption, v); }
  bool checked() const { return m_checked; }
  void setChecked(bool v) { set(m_checked, v); }

 private:
  std::string m_caption;
  bool m_checked = false;
};

class Timer : public Control {
 public:
  Timer(Form* form, std::string name, int intervalMs)
      : Control(form, std::move(name), ControlKind::Timer), m_interval(intervalMs) {
    setEnabled(false);
  }
  int interval() const { return m_interval; }
  void setInterval(int v) { set(m_interval, v); }

 private:
  int m_interval;
};

class Frame : public Control {
 public:
  Frame(Form* form, std::string name) : Control(form, std::move(name), ControlKind::Frame) {}
};

class Slider : public Control {
 public:
  Slider(Form* form, std::string name, int min, int max)
      : Control(form, std::move(name), ControlKind::Slider), m_min(min), m_max(max), m_value(min) {}
  int value() const { return m_value; }
  void setValue(int v) { set(m_value, v); }
  int min() const { return m_min; }
  int max() const { return m_max; }

 private:
  int m_min, m_max, m_value;
};

// A still picture (splash, tile).
class Image : public Control {
 public:
  Image(Form* form, std::string name) : Control(form, std::move(name), ControlKind::Image) {}
};

class ComboBox : public Control {
 public:
  ComboBox(Form* form, std::string name) : Control(form, std::move(name), ControlKind::ComboBox) {}
  const std::string& text() const { return m_text; }
  void setText(const std::string& v) { set(m_text, v); }
  const std::vector<std::string>& items() const { return m_items; }
  void addItem(const std::string& item);
  void clear();

 private:
  std::string m_text;
  std::vector<std::string> m_items;
};

}  // namespace tolvane::ui
