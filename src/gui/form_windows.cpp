#include "gui/form_windows.h"

#include <QAction>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QToolTip>
#include <QScreen>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>
#include <map>

#include "gui/picture_button.h"
#include "gui/qt_settings.h"
#include "gui/editor_window.h"
#include "gui/erc_windows.h"
#include "gui/library_windows.h"
#include "gui/obj_window.h"
#include "gui/phi_windows.h"
#include "gui/qt_text.h"
#include "gui/tool_windows.h"
#include "program/program.h"

namespace tolvane::gui {

namespace {
std::map<std::string, FormWindowFactory>& factories() {
  static std::map<std::string, FormWindowFactory> table;
  return table;
}

// "Open Notebook": the whole notes file in a plain text box, with Save and Close.
QWidget* makeNotesWindow(FormBinding& binding, QWidget* mainWindow) {
  auto& notes = static_cast<ui::FormNotes&>(binding.form());
  auto* window = new FormWindow(binding, mainWindow);
  auto* text = new QPlainTextEdit(window);
  text->setObjectName("RichTextBox1");
  typeTabsWithCtrl(text);
  QFont fixed("Monospace");
  fixed.setStyleHint(QFont::TypeWriter);
  text->setFont(fixed);
  auto* save = new QPushButton(window);
  save->setObjectName("CommandSave");
  auto* close = new QPushButton(window);
  close->setObjectName("CommandClose");
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(save);
  buttons->addWidget(close);
  auto* layout = new QVBoxLayout(window);
  layout->addWidget(text);
  layout->addLayout(buttons);
  describeButton(save, QObject::tr("Save the notebook"), QKeySequence::Save);
  describeButton(close, QObject::tr("Close the notebook"), QKeySequence(Qt::Key_Escape));
  binding.bind(notes.RichTextBox1, text);
  binding.bind(notes.CommandSave, save);
  binding.bind(notes.CommandClose, close);
  window->resize(620, 460);
  return window;
}
}  // namespace

QString withShortcut(const QString& text, const QKeySequence& keys) {
  if (keys.isEmpty()) return text;
  return QStringLiteral("%1 (%2)").arg(text, keys.toString(QKeySequence::NativeText));
}

void describeButton(QWidget* button, const QString& name, const QKeySequence& keys) {
  button->setAccessibleName(name);
  button->setProperty(kToolTipProperty, name);
  button->setProperty(kShortcutProperty, keys);
  button->setToolTip(withShortcut(name, keys));
  if (keys.isEmpty() || keys == QKeySequence(Qt::Key_Escape)) return;
  auto* action = new QAction(button);
  action->setShortcut(keys);
  action->setShortcutContext(Qt::WindowShortcut);
  // The same press as a click of the mouse: the binders watch the button's mouse events.
  QObject::connect(action, &QAction::triggered, button, [button] { clickLikeTheMouse(button); });
  button->addAction(action);
}

void centreOver(QWidget* window, const QWidget* over) {
  if (over == nullptr) return;
  QRect frame = over->frameGeometry();
  QSize size = window->frameGeometry().size();
  if (!window->isVisible()) size = window->size();
  QPoint topLeft = frame.center() - QPoint(size.width() / 2, size.height() / 2);
  if (QScreen* screen = over->screen()) {
    QRect room = screen->availableGeometry();
    topLeft.setX(std::clamp(topLeft.x(), room.left(), std::max(room.left(), room.right() - size.width())));
    topLeft.setY(std::clamp(topLeft.y(), room.top(), std::max(room.top(), room.bottom() - size.height())));
  }
  window->move(topLeft);
}

namespace {
class CtrlTabTypes : public QObject {
 public:
  using QObject::QObject;
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() != QEvent::KeyPress) return false;
    auto* key = static_cast<QKeyEvent*>(event);
    if (key->key() != Qt::Key_Tab || key->modifiers() != Qt::ControlModifier) return false;
    static_cast<QPlainTextEdit*>(watched)->insertPlainText(QStringLiteral("\t"));
    return true;
  }
};
}  // namespace

void typeTabsWithCtrl(QPlainTextEdit* box) {
  box->setTabChangesFocus(true);
  box->installEventFilter(new CtrlTabTypes(box));
}

QSize ElidedLabel::minimumSizeHint() const {
  QSize hint = QLabel::minimumSizeHint();
  hint.setWidth(std::min(hint.width(), fontMetrics().horizontalAdvance(QStringLiteral("M…M")) + 2 * margin()));
  return hint;
}

QSize ElidedLabel::sizeHint() const { return QLabel::sizeHint(); }

bool ElidedLabel::isElided() const {
  return fontMetrics().horizontalAdvance(text()) > contentsRect().width() - 2 * margin();
}

void ElidedLabel::paintEvent(QPaintEvent* event) {
  if (!isElided()) {
    QLabel::paintEvent(event);
    return;
  }
  QFrame::paintEvent(event);
  QPainter painter(this);
  QRect area = contentsRect().adjusted(margin(), margin(), -margin(), -margin());
  painter.setPen(palette().color(foregroundRole()));
  painter.drawText(area, Qt::AlignVCenter | Qt::AlignLeft,
                   fontMetrics().elidedText(text(), Qt::ElideMiddle, area.width()));
}

bool ElidedLabel::event(QEvent* event) {
  if (event->type() == QEvent::ToolTip && isElided()) {
    QString tip = toolTip();
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(),
                       tip.isEmpty() || tip == text() ? text() : text() + "\n" + tip, this);
    return true;
  }
  return QLabel::event(event);
}

void registerFormWindow(const std::string& formName, FormWindowFactory factory) {
  factories()[formName] = std::move(factory);
}

const FormWindowFactory* formWindowFactory(const std::string& formName) {
  auto it = factories().find(formName);
  return it == factories().end() ? nullptr : &it->second;
}

void registerBuiltInFormWindows() {
  if (formWindowFactory("FormNotes") == nullptr) registerFormWindow("FormNotes", makeNotesWindow);
  if (formWindowFactory("FormEditor") == nullptr) registerEditorWindow();
  if (formWindowFactory("FormOBJ") == nullptr) registerObjWindow();
  if (formWindowFactory("FormECM") == nullptr) registerErcWindows();
  registerLibraryWindows();
  if (formWindowFactory("FormPhi") == nullptr) registerPhiWindows();
  registerToolWindows();
}

FormWindow::FormWindow(FormBinding& binding, QWidget* mainWindow)
    : QWidget(mainWindow, Qt::Window), m_binding(binding) {
  setObjectName(fromBytes(binding.form().name()));
  connect(&binding, &FormBinding::formChanged, this, &FormWindow::formChanged);
  formChanged();
}

void FormWindow::formChanged() {
  setWindowTitle(fromDisplayBytes(m_binding.form().caption()));
  if (m_binding.form().busy())
    setCursor(Qt::WaitCursor);
  else
    unsetCursor();
}

void FormWindow::showEvent(QShowEvent* event) {
  formChanged();
  if (!m_placed) {
    m_placed = true;
    QByteArray place = windowSettings()->value("Forms/" + objectName()).toByteArray();
    if (place.isEmpty() || !restoreGeometry(place)) centreOver(this, parentWidget());
  }
  QWidget::showEvent(event);
}

void FormWindow::hideEvent(QHideEvent* event) {
  windowSettings()->setValue("Forms/" + objectName(), saveGeometry());
  QWidget::hideEvent(event);
}

void FormWindow::keyPressEvent(QKeyEvent* event) {
  if (m_escapeCloses && event->key() == Qt::Key_Escape && event->modifiers() == Qt::NoModifier) {
    close();
    return;
  }
  QWidget::keyPressEvent(event);
}

void FormWindow::closeEvent(QCloseEvent* event) {
  ui::Form& form = m_binding.form();
  if (form.visible()) {
    m_binding.fire(nullptr, EventKind::Unload);
    form.setVisible(false);
  }
  event->accept();
}

}  // namespace tolvane::gui
