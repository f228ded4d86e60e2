#include "gui/obj_window.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QGroupBox>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QImage>
#include <QLineEdit>
#include <QListWidget>
#include <QPainter>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QScreen>
#include <QVBoxLayout>

#include "gui/binders.h"
#include "gui/gl_mesh_view.h"
#include "gui/picture_button.h"
#include "gui/picture_view.h"
#include "gui/qt_text.h"
#include "obj/obj_tools.h"
#include "obj/obj_view.h"
#include "program/program.h"
#include "ui/form_obj.h"

namespace tolvane::gui {

namespace {

constexpr int kZoomSide = 160;

// The coloured listing: each line in its group's or material's colour.
class ColourListBinder : public ControlBinder {
 public:
  ColourListBinder(FormBinding& binding, ui::ColourList& list, QListWidget* widget)
      : ControlBinder(binding, list, widget), m_list(list), m_widget(widget) {}

 protected:
  void refreshContent(bool) override {
    if (m_list.items() == m_items && m_list.colours() == m_colours) return;
    m_items = m_list.items();
    m_colours = m_list.colours();
    m_widget->clear();
    for (std::size_t i = 0; i < m_items.size(); ++i) {
      auto* item = new QListWidgetItem(fromDisplayBytes(m_items[i]), m_widget);
      ui::Colour c = m_colours[i];
      item->setForeground(QColor(c & 0xFF, (c >> 8) & 0xFF, (c >> 16) & 0xFF));
    }
  }

 private:
  ui::ColourList& m_list;
  QListWidget* m_widget;
  std::vector<std::string> m_items;
  std::vector<ui::Colour> m_colours;
};

// The live view on OpenGL follows PictureObjViewer2's visibility; it draws itself.
class GlViewBinder : public ControlBinder {
 public:
  GlViewBinder(FormBinding& binding, ui::Control& control, QWidget* view)
      : ControlBinder(binding, control, view) {}

 protected:
  void refreshContent(bool) override {}
  void applyColours(ui::Colour, ui::Colour) override {}
};

// A secondary mesh's picture, laid over the still picture of its view: what the form
// drew in it, with its white ground left out, where the held shift puts it. Mouse
// events go through it to the still picture beneath, which moves the mesh.
class AddPictureView : public PictureView {
 public:
  AddPictureView(const ui::FormOBJ& form, const ui::DrawnPicture& picture, int view, QWidget* parent)
      : PictureView(picture, parent), m_form(form), m_picture(picture), m_view(view) {
    setAttribute(Qt::WA_OpaquePaintEvent, false);
    setAttribute(Qt::WA_TransparentForMouseEvents);
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    const ui::Raster& r = m_picture.raster();
    QImage drawn = QImage(reinterpret_cast<const uchar*>(r.data()), r.width(), r.height(), r.width() * 4,
                          QImage::Format_RGB32)
                       .convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < drawn.height(); ++y) {
      auto* line = reinterpret_cast<QRgb*>(drawn.scanLine(y));
      for (int x = 0; x < drawn.width(); ++x)
        if ((line[x] & 0xFFFFFF) == 0xFFFFFF) line[x] = 0;
    }
    int dx = 0, dy = 0;
    obj::AddPictureOffset(m_form, m_view, dx, dy);
    QPainter painter(this);
    painter.drawImage(rect().translated(dx, dy), drawn);
  }

 private:
  const ui::FormOBJ& m_form;
  const ui::DrawnPicture& m_picture;
  int m_view;
};

// The secondary picture stays where it is laid; its drawing moves instead.
class AddPictureBinder : public PictureViewBinder {
 public:
  using PictureViewBinder::PictureViewBinder;

 protected:
  void applyTop(int) override {}
};

QLabel* commandLabel() {
  auto* l = new QLabel;
  l->setFrameStyle(QFrame::Panel | QFrame::Raised);
  l->setAlignment(Qt::AlignCenter);
  l->setCursor(Qt::PointingHandCursor);
  return l;
}

}  // namespace

ObjWindow::ObjWindow(FormBinding& binding, QWidget* mainWindow)
    : FormWindow(binding, mainWindow), m_form(static_cast<ui::FormOBJ&>(binding.form())) {
  if (QScreen* screen = QGuiApplication::primaryScreen()) {
    m_form.screenWidth = screen->geometry().width();
    m_form.screenHeight = screen->geometry().height();
  }
  auto* layout = new QHBoxLayout(this);
  layout->addWidget(buildDrawingArea());
  layout->addWidget(buildSideColumn());
  binding.bind(m_form.TimerRotate, nullptr);
  if (m_gl != nullptr) {
    m_form.setRenderer(m_gl);
    obj::SetUpView(binding.program());
  }
  setFocusPolicy(Qt::StrongFocus);
  for (QWidget* w : findChildren<QWidget*>()) w->installEventFilter(this);
}

void ObjWindow::keyPressEvent(QKeyEvent* event) {
  if (!keyOfForm(event)) FormWindow::keyPressEvent(event);
}

ObjWindow::~ObjWindow() { m_form.setRenderer(nullptr); }

PictureView* ObjWindow::pictureView(const std::string& name) const {
  auto it = m_pictures.find(name);
  return it == m_pictures.end() ? nullptr : it->second;
}

void ObjWindow::place(ui::Control& control, QWidget* widget) {
  widget->setObjectName(fromBytes(control.name()));
  binding().bind(control, widget);
}

// The pictures that take turns in one place: the viewer, the live view, the still
// pictures, the preview, the UV map, the secondary mesh's pictures and the covers.
QWidget* ObjWindow::buildDrawingArea() {
  auto* area = new QWidget;
  area->setFixedSize(ui::kObjPictureSize, ui::kObjPictureSize);
  for (ui::DrawnPicture* p :
       {&m_form.PictureOBJViewer, &m_form.PictureStore, &m_form.PictureStore2, &m_form.PictureStore3,
        &m_form.PictureNoDX, &m_form.PictureUVMap, &m_form.PictureSecMap, &m_form.PictureAddObjFront,
        &m_form.PictureAddObjSide, &m_form.PictureAddObjTop, &m_form.PictureObjViewer2}) {
    if (p == &m_form.PictureObjViewer2 && openGlUsable()) {
      m_gl = new GlMeshView(area, ui::kObjPictureSize);
      m_gl->setObjectName("PictureObjViewer2");
      binding().bindWith(*p, std::make_unique<GlViewBinder>(binding(), *p, m_gl));
      continue;
    }
    int addView = p == &m_form.PictureAddObjFront  ? 1
                  : p == &m_form.PictureAddObjSide ? 2
                  : p == &m_form.PictureAddObjTop  ? 3
                                                   : 0;
    PictureView* view = addView == 0 ? new PictureView(*p, area) : new AddPictureView(m_form, *p, addView, area);
    view->setObjectName(fromBytes(p->name()));
    m_pictures[p->name()] = view;
    if (addView == 0)
      binding().bindWith(*p, std::make_unique<PictureViewBinder>(binding(), *p, view));
    else
      binding().bindWith(*p, std::make_unique<AddPictureBinder>(binding(), *p, view));
  }
  for (ui::Image* cover : {&m_form.ImageBoss, &m_form.ImageRDS}) {
    auto* l = new QLabel(cover == &m_form.ImageBoss ? tr("Rendering...") : tr("Ray tracing"), area);
    l->setAlignment(Qt::AlignCenter);
    l->setAutoFillBackground(true);
    l->setGeometry(0, cover == &m_form.ImageBoss ? 0 : ui::kObjPictureSize / 2, ui::kObjPictureSize,
                   ui::kObjPictureSize / 2);
    place(*cover, l);
  }
  return area;
}

QWidget* ObjWindow::buildOptions() {
  auto* box = new QWidget;
  auto* layout = new QVBoxLayout(box);
  layout->setContentsMargins(0, 0, 0, 0);
  auto* views = new QGroupBox(tr("View"));
  auto* viewLayout = new QHBoxLayout(views);
  for (ui::OptionButton* o : {&m_form.OptionFrontView, &m_form.OptionSideView, &m_form.OptionTopView}) {
    auto* b = new QRadioButton;
    b->setFocusPolicy(Qt::NoFocus);
    viewLayout->addWidget(b);
    place(*o, b);
  }
  place(m_form.FrameView, views);
  auto* colours = new QGroupBox(tr("Colours"));
  auto* colourLayout = new QHBoxLayout(colours);
  for (ui::OptionButton* o :
       {&m_form.OptionColorGroups, &m_form.OptionColorMaterials, &m_form.OptionNoColors}) {
    auto* b = new QRadioButton;
    b->setFocusPolicy(Qt::NoFocus);
    colourLayout->addWidget(b);
    place(*o, b);
  }
  place(m_form.FrameColors, colours);
  layout->addWidget(views);
  layout->addWidget(colours);
  auto* checks = new QHBoxLayout;
  for (ui::CheckBox* c : {&m_form.OptionShowPolys, &m_form.OptionShowPoints, &m_form.CheckHiddenFaces}) {
    auto* b = new QCheckBox;
    b->setFocusPolicy(Qt::NoFocus);
    checks->addWidget(b);
    place(*c, b);
  }
  layout->addLayout(checks);
  return box;
}

QWidget* ObjWindow::buildListArea() {
  auto* box = new QWidget;
  auto* layout = new QVBoxLayout(box);
  layout->setContentsMargins(0, 0, 0, 0);
  auto* commands = new QHBoxLayout;
  for (ui::Label* l : {&m_form.CommandListGroups, &m_form.CommandListMats, &m_form.LabelRichRename}) {
    QLabel* w = commandLabel();
    commands->addWidget(w);
    place(*l, w);
  }
  layout->addLayout(commands);
  for (ui::ColourList* rich : {&m_form.RichTextBoxGroups, &m_form.RichTextBoxMaterials}) {
    auto* w = new QListWidget;
    w->setSelectionMode(QAbstractItemView::NoSelection);
    w->setObjectName(fromBytes(rich->name()));
    layout->addWidget(w);
    binding().bindWith(*rich, std::make_unique<ColourListBinder>(binding(), *rich, w));
  }
  for (ui::ListBox* l : {&m_form.ListGroups, &m_form.ListMaterials, &m_form.ListGroupsSave,
                         &m_form.ListMaterialsSave, &m_form.ListHotKeys}) {
    auto* w = new LineList;
    if (l->multiSelect()) w->setSelectionMode(QAbstractItemView::MultiSelection);
    layout->addWidget(w);
    place(*l, w);
  }
  for (ui::TextBox* t : {&m_form.TextGrpRename, &m_form.TextMatRename}) {
    auto* w = new QLineEdit;
    layout->addWidget(w);
    place(*t, w);
  }
  auto* saves = new QHBoxLayout;
  for (ui::CheckBox* c : {&m_form.CheckSaveGroups, &m_form.CheckSaveMaterials}) {
    auto* b = new QCheckBox;
    b->setFocusPolicy(Qt::NoFocus);
    saves->addWidget(b);
    place(*c, b);
  }
  layout->addLayout(saves);
  return box;
}

QWidget* ObjWindow::buildTools() {
  auto* box = new QWidget;
  auto* layout = new QHBoxLayout(box);
  layout->setContentsMargins(0, 0, 0, 0);
  for (ui::Picture* p : {&m_form.PictureNewFile, &m_form.PictureNotes, &m_form.PictureLop,
                        &m_form.PicturePhiLopper, &m_form.PictureAddOBJ, &m_form.PictureMerge}) {
    auto* b = new PictureButton(nullptr, 32);
    b->setToolTip(fromBytes(p->name()));
    layout->addWidget(b);
    place(*p, b);
  }
  auto* column = new QVBoxLayout;
  auto* first = new QHBoxLayout;
  auto* second = new QHBoxLayout;
  for (ui::Label* l : {&m_form.LabelMirror, &m_form.LabelUVMap, &m_form.LabelSecMap, &m_form.LabelViewCR2TexMap}) {
    QLabel* w = commandLabel();
    first->addWidget(w);
    place(*l, w);
  }
  for (ui::Label* l : {&m_form.LabelSaveMap, &m_form.LabelMakeUV, &m_form.LabelApplyMap}) {
    QLabel* w = commandLabel();
    second->addWidget(w);
    place(*l, w);
  }
  for (ui::TextBox* t : {&m_form.TextMapSize, &m_form.TextMapSizeSec}) {
    auto* w = new QLineEdit;
    w->setMaximumWidth(110);
    second->addWidget(w);
    place(*t, w);
  }
  column->addLayout(first);
  column->addLayout(second);
  layout->addLayout(column);
  auto* lop = new QListWidget(box);
  lop->hide();
  place(m_form.ListLop, lop);
  return box;
}

QWidget* ObjWindow::buildSideColumn() {
  auto* column = new QWidget;
  column->setFixedWidth(420);
  auto* layout = new QVBoxLayout(column);
  auto* top = new QHBoxLayout;
  for (ui::Label* l : {&m_form.LabelView, &m_form.LabelBoss, &m_form.LabelPlay, &m_form.LabelHotKeys}) {
    QLabel* w = commandLabel();
    top->addWidget(w);
    place(*l, w);
  }
  layout->addLayout(top);
  auto* wait = new QLabel;
  layout->addWidget(wait);
  place(m_form.LabelWait, wait);
  auto* bounds = new QHBoxLayout;
  for (ui::Label* l : {&m_form.LabelBiggestX, &m_form.LabelSmallestX, &m_form.LabelBiggestY}) {
    auto* w = new QLabel;
    bounds->addWidget(w);
    place(*l, w);
  }
  layout->addLayout(bounds);
  layout->addWidget(buildOptions());
  layout->addWidget(buildTools());
  layout->addWidget(buildListArea(), 1);
  auto* zoom = new PictureView(m_form.PictureZoom, nullptr, kZoomSide);
  zoom->setObjectName("PictureZoom");
  m_pictures["PictureZoom"] = zoom;
  binding().bindWith(m_form.PictureZoom,
                     std::make_unique<PictureViewBinder>(binding(), m_form.PictureZoom, zoom));
  layout->addWidget(zoom);
  auto* notes = new QPlainTextEdit;
  notes->setMaximumHeight(60);
  layout->addWidget(notes);
  place(m_form.TextNotes, notes);
  return column;
}

// A key typed anywhere but in a box goes to the form by its character code.
bool ObjWindow::keyOfForm(QKeyEvent* event) {
  QString text = event->text();
  int code = event->key() == Qt::Key_Escape ? 27 : text.size() == 1 ? text.at(0).unicode() : 0;
  if (code == 0) return false;
  EventArgs args;
  args.keyCode = code;
  binding().fire(nullptr, EventKind::Key, args);
  return true;
}

bool ObjWindow::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress && qobject_cast<QLineEdit*>(watched) == nullptr &&
      qobject_cast<QPlainTextEdit*>(watched) == nullptr)
    return keyOfForm(static_cast<QKeyEvent*>(event));
  return FormWindow::eventFilter(watched, event);
}

void ObjWindow::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() == Qt::RightButton) binding().fire(nullptr, EventKind::RightRelease);
  FormWindow::mouseReleaseEvent(event);
}

// The close is the form's unload; a close that must wait (a list still open) keeps the
// window.
void ObjWindow::closeEvent(QCloseEvent* event) {
  if (m_form.visible()) binding().fire(nullptr, EventKind::Unload);
  if (m_form.visible()) {
    event->ignore();
    return;
  }
  event->accept();
}

void registerObjWindow() {
  registerFormWindow("FormOBJ", [](FormBinding& binding, QWidget* mainWindow) -> QWidget* {
    return new ObjWindow(binding, mainWindow);
  });
}

}  // namespace tolvane::gui
