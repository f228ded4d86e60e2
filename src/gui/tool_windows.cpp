#include "gui/tool_windows.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QCursor>
#include <QDrag>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QGridLayout>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QMimeData>
#include <QMouseEvent>
#include <QPushButton>
#include <QPainter>
#include <QRadioButton>
#include <QScreen>
#include <QScrollArea>
#include <QSlider>
#include <QTimer>
#include <QUrl>
#include <QVBoxLayout>

#include "gui/binders.h"
#include "gui/form_windows.h"
#include "gui/picture_button.h"
#include "gui/qt_text.h"
#include "program/program.h"

namespace tolvane::gui {

namespace {

QLabel* clickableLabel(QWidget* parent) {
  auto* l = new QLabel(parent);
  l->setCursor(Qt::PointingHandCursor);
  l->setFrameShape(QFrame::Panel);
  l->setMargin(4);
  return l;
}

// A label the user drags onto a picture: the drag carries the label's form and name as
// the source, as a drag of list lines does.
class DragLabel : public QLabel {
 public:
  DragLabel(const QString& source, QWidget* parent) : QLabel(parent), m_source(source) {
    setFrameShape(QFrame::Panel);
    setMargin(4);
    setCursor(Qt::OpenHandCursor);
  }

 protected:
  void mousePressEvent(QMouseEvent* event) override {
    m_start = event->position().toPoint();
    QLabel::mousePressEvent(event);
  }
  void mouseMoveEvent(QMouseEvent* event) override {
    if (!(event->buttons() & Qt::LeftButton) ||
        (event->position().toPoint() - m_start).manhattanLength() < QApplication::startDragDistance())
      return;
    auto* drag = new QDrag(this);
    drag->setMimeData(makeLinesMimeData(m_source, {text()}));
    drag->exec(Qt::CopyAction);
  }

 private:
  QString m_source;
  QPoint m_start;
};

// The drive, folder and file pickers in one column.
void addPickers(FormBinding& binding, QVBoxLayout* column, ui::ComboBox& drive, ui::ComboBox& dir,
                ui::ListBox* files) {
  auto* driveBox = new QComboBox;
  auto* dirBox = new QComboBox;
  column->addWidget(driveBox);
  column->addWidget(dirBox);
  binding.bind(drive, driveBox);
  binding.bind(dir, dirBox);
  if (files != nullptr) {
    auto* list = new LineList;
    column->addWidget(list, 1);
    binding.bind(*files, list);
  }
}

QWidget* makeInstallWindow(FormBinding& binding, QWidget* mainWindow) {
  auto& f = static_cast<ui::FormCR2Install&>(binding.form());
  auto* window = new FormWindow(binding, mainWindow);
  auto* column = new QVBoxLayout(window);
  auto* direction = new QLabel;
  direction->setWordWrap(true);
  column->addWidget(direction);
  binding.bind(f.LabelDirection, direction);
  addPickers(binding, column, f.DriveCR2Install, f.DirCR2Install, nullptr);
  auto* row = new QHBoxLayout;
  auto* newDir = clickableLabel(window);
  auto* removeDir = clickableLabel(window);
  auto* text = new QLineEdit;
  row->addWidget(newDir);
  row->addWidget(text, 1);
  row->addWidget(removeDir);
  column->addLayout(row);
  auto* left = new LineList;
  column->addWidget(left, 1);
  binding.bind(f.LabelNewDir, newDir);
  binding.bind(f.TextNewDir, text);
  binding.bind(f.LabelRemoveDir, removeDir);
  binding.bind(f.ListCR2Install, left);
  // Enter in the folder list installs into the folder it shows; the button does the same.
  auto* install = new QPushButton(QObject::tr("Install Here"));
  column->addWidget(install);
  QObject::connect(install, &QPushButton::clicked, window,
                   [&binding, &f] { binding.fire(&f.DirCR2Install, EventKind::Enter); });
  window->resize(520, 420);
  return window;
}

QWidget* makeRenamerWindow(FormBinding& binding, QWidget* mainWindow) {
  auto& f = static_cast<ui::Renamer&>(binding.form());
  auto* window = new FormWindow(binding, mainWindow);
  auto* outer = new QVBoxLayout(window);
  auto* bar = new QMenuBar;
  outer->setMenuBar(bar);
  binding.bind(f.mnuHelp, bar->addAction(QString()));
  binding.bind(f.mnuAbout, bar->addAction(QString()));
  auto* row = new QHBoxLayout;
  auto* pickers = new QVBoxLayout;
  addPickers(binding, pickers, f.Drive1, f.Dir1, &f.File1);
  row->addLayout(pickers, 1);
  auto* right = new QVBoxLayout;
  auto* label = new DragLabel(QStringLiteral("Renamer.Label1"), window);
  auto* picture = new PictureButton(window, 96);
  picture->setDropTarget(true);
  right->addWidget(label);
  right->addWidget(picture, 0, Qt::AlignHCenter);
  auto* friendly = clickableLabel(window);
  auto* revert = clickableLabel(window);
  right->addWidget(friendly);
  right->addWidget(revert);
  right->addStretch();
  row->addLayout(right);
  outer->addLayout(row);
  binding.bind(f.Label1, label);
  binding.bind(f.Picture1, picture);
  binding.bind(f.LabelFriendly, friendly);
  binding.bind(f.LabelGetSR, revert);
  window->resize(520, 380);
  return window;
}

QWidget* makeRenumberWindow(FormBinding& binding, QWidget* mainWindow) {
  auto& f = static_cast<ui::FormRenumber&>(binding.form());
  auto* window = new FormWindow(binding, mainWindow);
  auto* column = new QVBoxLayout(window);
  auto* direction = new QLabel;
  direction->setWordWrap(true);
  column->addWidget(direction);
  binding.bind(f.LabelDirection, direction);
  addPickers(binding, column, f.Drive1, f.Dir1, &f.File1);
  auto* frame = new QFrame;
  frame->setFrameShape(QFrame::StyledPanel);
  auto* options = new QHBoxLayout(frame);
  auto* bmp = new QRadioButton;
  auto* obj = new QRadioButton;
  options->addWidget(bmp);
  options->addWidget(obj);
  column->addWidget(frame);
  auto* go = clickableLabel(window);
  go->setAlignment(Qt::AlignCenter);
  column->addWidget(go);
  binding.bind(f.Frame1, frame);
  binding.bind(f.OptionBMP, bmp);
  binding.bind(f.OptionOBJ, obj);
  binding.bind(f.CommandGo, go);
  window->resize(420, 420);
  return window;
}

// The map viewer: the picture in a scrolling frame, fitted to the screen.
class ViewerWindow : public FormWindow {
 public:
  ViewerWindow(FormBinding& binding, QWidget* mainWindow) : FormWindow(binding, mainWindow) {
    auto& f = static_cast<ui::FormViewer&>(binding.form());
    auto* layout = new QVBoxLayout(this);
    m_area = new QScrollArea;
    m_picture = new QLabel;
    m_area->setWidget(m_picture);
    layout->addWidget(m_area);
    binding.bind(f.picParent, m_area);
    binding.bind(f.picChild, m_picture);
    QObject::connect(&binding, &FormBinding::eventHandled, this, [this] { load(); });
    load();
  }

 private:
  void load() {
    auto& f = static_cast<ui::FormViewer&>(binding().form());
    if (f.PictureWidth == 0) {
      m_picture->clear();
      return;
    }
    QPixmap pixmap(fromPathText(f.MapFileName));
    m_picture->setPixmap(pixmap);
    m_picture->resize(pixmap.size());
    QSize room = screen() ? screen()->availableSize() : QSize(1024, 768);
    resize(std::min(pixmap.width() + 40, room.width() - 40), std::min(pixmap.height() + 40, room.height() - 80));
  }
  QScrollArea* m_area;
  QLabel* m_picture;
};

// The magnifier: the screen around the pointer, enlarged by the slider's factor.
class MagnifierWindow : public FormWindow {
 public:
  MagnifierWindow(FormBinding& binding, QWidget* mainWindow) : FormWindow(binding, mainWindow) {
    auto& f = static_cast<ui::Magnifier&>(binding.form());
    auto* layout = new QVBoxLayout(this);
    m_view = new QLabel;
    m_view->setMinimumSize(240, 240);
    m_view->setAlignment(Qt::AlignCenter);
    auto* zoom = new QSlider(Qt::Horizontal);
    layout->addWidget(m_view, 1);
    layout->addWidget(zoom);
    binding.bind(f.PictureZoom, m_view);
    binding.bind(f.SliderZoom, zoom);
    auto* timer = new QTimer(this);
    QObject::connect(timer, &QTimer::timeout, this, [this, &f] { grab(f.SliderZoom.value()); });
    timer->start(100);
    setWindowFlag(Qt::WindowStaysOnTopHint);
  }

 private:
  void grab(int factor) {
    if (!isVisible() || factor < 1) return;
    QPoint at = QCursor::pos();
    QScreen* screen = QGuiApplication::screenAt(at);
    if (screen == nullptr) return;
    QSize size = m_view->size() / factor;
    QPoint local = at - screen->geometry().topLeft();
    QPixmap shot = screen->grabWindow(0, local.x() - size.width() / 2, local.y() - size.height() / 2,
                                      size.width(), size.height());
    m_view->setPixmap(shot.scaled(m_view->size(), Qt::KeepAspectRatio, Qt::FastTransformation));
  }
  QLabel* m_view;
};

// Graph paper: a grid every millimetre (a heavier line every ten) or every ten pixels,
// on white or on a see-through background.
class GridView : public QWidget {
 public:
  explicit GridView(ui::FormScale& form) : m_form(form) { setMinimumSize(200, 200); }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter p(this);
    if (!m_form.CheckTransparent.value()) p.fillRect(rect(), Qt::white);
    double step = m_form.OptionMM.value() ? logicalDpiX() / 25.4 : 10.0;
    if (step < 2) step = 2;
    for (int i = 0; i * step <= width(); ++i) {
      p.setPen(QPen(QColor(i % 10 == 0 ? 0x4060C0 : 0xA0C0F0), 0));
      p.drawLine(QPointF(i * step, 0), QPointF(i * step, height()));
    }
    for (int i = 0; i * step <= height(); ++i) {
      p.setPen(QPen(QColor(i % 10 == 0 ? 0x4060C0 : 0xA0C0F0), 0));
      p.drawLine(QPointF(0, i * step), QPointF(width(), i * step));
    }
  }

 private:
  ui::FormScale& m_form;
};

QWidget* makeScaleWindow(FormBinding& binding, QWidget* mainWindow) {
  auto& f = static_cast<ui::FormScale&>(binding.form());
  auto* window = new FormWindow(binding, mainWindow);
  window->setAttribute(Qt::WA_TranslucentBackground);
  auto* layout = new QVBoxLayout(window);
  auto* row = new QHBoxLayout;
  auto* mm = new QRadioButton;
  auto* pixels = new QRadioButton;
  auto* clear = new QCheckBox;
  row->addWidget(mm);
  row->addWidget(pixels);
  row->addWidget(clear);
  row->addStretch();
  layout->addLayout(row);
  auto* grid = new GridView(f);
  layout->addWidget(grid, 1);
  binding.bind(f.OptionMM, mm);
  binding.bind(f.OptionPixels, pixels);
  binding.bind(f.CheckTransparent, clear);
  binding.bind(f.PictureGrid, grid);
  for (QAbstractButton* b : {static_cast<QAbstractButton*>(mm), static_cast<QAbstractButton*>(pixels),
                             static_cast<QAbstractButton*>(clear)})
    QObject::connect(b, &QAbstractButton::toggled, grid, [grid] { grid->update(); });
  window->resize(400, 400);
  return window;
}

// The launcher: a small window on top of the others that takes files from the desktop.
class LaunchWindow : public FormWindow {
 public:
  LaunchWindow(FormBinding& binding, QWidget* mainWindow) : FormWindow(binding, mainWindow) {
    auto& f = static_cast<ui::FormLaunch&>(binding.form());
    setWindowFlag(Qt::WindowStaysOnTopHint);
    setAcceptDrops(true);
    auto* layout = new QVBoxLayout(this);
    auto* label = new QLabel;
    label->setAlignment(Qt::AlignCenter);
    layout->addWidget(label);
    binding.bind(f.LabelDrop, label);
    resize(160, 100);
  }

 protected:
  void dragEnterEvent(QDragEnterEvent* event) override {
    if (event->mimeData()->hasUrls()) event->acceptProposedAction();
  }
  void dropEvent(QDropEvent* event) override {
    EventArgs args;
    for (const QUrl& url : event->mimeData()->urls())
      if (url.isLocalFile()) args.files.push_back(toPathText(url.toLocalFile()));
    if (args.files.empty()) return;
    event->acceptProposedAction();
    binding().fire(nullptr, EventKind::Drop, args);
  }
};

template <class Window>
FormWindowFactory windowOf() {
  return [](FormBinding& binding, QWidget* mainWindow) -> QWidget* { return new Window(binding, mainWindow); };
}

}  // namespace

void registerToolWindows() {
  const std::pair<const char*, FormWindowFactory> windows[] = {
      {"FormCR2Install", makeInstallWindow},          {"Renamer", makeRenamerWindow},
      {"FormRenumber", makeRenumberWindow},           {"FormViewer", windowOf<ViewerWindow>()},
      {"Magnifier", windowOf<MagnifierWindow>()},     {"FormScale", makeScaleWindow},
      {"FormLaunch", windowOf<LaunchWindow>()}};
  for (const auto& w : windows)
    if (formWindowFactory(w.first) == nullptr) registerFormWindow(w.first, w.second);
}

}  // namespace tolvane::gui
