#include "gui/binders.h"

#include <QAbstractButton>
#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QSignalBlocker>
#include <QSlider>
#include <stdexcept>

#include "gui/picture_button.h"
#include "gui/pictures.h"
#include "gui/qt_text.h"

namespace tolvane::gui {

namespace {
template <class W>
W* need(QObject* target, const ui::Control& control) {
  auto* w = qobject_cast<W*>(target);
  if (w == nullptr) throw std::logic_error("no suitable widget for control " + control.name());
  return w;
}

template <class T>
T& model(ui::Control& control) {
  auto* c = dynamic_cast<T*>(&control);
  if (c == nullptr) throw std::logic_error("control " + control.name() + " is not of the expected kind");
  return *c;
}
}  // namespace

std::unique_ptr<ControlBinder> makeBinder(FormBinding& binding, ui::Control& control, QObject* target) {
  using K = ui::ControlKind;
  switch (control.kind()) {
    case K::Label:
      return std::make_unique<LabelBinder>(binding, model<ui::Label>(control),
                                           need<QWidget>(target, control));
    case K::TextBox:
    case K::TextPane:
      return std::make_unique<TextBoxBinder>(binding, model<ui::TextBox>(control),
                                             need<QWidget>(target, control));
    case K::ListBox:
      return std::make_unique<ListBinder>(binding, model<ui::ListBox>(control),
                                          need<QListWidget>(target, control));
    case K::Picture:
      if (auto* button = qobject_cast<PictureButton*>(target))
        return std::make_unique<PictureBinder>(binding, model<ui::Picture>(control), button);
      return std::make_unique<PlainBinder>(binding, control, need<QWidget>(target, control));
    case K::CheckBox:
    case K::Option:
      return std::make_unique<CheckBinder>(binding, model<ui::CheckBox>(control),
                                           need<QWidget>(target, control));
    case K::Menu:
      if (auto* menu = qobject_cast<QMenu*>(target))
        return std::make_unique<MenuBinder>(binding, model<ui::MenuItem>(control), menu->menuAction(), menu);
      return std::make_unique<MenuBinder>(binding, model<ui::MenuItem>(control),
                                          need<QAction>(target, control), nullptr);
    case K::Timer:
      return std::make_unique<TimerBinder>(binding, model<ui::Timer>(control));
    case K::Slider:
      return std::make_unique<SliderBinder>(binding, model<ui::Slider>(control),
                                            need<QSlider>(target, control));
    case K::ComboBox:
      return std::make_unique<ComboBinder>(binding, model<ui::ComboBox>(control),
                                           need<QComboBox>(target, control));
    case K::Frame:
    case K::Image:
      return std::make_unique<PlainBinder>(binding, control, need<QWidget>(target, control));
  }
  throw std::logic_error("unknown control kind of " + control.name());
}

void LineList::setDragSource(const QString& source) {
  m_source = source;
  setDragEnabled(!source.isEmpty());
  setDragDropMode(source.isEmpty() ? QAbstractItemView::NoDragDrop : QAbstractItemView::DragOnly);
  setDefaultDropAction(Qt::CopyAction);
}

QMimeData* LineList::mimeData(const QList<QListWidgetItem*>& items) const {
  QStringList lines;
  for (const QListWidgetItem* item : items) lines << item->text();
  return makeLinesMimeData(m_source, lines);
}

QStringList LineList::mimeTypes() const { return {QString::fromLatin1(kLinesMimeType)}; }

LabelBinder::LabelBinder(FormBinding& binding, ui::Label& label, QWidget* widget)
    : ControlBinder(binding, label, widget), m_label(label) {
  if (auto* l = qobject_cast<QLabel*>(widget)) l->setTextFormat(Qt::PlainText);
  watchInput(widget, true);
}

void LabelBinder::refreshContent(bool first) {
  if (!first && m_label.caption() == m_caption) return;
  m_caption = m_label.caption();
  QString text = fromDisplayBytes(m_caption);
  if (auto* l = qobject_cast<QLabel*>(m_widget))
    l->setText(text);
  else if (auto* b = qobject_cast<QAbstractButton*>(m_widget))
    b->setText(text);
}

void LabelBinder::applyColours(ui::Colour fore, ui::Colour back) {
  QPalette palette = m_widget->palette();
  palette.setColor(QPalette::WindowText, toQColor(fore));
  palette.setColor(QPalette::ButtonText, toQColor(fore));
  // White is the model's default: the label then shows the window's own background.
  bool own = back != ui::kWhite;
  if (own) palette.setColor(QPalette::Window, toQColor(back));
  m_widget->setAutoFillBackground(own);
  m_widget->setPalette(palette);
}

TextBoxBinder::TextBoxBinder(FormBinding& binding, ui::TextBox& box, QWidget* widget)
    : ControlBinder(binding, box, widget), m_box(box) {
  if (auto* line = qobject_cast<QLineEdit*>(widget)) {
    connect(line, &QLineEdit::textEdited, this, [this](const QString& text) { userEdited(toBytes(text)); });
    watchInput(line, true);
  } else if (auto* edit = qobject_cast<QPlainTextEdit*>(widget)) {
    connect(edit, &QPlainTextEdit::textChanged, this, [this, edit] {
      if (!m_updating) userEdited(toBytesMultiLine(edit->toPlainText()));
    });
    watchInput(edit->viewport(), true);
    edit->installEventFilter(this);  // keys arrive at the editor, mouse at its viewport
  } else {
    throw std::logic_error("text box " + box.name() + " needs a line or text edit");
  }
}

void TextBoxBinder::userEdited(const std::string& text) {
  m_text = text;
  m_box.setText(text);
  fire(EventKind::Change);
}

void TextBoxBinder::refreshContent(bool first) {
  if (!first && m_box.text() == m_text) return;
  m_text = m_box.text();
  if (auto* line = qobject_cast<QLineEdit*>(m_widget))
    line->setText(fromBytes(m_text));
  else if (auto* edit = qobject_cast<QPlainTextEdit*>(m_widget))
    edit->setPlainText(fromBytesMultiLine(m_text));
}

ListBinder::ListBinder(FormBinding& binding, ui::ListBox& list, QListWidget* widget)
    : ControlBinder(binding, list, widget), m_list(list) {
  widget->setSelectionMode(list.multiSelect() ? QAbstractItemView::ExtendedSelection
                                              : QAbstractItemView::SingleSelection);
  widget->setUniformItemSizes(true);
  connect(widget, &QListWidget::itemSelectionChanged, this, [this] {
    if (!m_updating) userSelected();
  });
  connect(widget, &QListWidget::itemClicked, this, [this] {
    userSelected();
    fire(EventKind::Click);
  });
  // A move with the arrow keys is a click too.
  connect(widget, &QListWidget::currentRowChanged, this, [this] {
    if (m_updating || m_mouseDown) return;
    userSelected();
    fire(EventKind::Click);
  });
  watchInput(widget->viewport(), false);
  widget->installEventFilter(this);  // keys arrive at the list, mouse at its viewport
}

bool ListBinder::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::MouseButtonPress) m_mouseDown = true;
  if (event->type() == QEvent::MouseButtonRelease) m_mouseDown = false;
  return ControlBinder::eventFilter(watched, event);
}

QListWidget* ListBinder::list() const { return static_cast<QListWidget*>(m_widget.data()); }

void ListBinder::refreshContent(bool) {
  refreshItems();
  refreshSelection();
}

void ListBinder::refreshItems() {
  const std::vector<std::string>& items = m_list.items();
  if (items == m_items) return;
  QSignalBlocker block(list());
  bool appended = items.size() > m_items.size() && std::equal(m_items.begin(), m_items.end(), items.begin());
  if (!appended) {
    list()->clear();
    m_items.clear();
    m_selected.clear();
    m_current = -2;
  }
  QStringList added;
  for (std::size_t i = m_items.size(); i < items.size(); ++i) added << fromDisplayBytes(items[i]);
  list()->addItems(added);
  m_items = items;
}

void ListBinder::refreshSelection() {
  std::vector<int> selected = m_list.selectedIndexes();
  int current = m_list.listIndex();
  if (selected == m_selected && current == m_current) return;
  QSignalBlocker block(list());
  QSignalBlocker blockSelection(list()->selectionModel());
  list()->clearSelection();
  for (int i : selected) list()->item(i)->setSelected(true);
  list()->setCurrentRow(current, QItemSelectionModel::NoUpdate);
  if (current >= 0 && current != m_current) list()->scrollToItem(list()->item(current));
  list()->viewport()->update();
  m_selected = std::move(selected);
  m_current = current;
}

void ListBinder::userSelected() {
  QListWidget* w = list();
  m_updating = true;
  for (int i = 0; i < m_list.listCount() && i < w->count(); ++i) {
    bool on = w->item(i)->isSelected();
    if (m_list.multiSelect() && m_list.selected(i) != on) m_list.setSelected(i, on);
  }
  int current = w->currentRow();
  if (current != m_list.listIndex() || (!m_list.multiSelect() && current >= 0 && !m_list.selected(current)))
    m_list.setListIndex(current);
  m_selected = m_list.selectedIndexes();
  m_current = m_list.listIndex();
  m_updating = false;
}

PictureBinder::PictureBinder(FormBinding& binding, ui::Picture& picture, PictureButton* widget)
    : ControlBinder(binding, picture, widget) {
  widget->setIcon(toolIcon(picture.name(), widget->width() - 10));
  connect(widget, &PictureButton::linesDropped, this, [this](const QString& source) {
    EventArgs args;
    args.source = toBytes(source);
    fire(EventKind::Drop, args);
  });
  watchInput(widget, true);
}

void PictureBinder::refreshContent(bool) {}

void PictureBinder::applyColours(ui::Colour, ui::Colour back) {
  static_cast<PictureButton*>(m_widget.data())->setColour(toQColor(back));
}

CheckBinder::CheckBinder(FormBinding& binding, ui::CheckBox& box, QWidget* widget)
    : ControlBinder(binding, box, widget), m_box(box) {
  auto* button = need<QAbstractButton>(widget, box);
  button->setCheckable(true);
  // Toggled covers the option that an option group turns off; clicked is the user's act.
  connect(button, &QAbstractButton::toggled, this, [this](bool on) {
    if (m_updating) return;
    m_value = on;
    m_box.setValue(on);
  });
  connect(button, &QAbstractButton::clicked, this, [this] { fire(EventKind::Click); });
  watchInput(widget, false);
}

void CheckBinder::refreshContent(bool first) {
  auto* button = static_cast<QAbstractButton*>(m_widget.data());
  if (first || m_box.caption() != m_caption) {
    m_caption = m_box.caption();
    if (!m_caption.empty()) button->setText(fromBytes(m_caption));
  }
  if (first || m_box.value() != m_value) {
    m_value = m_box.value();
    button->setChecked(m_value);
  }
}

MenuBinder::MenuBinder(FormBinding& binding, ui::MenuItem& item, QAction* action, QMenu* menu)
    : ControlBinder(binding, item, nullptr), m_item(item), m_action(action) {
  if (menu != nullptr)
    connect(menu, &QMenu::aboutToShow, this, [this] { fire(EventKind::Click); });
  else
    connect(action, &QAction::triggered, this, [this] {
      // A held menu holds its shortcuts too.
      auto* parent = qobject_cast<QMenu*>(m_action->parent());
      if (parent != nullptr && !parent->menuAction()->isEnabled()) return;
      fire(EventKind::Click);
    });
}

void MenuBinder::refreshContent(bool first) {
  if (first || m_item.caption() != m_caption) {
    m_caption = m_item.caption();
    m_action->setText(fromBytes(m_caption));
  }
  if (first || m_item.checked() != m_checked) {
    m_checked = m_item.checked();
    if (m_checked) m_action->setCheckable(true);
    m_action->setChecked(m_checked);
  }
}

void MenuBinder::applyVisible(bool visible) { m_action->setVisible(visible); }

void MenuBinder::applyEnabled(bool enabled) { m_action->setEnabled(enabled); }

TimerBinder::TimerBinder(FormBinding& binding, ui::Timer& timer)
    : ControlBinder(binding, timer, nullptr), m_model(timer) {
  connect(&m_timer, &QTimer::timeout, this, [this] { fire(EventKind::Timer); });
}

void TimerBinder::refreshContent(bool) {
  bool run = m_model.enabled() && m_model.interval() > 0;
  if (!run) {
    m_timer.stop();
  } else if (!m_timer.isActive() || m_timer.interval() != m_model.interval()) {
    m_timer.start(m_model.interval());
  }
}

SliderBinder::SliderBinder(FormBinding& binding, ui::Slider& slider, QWidget* widget)
    : ControlBinder(binding, slider, widget), m_slider(slider) {
  auto* s = static_cast<QSlider*>(widget);
  s->setRange(slider.min(), slider.max());
  connect(s, &QSlider::valueChanged, this, [this](int value) {
    if (m_updating) return;
    m_slider.setValue(value);
    fire(EventKind::Change);
  });
  watchInput(widget, false);
}

void SliderBinder::refreshContent(bool) {
  auto* s = static_cast<QSlider*>(m_widget.data());
  if (s->value() != m_slider.value()) s->setValue(m_slider.value());
}

ComboBinder::ComboBinder(FormBinding& binding, ui::ComboBox& combo, QWidget* widget)
    : ControlBinder(binding, combo, widget), m_combo(combo) {
  auto* box = static_cast<QComboBox*>(widget);
  connect(box, &QComboBox::currentTextChanged, this, [this](const QString& text) {
    if (m_updating) return;
    m_text = toBytes(text);
    m_combo.setText(m_text);
    fire(EventKind::Change);
  });
  connect(box, &QComboBox::activated, this, [this] { fire(EventKind::Click); });
  watchInput(widget, false);
}

void ComboBinder::refreshContent(bool first) {
  auto* box = static_cast<QComboBox*>(m_widget.data());
  if (first || m_combo.items() != m_items) {
    m_items = m_combo.items();
    box->clear();
    for (const std::string& item : m_items) box->addItem(fromBytes(item));
    m_text.clear();
  }
  if (m_combo.text() != m_text || first) {
    m_text = m_combo.text();
    box->setCurrentText(fromBytes(m_text));
  }
}

PlainBinder::PlainBinder(FormBinding& binding, ui::Control& control, QWidget* widget)
    : ControlBinder(binding, control, widget) {
  watchInput(widget, true);
}

}  // namespace tolvane::gui
