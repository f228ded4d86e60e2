#include "gui/form_binding.h"

#include <QAbstractScrollArea>
#include <QEvent>
#include <QKeyEvent>
#include <QKeySequence>
#include <QMouseEvent>
#include <QTimer>
#include <algorithm>
#include <vector>

#include "gui/binders.h"
#include "gui/picture_button.h"
#include "gui/pictures.h"
#include "gui/qt_text.h"
#include "program/program.h"

namespace tolvane::gui {

int FormBinding::s_running = 0;
QString FormBinding::s_work;

namespace {
std::vector<FormBinding*>& liveBindings() {
  static std::vector<FormBinding*> bindings;
  return bindings;
}

EventArgs mouseArgs(const QMouseEvent& e) {
  EventArgs args;
  args.button = e.button() == Qt::RightButton || (e.buttons() & Qt::RightButton) ? 2 : 1;
  args.shift = shiftState(e.modifiers());
  args.x = e.position().x();
  args.y = e.position().y();
  return args;
}
}  // namespace

Dispatch defaultDispatch() {
  return [](Program& program, const std::string& form, const std::string& control, EventKind kind,
            const EventArgs& args) { return fireEvent(program, form, control, kind, args); };
}

ControlBinder::ControlBinder(FormBinding& binding, ui::Control& control, QWidget* widget)
    : QObject(&binding), m_binding(binding), m_control(control), m_widget(widget) {}

ControlBinder::~ControlBinder() = default;

void ControlBinder::refresh() {
  const ui::Control& c = m_control;
  m_updating = true;
  if (m_first || c.visible() != m_visible) applyVisible(m_visible = c.visible());
  if (m_first || c.enabled() != m_enabled) applyEnabled(m_enabled = c.enabled());
  if (m_first || c.toolTip() != m_toolTip) {
    m_toolTip = c.toolTip();
    if (m_widget != nullptr) {
      QString tip = fromBytes(m_toolTip);
      if (tip.isEmpty()) tip = defaultToolTip(c.name());
      if (tip.isEmpty()) tip = m_widget->property(kToolTipProperty).toString();
      // A picture is read out by what its tool tip says; the tool tip also names the
      // keys that press it.
      if (qobject_cast<PictureButton*>(m_widget) != nullptr) m_widget->setAccessibleName(tip);
      QKeySequence keys = m_widget->property(kShortcutProperty).value<QKeySequence>();
      if (!keys.isEmpty() && !tip.isEmpty()) tip += " (" + keys.toString(QKeySequence::NativeText) + ")";
      m_widget->setToolTip(tip);
    }
  }
  if (m_first || c.foreColor() != m_fore || c.backColor() != m_back)
    applyColours(m_fore = c.foreColor(), m_back = c.backColor());
  if (m_first || c.top() != m_top) applyTop(m_top = c.top());
  if (c.hasFocus() != m_focus) {
    m_focus = c.hasFocus();
    if (m_focus && m_widget != nullptr) m_widget->setFocus(Qt::OtherFocusReason);
  }
  refreshContent(m_first);
  m_first = false;
  m_updating = false;
}

void ControlBinder::applyVisible(bool visible) {
  if (m_widget != nullptr) m_widget->setVisible(visible);
}

void ControlBinder::applyEnabled(bool enabled) {
  if (m_widget != nullptr) m_widget->setEnabled(enabled);
}

void ControlBinder::applyColours(ui::Colour fore, ui::Colour back) {
  if (m_widget == nullptr) return;
  QPalette palette = m_widget->palette();
  palette.setColor(QPalette::Text, toQColor(fore));
  palette.setColor(QPalette::WindowText, toQColor(fore));
  palette.setColor(QPalette::Base, toQColor(back));
  m_widget->setPalette(palette);
}

void ControlBinder::applyTop(int top) {
  // Only a widget placed by hand moves; widgets in a layout keep their place.
  if (m_widget != nullptr && top > 0 && m_widget->parentWidget() != nullptr &&
      m_widget->parentWidget()->layout() == nullptr)
    m_widget->move(m_widget->x(), top);
}

bool ControlBinder::fire(EventKind kind, const EventArgs& args) {
  return m_binding.fire(&m_control, kind, args);
}

void ControlBinder::watchInput(QWidget* source, bool clickOnRelease) {
  m_clickOnRelease = clickOnRelease;
  source->installEventFilter(this);
  source->setMouseTracking(true);
}

bool ControlBinder::eventFilter(QObject* watched, QEvent* event) {
  auto* source = qobject_cast<QWidget*>(watched);
  switch (event->type()) {
    case QEvent::MouseButtonPress:
      fire(EventKind::Press, mouseArgs(*static_cast<QMouseEvent*>(event)));
      break;
    case QEvent::MouseButtonRelease: {
      auto* e = static_cast<QMouseEvent*>(event);
      EventArgs args = mouseArgs(*e);
      fire(EventKind::Release, args);
      bool inside = source != nullptr && source->rect().contains(e->position().toPoint());
      if (e->button() == Qt::RightButton) {
        fire(EventKind::RightRelease, args);
        if (inside) fire(EventKind::RightClick, args);
      } else if (e->button() == Qt::LeftButton && inside && m_clickOnRelease && !m_afterDoubleClick) {
        fire(EventKind::Click, args);
      }
      m_afterDoubleClick = false;
      break;
    }
    case QEvent::MouseButtonDblClick:
      if (static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton) {
        fire(EventKind::DblClick, mouseArgs(*static_cast<QMouseEvent*>(event)));
        // The release that ends a double click is no second click.
        m_afterDoubleClick = true;
        if (m_clickOnRelease) return true;
      }
      break;
    case QEvent::MouseMove:
      fire(EventKind::MouseMove, mouseArgs(*static_cast<QMouseEvent*>(event)));
      break;
    case QEvent::KeyPress: {
      auto* e = static_cast<QKeyEvent*>(event);
      EventArgs args;
      args.keyCode = keyCode(e->key());
      args.shift = shiftState(e->modifiers());
      if (args.keyCode != 0) fire(EventKind::Key, args);
      if (args.keyCode == 13) fire(EventKind::Enter, args);
      break;
    }
    default:
      break;
  }
  return false;
}

FormBinding::FormBinding(Program& program, ui::Form& form, Dispatch dispatch, QObject* parent)
    : QObject(parent), m_program(program), m_form(form), m_dispatch(std::move(dispatch)) {
  m_form.setObserver([this](ui::Form&, ui::Control* control) { modelChanged(control); });
  liveBindings().push_back(this);
}

FormBinding::~FormBinding() {
  m_form.setObserver(nullptr);
  auto& live = liveBindings();
  live.erase(std::remove(live.begin(), live.end(), this), live.end());
  m_dirty.clear();
  m_binders.clear();
}

ControlBinder* FormBinding::bind(ui::Control& control, QObject* target) {
  return bindWith(control, makeBinder(*this, control, target));
}

ControlBinder* FormBinding::bindWith(ui::Control& control, std::unique_ptr<ControlBinder> made) {
  ControlBinder* binder = made.get();
  m_dirty.erase(m_binders[&control].get());
  m_binders[&control] = std::move(made);
  binder->refresh();
  return binder;
}

ControlBinder* FormBinding::binder(const ui::Control& control) const {
  auto it = m_binders.find(&control);
  return it == m_binders.end() ? nullptr : it->second.get();
}

bool FormBinding::fire(const ui::Control* control, EventKind kind, const EventArgs& args) {
  const std::string& name = control != nullptr ? control->name() : m_form.name();
  // What the user started, for the status bar while it runs: the tool tip or caption
  // of the control (a menu item's caption without its access key).
  QString previousWork = s_work;
  if (control != nullptr && kind != EventKind::MouseMove) {
    QString work;
    if (ControlBinder* b = binder(*control); b != nullptr && b->widget() != nullptr)
      work = b->widget()->property(kToolTipProperty).toString();
    if (work.isEmpty()) work = fromBytes(control->toolTip());
    if (work.isEmpty()) work = defaultToolTip(control->name());
    if (work.isEmpty() && control->kind() == ui::ControlKind::Menu)
      work = fromBytes(static_cast<const ui::MenuItem*>(control)->caption()).remove('&');
    if (!work.isEmpty()) s_work = work;
  }
  struct RestoreWork {
    QString previous;
    ~RestoreWork() { FormBinding::s_work = previous; }
  } restore{previousWork};
  ++s_running;
  bool handled = false;
  try {
    handled = m_dispatch(m_program, m_form.name(), name, kind, args);
  } catch (...) {
    --s_running;
    throw;
  }
  --s_running;
  if (handled) {
    flushAll();
    emit eventHandled();
  }
  return handled;
}

void FormBinding::modelChanged(ui::Control* control) {
  if (control == nullptr) {
    emit formChanged();
    return;
  }
  ControlBinder* b = binder(*control);
  if (b == nullptr) return;
  m_dirty.insert(b);
  postFlush();
}

void FormBinding::postFlush() {
  if (m_flushPosted) return;
  m_flushPosted = true;
  QTimer::singleShot(0, this, [this] { flush(); });
}

void FormBinding::flush() {
  m_flushPosted = false;
  // A refresh can change the model again (a user edit echoed back); take the set first.
  std::set<ControlBinder*> dirty;
  dirty.swap(m_dirty);
  for (ControlBinder* b : dirty) b->refresh();
}

void FormBinding::flushAll() {
  for (FormBinding* b : std::vector<FormBinding*>(liveBindings())) b->flush();
}

}  // namespace tolvane::gui
