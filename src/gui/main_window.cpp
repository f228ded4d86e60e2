#include "gui/main_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QDir>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QMimeData>
#include <QProgressBar>
#include <QSettings>
#include <QTimer>
#include <QUrl>

#include "gui/binders.h"
#include "gui/form_windows.h"
#include "gui/picture_button.h"
#include "gui/pictures.h"
#include "gui/qt_settings.h"
#include "gui/qt_text.h"
#include "program/program.h"

namespace tolvane::gui {

MainWindow::MainWindow(Program& program, Dispatch dispatch, QWidget* parent)
    : QMainWindow(parent), m_program(program), m_dispatch(std::move(dispatch)) {
  setObjectName("Opening");
  setWindowIcon(appIcon());
  registerBuiltInFormWindows();
  m_binding = std::make_unique<FormBinding>(program, program.opening, m_dispatch);
  buildMenus();
  buildCentral();
  for (auto [control, target] : m_pending) m_binding->bind(*control, target);
  m_pending.clear();
  bindRemaining();

  ui::Opening& o = program.opening;
  for (ui::Control* c : o.controls())
    if (auto* button = qobject_cast<PictureButton*>(widgetFor(c->name())))
      button->setDropTarget(c == &o.PictureTrash || m_program.events().has("Opening", c->name(), EventKind::Drop));
  for (ui::ListBox* pane : {&o.ListActors, &o.ListChannels}) {
    QWidget* w = widgetFor(pane->name());
    w->installEventFilter(this);
    if (m_program.events().has("Opening", pane->name(), EventKind::RightClick)) continue;
    w->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(w, &QWidget::customContextMenuRequested, this,
            [this, pane, w](const QPoint& at) { showPaneMenu(*pane, w->mapToGlobal(at)); });
  }

  connect(m_binding.get(), &FormBinding::formChanged, this, &MainWindow::openingChanged);
  connect(m_binding.get(), &FormBinding::eventHandled, this, &MainWindow::afterEvent);
  for (ui::Form* form : program.forms()) {
    if (form == &program.opening) continue;
    auto binding = std::make_unique<FormBinding>(program, *form, m_dispatch);
    FormBinding* b = binding.get();
    connect(b, &FormBinding::formChanged, this, [this, b] { otherFormChanged(*b); });
    connect(b, &FormBinding::eventHandled, this, &MainWindow::afterEvent);
    m_otherBindings.push_back(std::move(binding));
    if (form->visible()) otherFormChanged(*b);
  }
  setAcceptDrops(true);
  openingChanged();
  restorePlace();
}

MainWindow::~MainWindow() {
  // The binders go before the widgets they watch.
  m_otherBindings.clear();
  m_binding.reset();
}

void MainWindow::start() {
  m_binding->fire(nullptr, EventKind::Load);
  afterEvent();
}

QWidget* MainWindow::widgetFor(const std::string& controlName) const {
  auto it = m_widgets.find(controlName);
  return it == m_widgets.end() ? nullptr : it->second;
}

QMenu* MainWindow::menuFor(const std::string& controlName) const {
  auto it = m_menus.find(controlName);
  return it == m_menus.end() ? nullptr : it->second;
}

QWidget* MainWindow::formWindow(const std::string& formName) const {
  auto it = m_formWindows.find(formName);
  return it == m_formWindows.end() ? nullptr : it->second;
}

void MainWindow::openingChanged() {
  ui::Opening& o = m_program.opening;
  setWindowTitle(fromDisplayBytes(o.caption()));
  bool busy = o.busy();
  m_progress->setVisible(busy);
  m_status->setText(busy ? tr("Working...") : QString());
  if (busy)
    setCursor(Qt::WaitCursor);
  else
    unsetCursor();
}

void MainWindow::otherFormChanged(FormBinding& binding) {
  const ui::Form& form = binding.form();
  QWidget*& window = m_formWindows[form.name()];
  if (window == nullptr) {
    const FormWindowFactory* factory = formWindowFactory(form.name());
    if (factory == nullptr || !form.visible()) return;
    window = (*factory)(binding, this);
  }
  if (form.visible() && !window->isVisible()) {
    window->show();
    window->raise();
    window->activateWindow();
  } else if (!form.visible() && window->isVisible()) {
    window->hide();
  }
}

void MainWindow::afterEvent() {
  if (m_program.quitRequested && !m_closing) QTimer::singleShot(0, this, &QWidget::close);
}

void MainWindow::closeEvent(QCloseEvent* event) {
  // A close while a tool runs (it yields to the event loop) waits for the tool to end.
  if (FormBinding::handlerRunning() && !m_program.quitRequested) {
    QApplication::beep();
    event->ignore();
    return;
  }
  if (!m_closing) windowSettings()->setValue("Window/geometry", saveGeometry());
  if (!m_program.quitRequested) m_binding->fire(nullptr, EventKind::Unload);
  if (!m_program.quitRequested) {
    event->ignore();
    return;
  }
  m_closing = true;
  for (auto& [name, window] : m_formWindows)
    if (window != nullptr) window->hide();
  event->accept();
}

void MainWindow::changeEvent(QEvent* event) {
  if (event->type() == QEvent::WindowStateChange) {
    ui::WindowState state = isMinimized()   ? ui::WindowState::Minimized
                            : isMaximized() ? ui::WindowState::Maximized
                                            : ui::WindowState::Normal;
    m_program.opening.setWindowState(state);
  }
  QMainWindow::changeEvent(event);
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
  const QMimeData* mime = event->mimeData();
  if (!mime->hasUrls()) return;
  for (const QUrl& url : mime->urls())
    if (url.isLocalFile()) {
      event->acceptProposedAction();
      return;
    }
}

void MainWindow::dropEvent(QDropEvent* event) {
  EventArgs args;
  for (const QUrl& url : event->mimeData()->urls())
    if (url.isLocalFile()) args.files.push_back(toPathText(QDir::toNativeSeparators(url.toLocalFile())));
  if (args.files.empty()) return;
  event->acceptProposedAction();
  m_binding->fire(nullptr, EventKind::Drop, args);
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event) {
  ui::Opening& o = m_program.opening;
  if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Delete) {
    if (watched == widgetFor("ListActors")) removeSelected(o.ListActors);
    if (watched == widgetFor("ListChannels")) removeSelected(o.ListChannels);
  }
  if (event->type() == QEvent::Show &&
      (watched == widgetFor("ListMRU") || watched == widgetFor("ListAllTexMaps")))
    placePopUp(static_cast<QWidget*>(watched));
  return QMainWindow::eventFilter(watched, event);
}

// The Delete key and the pane's "Remove" do what a drop of the chosen lines on the
// trash does.
void MainWindow::removeSelected(const ui::ListBox& list) {
  ui::Opening& o = m_program.opening;
  if (!o.PictureTrash.visible() || list.selCount() == 0) return;
  EventArgs args;
  args.source = "Opening." + list.name();
  m_binding->fire(&o.PictureTrash, EventKind::Drop, args);
}

void MainWindow::showPaneMenu(const ui::ListBox& list, const QPoint& at) {
  QMenu menu(this);
  QAction* remove = menu.addAction(tr("Remove"));
  remove->setShortcut(QKeySequence::Delete);
  remove->setEnabled(m_program.opening.PictureTrash.visible() && list.selCount() > 0);
  if (menu.exec(at) == remove) removeSelected(list);
}

void MainWindow::placePopUp(QWidget* popUp) {
  QWidget* central = centralWidget();
  if (popUp == widgetFor("ListMRU")) {
    popUp->setGeometry(8, 8, std::min(560, central->width() - 16), 200);
  } else if (QWidget* anchor = widgetFor("TextMainTex")) {
    QPoint below = anchor->mapTo(central, QPoint(0, anchor->height()));
    int height = 160;
    if (below.y() + height > central->height()) below.setY(anchor->mapTo(central, QPoint(0, 0)).y() - height);
    popUp->setGeometry(below.x(), below.y(), std::max(420, anchor->width()), height);
  }
  popUp->raise();
}

}  // namespace tolvane::gui
