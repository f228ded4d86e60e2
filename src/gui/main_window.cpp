#include "gui/main_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QKeyEvent>
#include <QLocale>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QMimeData>
#include <QProgressBar>
#include <QSettings>
#include <QTimer>
#include <QUrl>
#include <algorithm>
#include <functional>

#include "gui/binders.h"
#include "gui/form_windows.h"
#include "gui/picture_button.h"
#include "gui/pictures.h"
#include "gui/qt_settings.h"
#include "gui/qt_text.h"
#include "program/program.h"

namespace tolvane::gui {

namespace {
// Watches every event of the program for one purpose, apart from the window's own filter.
class AppFilter : public QObject {
 public:
  AppFilter(QObject* parent, std::function<void(QObject*, QEvent*)> watch) : QObject(parent), m_watch(std::move(watch)) {}
  bool eventFilter(QObject* watched, QEvent* event) override {
    m_watch(watched, event);
    return false;
  }

 private:
  std::function<void(QObject*, QEvent*)> m_watch;
};
}  // namespace

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
    {
      button->setDropTarget(c == &o.PictureTrash || m_program.events().has("Opening", c->name(), EventKind::Drop));
      button->setKeysPress(!m_program.events().has("Opening", c->name(), EventKind::Key) &&
                           !m_program.events().has("Opening", c->name(), EventKind::Enter));
    }
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
  widgetFor("ListChannels")->installEventFilter(this);
  // A click outside the recent-files list closes it.
  qApp->installEventFilter(new AppFilter(this, [this](QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseButtonPress && watched->isWidgetType()) closePopUpsAround(static_cast<QWidget*>(watched));
  }));
  openingChanged();
  showChannelsHeading();
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
  m_progress->follow(o);
  if (busy) {
    QString work = FormBinding::currentWork();
    m_status->setText(work.isEmpty() ? tr("Working...") : tr("Working: %1...").arg(work));
  } else {
    showDocumentState();
  }
  if (busy)
    setCursor(Qt::WaitCursor);
  else
    unsetCursor();
}

void MainWindow::showDocumentState() {
  ui::Opening& o = m_program.opening;
  QString path = fromPathText(o.LabelFileNameForEditor.caption());
  QFileInfo info(path);
  if (path.isEmpty() || !info.isFile()) {
    m_status->clear();
    m_countedPath.clear();
    return;
  }
  const qint64 size = info.size(), time = info.lastModified().toMSecsSinceEpoch();
  if (path != m_countedPath || size != m_countedSize || time != m_countedTime) {
    // Counted once per version of the file: a line ends at CR LF, a lone CR or a lone LF.
    qint64 lines = 0;
    QFile file(path);
    if (file.open(QIODevice::ReadOnly)) {
      QByteArray block;
      char last = '\0';
      bool any = false;
      while (!(block = file.read(1 << 20)).isEmpty()) {
        for (char c : block) {
          if (c == '\n' && last != '\r') ++lines;
          if (c == '\r') ++lines;
          last = c;
        }
        any = true;
      }
      if (any && last != '\n' && last != '\r') ++lines;
    }
    m_countedPath = path;
    m_countedSize = size;
    m_countedTime = time;
    m_countedLines = lines;
  }
  QString kind = info.suffix().toUpper();
  m_status->setText(tr("%1 file  \u2022  %2 bytes  \u2022  %3 lines")
                        .arg(kind.isEmpty() ? tr("Text") : kind)
                        .arg(QLocale().toString(size))
                        .arg(QLocale().toString(m_countedLines)));
  m_status->setToolTip(QDir::toNativeSeparators(path));
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

// The heading stands over the channels only while there are channels to head: a failed
// open leaves a plain, empty page.
void MainWindow::showChannelsHeading() {
  QWidget* channels = widgetFor("ListChannels");
  m_channelsHeading->setVisible(channels != nullptr && !channels->isHidden() &&
                                m_program.opening.ListChannels.listCount() > 0);
}

void MainWindow::afterEvent() {
  if (!m_program.opening.busy()) showDocumentState();
  showChannelsHeading();
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
  if (watched == widgetFor("ListChannels") && (event->type() == QEvent::Show || event->type() == QEvent::Hide))
    showChannelsHeading();
  if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape &&
      watched == widgetFor("ListMRU")) {
    o.ListMRU.setVisible(false);
    FormBinding::flushAll();
    return true;
  }
  if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Delete) {
    if (watched == widgetFor("ListActors")) removeSelected(o.ListActors);
    if (watched == widgetFor("ListChannels")) removeSelected(o.ListChannels);
  }
  if (event->type() == QEvent::Show &&
      (watched == widgetFor("ListMRU") || watched == widgetFor("ListAllTexMaps")))
    placePopUp(static_cast<QWidget*>(watched));
  return QMainWindow::eventFilter(watched, event);
}

void MainWindow::closePopUpsAround(QWidget* clicked) {
  ui::ListBox& list = m_program.opening.ListMRU;
  QWidget* popUp = widgetFor(list.name());
  if (popUp == nullptr || !popUp->isVisible() || clicked->window() != this) return;
  if (popUp == clicked || popUp->isAncestorOf(clicked)) return;
  list.setVisible(false);
  FormBinding::flushAll();
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
