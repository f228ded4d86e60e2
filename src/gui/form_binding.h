// Keeps Qt widgets in step with a form model. A FormBinding observes one form, gives
// each bound control a binder that refreshes only what changed in the model, and turns
// what the user does into model changes and events dispatched by name.
#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>

#include "program/events.h"
#include "ui/form.h"

namespace tolvane {
class Program;
}

namespace tolvane::gui {

// How events reach their handlers: fireEvent in the program, a recorder in tests.
using Dispatch = std::function<bool(Program&, const std::string& form, const std::string& control, EventKind,
                                    const EventArgs&)>;
Dispatch defaultDispatch();

class FormBinding;

// The widget property that holds the keys of a control's action (a QKeySequence); its
// tool tip then names them.
inline constexpr const char* kShortcutProperty = "tolvaneShortcut";
// The tool tip a window gives a control whose form has none.
inline constexpr const char* kToolTipProperty = "tolvaneToolTip";

// Base of the per-kind binders: the properties every control has (visibility,
// enabled, tool tip, colours, top, focus) and the mouse and key events of its widget.
class ControlBinder : public QObject {
  Q_OBJECT
 public:
  ControlBinder(FormBinding& binding, ui::Control& control, QWidget* widget);
  ~ControlBinder() override;

  ui::Control& control() const { return m_control; }
  QWidget* widget() const { return m_widget; }
  // Applies what changed in the model since the last refresh.
  void refresh();

 protected:
  virtual void refreshContent(bool first) = 0;
  virtual void applyVisible(bool visible);
  virtual void applyEnabled(bool enabled);
  virtual void applyColours(ui::Colour fore, ui::Colour back);
  virtual void applyTop(int top);

  bool fire(EventKind kind, const EventArgs& args = {});
  // Reports presses, releases, clicks, double clicks, moves and keys of `source` (the
  // widget or its viewport). Lists report their clicks from their own signals.
  void watchInput(QWidget* source, bool clickOnRelease);
  bool eventFilter(QObject* watched, QEvent* event) override;

  FormBinding& m_binding;
  ui::Control& m_control;
  QPointer<QWidget> m_widget;
  bool m_updating = false;  // set while the binder writes to the widget

 private:
  bool m_first = true;
  bool m_clickOnRelease = true;
  bool m_afterDoubleClick = false;
  bool m_visible = false, m_enabled = false, m_focus = false;
  std::string m_toolTip;
  ui::Colour m_fore = 0, m_back = 0;
  int m_top = 0;
};

class FormBinding : public QObject {
  Q_OBJECT
 public:
  FormBinding(Program& program, ui::Form& form, Dispatch dispatch, QObject* parent = nullptr);
  ~FormBinding() override;

  Program& program() const { return m_program; }
  ui::Form& form() const { return m_form; }

  // Binds a control to its widget (a QAction for a menu item, nothing for a timer) and
  // shows the model's state at once.
  ControlBinder* bind(ui::Control& control, QObject* target);
  // Binds a control with a binder of the window's own, for a widget that the binders of
  // the control kinds do not cover (the editor's text panes).
  ControlBinder* bindWith(ui::Control& control, std::unique_ptr<ControlBinder> binder);
  ControlBinder* binder(const ui::Control& control) const;
  bool isBound(const ui::Control& control) const { return binder(control) != nullptr; }

  // Dispatches an event of a control (nullptr: the form itself), then shows the changes.
  bool fire(const ui::Control* control, EventKind kind, const EventArgs& args = {});
  // Applies the pending model changes of this form now.
  void flush();
  // ... of every form.
  static void flushAll();
  // Whether a handler is running (the event loop runs inside long jobs and dialogs).
  static bool handlerRunning() { return s_running > 0; }
  // A few words on what the running handler does ("Check the brackets"), or nothing.
  static QString currentWork() { return s_work; }

 signals:
  // The form's caption, visibility or busy state changed.
  void formChanged();
  // A handler ran for an event of this form.
  void eventHandled();

 private:
  void modelChanged(ui::Control* control);
  void postFlush();

  Program& m_program;
  ui::Form& m_form;
  Dispatch m_dispatch;
  std::map<const ui::Control*, std::unique_ptr<ControlBinder>> m_binders;
  std::set<ControlBinder*> m_dirty;
  bool m_flushPosted = false;
  static int s_running;
  static QString s_work;
};

}  // namespace tolvane::gui
