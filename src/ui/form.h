// A form model: a named set of controls, looked up by their names, with one observer
// that the view sets to learn which control changed.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "ui/controls.h"

namespace tolvane::ui {

enum class WindowState { Normal, Minimized, Maximized };

class Form {
 public:
  explicit Form(std::string name);
  virtual ~Form() = default;
  Form(const Form&) = delete;
  Form& operator=(const Form&) = delete;

  const std::string& name() const { return m_name; }
  Control* control(const std::string& name) const;
  const std::vector<Control*>& controls() const { return m_order; }

  const std::string& caption() const { return m_caption; }
  void setCaption(const std::string& caption);
  bool visible() const { return m_visible; }
  void setVisible(bool visible);
  WindowState windowState() const { return m_windowState; }
  void setWindowState(WindowState state) { m_windowState = state; }
  // The busy pointer of the form: the hourglass during a long job.
  bool busy() const { return m_busy; }
  // Ending the job also forgets how far it came.
  void setBusy(bool busy);
  // How far the busy job is: `done` of `total` bytes, 0 of 0 while not known.
  std::uint64_t progressDone() const { return m_progressDone; }
  std::uint64_t progressTotal() const { return m_progressTotal; }
  void setProgress(std::uint64_t done, std::uint64_t total);

  using Observer = std::function<void(Form&, Control*)>;  // nullptr control: the form itself
  void setObserver(Observer observer) { m_observer = std::move(observer); }
  void notify(Control* control);

  Control* focused() const { return m_focused; }

 private:
  friend class Control;
  void add(Control* control);
  void focus(Control* control);

  std::string m_name;
  std::string m_caption;
  bool m_visible = false;
  bool m_busy = false;
  std::uint64_t m_progressDone = 0;
  std::uint64_t m_progressTotal = 0;
  WindowState m_windowState = WindowState::Normal;
  std::map<std::string, Control*> m_byName;
  std::vector<Control*> m_order;
  Control* m_focused = nullptr;
  Observer m_observer;
};

}  // namespace tolvane::ui
