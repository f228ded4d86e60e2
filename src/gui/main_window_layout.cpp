// Building the main window: the menus and the places of the controls of Opening.
#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QFrame>
#include <QGraphicsDropShadowEffect>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QRadioButton>
#include <QSettings>
#include <QSlider>
#include <QStatusBar>
#include <QVBoxLayout>
#include <map>

#include "gui/binders.h"
#include "gui/form_windows.h"
#include "gui/main_window.h"
#include "gui/picture_button.h"
#include "gui/pictures.h"
#include "gui/qt_settings.h"
#include "gui/qt_text.h"
#include "program/program.h"

namespace tolvane::gui {

namespace {
QAction* menuAction(QMenu* menu, const QKeySequence& keys = {}) {
  auto* action = menu->addAction(QString());
  if (!keys.isEmpty()) action->setShortcut(keys);
  return action;
}

// The keys of the main form's pictures, named in their tool tips.
QKeySequence pictureKeys(const std::string& name) {
  static const std::map<std::string, const char*> keys = {
      {"PictureViewChannels", "Ctrl+Shift+C"}, {"PictureCopyToDest", "Ctrl+Shift+D"},
      {"PictureTrash", "Ctrl+Shift+T"},        {"PictureJoints", "Ctrl+Shift+J"},
      {"PictureEMC", "Ctrl+Shift+M"},          {"PictureChangeRatio", "Ctrl+Shift+R"},
      {"PictureEditor", "Ctrl+Shift+E"},       {"PictureChannelReorderDone", "Ctrl+Shift+Return"},
      {"PictureBrktsOK", "Ctrl+Shift+B"},      {"PictureBrktLeft", "Ctrl+Shift+["},
      {"PictureBrktRight", "Ctrl+Shift+]"},    {"PicturePushPin", "Ctrl+Shift+P"},
      {"PictureOBJExtract", "Ctrl+Shift+X"},   {"PictureOBJView", "Ctrl+Shift+W"},
      {"PictureScaleObj", "Ctrl+Shift+L"},     {"PictureMash", "Ctrl+Shift+H"},
      {"PictureMapViewer", "Ctrl+Shift+A"},    {"PictureMirror", "Ctrl+Shift+I"},
      {"PictureMatColor", "Ctrl+Shift+1"},     {"PictureMatHiLite", "Ctrl+Shift+2"},
      {"PictureRenameMorph", "Ctrl+Shift+N"},
  };
  auto it = keys.find(name);
  return it == keys.end() ? QKeySequence() : QKeySequence(QString::fromLatin1(it->second));
}

QLabel* heading(const QString& text, QWidget* parent) {
  auto* l = new QLabel(text, parent);
  QFont f = l->font();
  f.setBold(true);
  l->setFont(f);
  return l;
}
}  // namespace

QWidget* MainWindow::place(ui::Control& control, QWidget* widget) {
  widget->setObjectName(fromBytes(control.name()));
  // Files dropped anywhere on the window open; no box takes them as text.
  widget->setAcceptDrops(qobject_cast<PictureButton*>(widget) != nullptr && widget->acceptDrops());
  m_widgets[control.name()] = widget;
  m_pending.emplace_back(&control, widget);
  return widget;
}

PictureButton* MainWindow::picture(ui::Control& control, int side) {
  auto* button = new PictureButton(nullptr, side);
  place(control, button);
  QKeySequence keys = pictureKeys(control.name());
  if (!keys.isEmpty()) {
    button->setProperty(kShortcutProperty, keys);
    auto* action = new QAction(button);
    action->setShortcut(keys);
    action->setShortcutContext(Qt::WindowShortcut);
    connect(action, &QAction::triggered, button, &PictureButton::press);
    addAction(action);  // the keys work wherever the focus is in the window
  }
  return button;
}

QWidget* MainWindow::label(ui::Control& control, bool clickable, bool path) {
  QLabel* l = path ? new ElidedLabel : new QLabel;
  if (clickable) l->setCursor(Qt::PointingHandCursor);
  return place(control, l);
}

QWidget* MainWindow::lineBox(ui::Control& control) { return place(control, new QLineEdit); }

QWidget* MainWindow::list(ui::Control& control, bool draggable) {
  auto* l = new LineList;
  if (draggable) l->setDragSource(fromBytes("Opening." + control.name()));
  return place(control, l);
}

void MainWindow::buildMenus() {
  ui::Opening& o = m_program.opening;
  QMenu* file = menuBar()->addMenu(QString());
  m_pending.emplace_back(&o.MenuFile, file);
  m_menus["MenuFile"] = file;
  m_pending.emplace_back(&o.MenuFileOpen, menuAction(file, QKeySequence::Open));
  m_pending.emplace_back(&o.MenuFileSave, menuAction(file, QKeySequence::Save));
  m_pending.emplace_back(&o.MenuFileSaveAs, menuAction(file, QKeySequence("Ctrl+Shift+S")));
  m_pending.emplace_back(&o.menuRecent, menuAction(file));
  file->addSeparator();
  m_pending.emplace_back(&o.MenuFileExit, menuAction(file, QKeySequence("Ctrl+Q")));

  QMenu* tools = menuBar()->addMenu(QString());
  m_pending.emplace_back(&o.MenuCR2Tools, tools);
  m_menus["MenuCR2Tools"] = tools;
  m_pending.emplace_back(&o.MenuBrack, menuAction(tools, QKeySequence("Ctrl+B")));
  m_pending.emplace_back(&o.menuEditor, menuAction(tools, QKeySequence("Ctrl+E")));
  m_pending.emplace_back(&o.MenuAttrib, menuAction(tools));
  tools->addSeparator();
  // The dial and channel tools; the twist, limits and transfer lines do nothing.
  for (ui::MenuItem* item : {&o.MenuDials, &o.MenuBendOff, &o.MenuBendOn, &o.menuDialTrackSpeed, &o.MenuDumpIK,
                             &o.MenuTwist, &o.MenuLimits, &o.menuMirror, &o.menuMirrorOpen, &o.MenuTransferParts})
    m_pending.emplace_back(item, menuAction(tools));
  tools->addSeparator();
  m_pending.emplace_back(&o.MenuPropObjRel, menuAction(tools));
  m_pending.emplace_back(&o.MenuPropTexRel, menuAction(tools));
  tools->addSeparator();
  m_pending.emplace_back(&o.MenuNotepad, menuAction(tools));
  m_pending.emplace_back(&o.MenuNotebook, menuAction(tools));
  tools->addSeparator();
  m_pending.emplace_back(&o.menuERCUnique, menuAction(tools));

  QMenu* library = menuBar()->addMenu(QString());
  m_pending.emplace_back(&o.MenuLibrary, library);
  m_menus["MenuLibrary"] = library;
  for (ui::MenuItem* item : {&o.MenuPoseFile, &o.menuMatFile, &o.MenuMor, &o.menuCombinePZ2})
    m_pending.emplace_back(item, menuAction(library));
  library->addSeparator();
  QMenu* master = library->addMenu(QString());
  m_pending.emplace_back(&o.MenuMasterCR2, master);
  for (ui::MenuItem* item : {&o.MenuP3Male, &o.MenuP3Female, &o.MenuP4Male, &o.MenuP4Female, &o.MenuVic})
    m_pending.emplace_back(item, menuAction(master));
  master->addSeparator();
  m_pending.emplace_back(&o.MenuAnyMasterStandard, menuAction(master));
  m_pending.emplace_back(&o.MenuAnyMasterNoFBM, menuAction(master));
  m_pending.emplace_back(&o.menuNullFig, menuAction(library));
  library->addSeparator();
  for (ui::MenuItem* item : {&o.menuGeomSwitch, &o.MenuPZ3Cr2Conv, &o.MenuMakeMTL, &o.MenuPZ3AVI, &o.MenuP3P4Cam})
    m_pending.emplace_back(item, menuAction(library));
  library->addSeparator();
  for (ui::MenuItem* item : {&o.MenuPhi, &o.MenuViewPhi}) m_pending.emplace_back(item, menuAction(library));

  // The Help menu's first entry is MenuHelp itself, which opens the help pages; the menu
  // title is bound to nothing, so that opening the menu does not open the pages.
  QMenu* help = menuBar()->addMenu(QString::fromStdString(o.MenuHelp.caption()));
  m_menus["MenuHelp"] = help;
  m_pending.emplace_back(&o.MenuHelp, menuAction(help));
  m_pending.emplace_back(&o.MenuAbout, menuAction(help, QKeySequence::HelpContents));
}

QWidget* MainWindow::buildHeader() {
  ui::Opening& o = m_program.opening;
  auto* header = new QWidget;
  auto* row = new QHBoxLayout(header);
  row->setContentsMargins(8, 4, 8, 4);
  QWidget* fileName = label(o.LabelFileName, true, true);
  QFont bold = fileName->font();
  bold.setBold(true);
  fileName->setFont(bold);
  row->addWidget(fileName);
  row->addWidget(label(o.LabelFileSize));
  row->addWidget(label(o.LabelOBJFileName, false, true), 1);
  row->addStretch();
  row->addWidget(label(o.LabelOpenSourceTitle));
  row->addWidget(label(o.LabelChannelFileName, true, true), 1);
  auto* source = static_cast<QLabel*>(label(o.LabelOpenSource, true));
  source->setFrameShape(QFrame::Panel);
  source->setFrameShadow(QFrame::Raised);
  source->setMargin(3);
  row->addWidget(source);
  return header;
}

QWidget* MainWindow::buildBody() {
  ui::Opening& o = m_program.opening;
  auto* body = new QWidget;
  auto* row = new QHBoxLayout(body);
  row->setContentsMargins(0, 0, 0, 0);
  auto* splash = new QLabel;
  splash->setAlignment(Qt::AlignCenter);
  splash->setPixmap(QPixmap::fromImage(splashImage(620, 380)));
  splash->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  splash->setMinimumSize(160, 120);  // gives way to the panes while a file is being read
  row->addWidget(place(o.ImageSplash, splash), 1);
  row->addWidget(buildPanes(), 4);
  // The OBJ tools keep the right edge also when neither the splash nor the figure page shows.
  row->addStretch(0);
  row->addWidget(buildObjColumn());
  return body;
}

// The figure page: body parts on the left, the tools that work between the panes, the
// channels (or the source's parts) on the right, and the lists of the channel tools.
QWidget* MainWindow::buildPanes() {
  ui::Opening& o = m_program.opening;
  auto* page = new QFrame;
  place(o.FrameFigurePage, page);
  auto* panes = new QHBoxLayout(page);
  panes->setContentsMargins(0, 0, 0, 0);
  auto* left = new QVBoxLayout;
  left->addWidget(label(o.LabelBodyParts));
  left->addWidget(list(o.ListActors, true));
  panes->addLayout(left, 2);

  auto* tools = new QVBoxLayout;
  tools->setSpacing(4);
  tools->addSpacing(20);
  for (ui::Picture* p :
       {&o.PictureViewChannels, &o.PictureCopyToDest, &o.PictureTrash, &o.PictureJoints, &o.PictureEMC,
        &o.PictureChangeRatio, &o.PictureEditor, &o.PictureChannelReorderDone})
    tools->addWidget(picture(*p));
  tools->addStretch();
  panes->addLayout(tools);

  auto* right = new QVBoxLayout;
  m_channelsHeading = heading(tr("Channels"), page);
  right->addWidget(m_channelsHeading);
  right->addWidget(list(o.ListChannels, true));
  panes->addLayout(right, 3);
  m_workLists = new QHBoxLayout;
  for (ui::ListBox* l : {&o.ListEMCs, &o.ListChannelsReorder, &o.ListChannelsReorderByPart,
                         &o.ListChannelsReorderNewOrder, &o.ListChannelsReorderReordered, &o.ListAltGeomActors,
                         &o.ListAltGeomNames, &o.ListOBJBatch})
    m_workLists->addWidget(list(*l, l != &o.ListEMCs));
  // The body part transfer's folder and file lists, whose lines drag onto the tool's
  // picture, and its chain and link weight lists.
  auto* transfer = new QVBoxLayout;
  transfer->addWidget(place(o.DirTransferParts, new QComboBox));
  transfer->addWidget(list(o.FileTransferParts, true), 1);
  m_workLists->addLayout(transfer);
  for (ui::ListBox* l : {&o.ListTransferChains, &o.ListTransferWeights}) m_workLists->addWidget(list(*l, false));
  panes->addLayout(m_workLists, 2);
  return page;
}

// The Bracket Checker's results with the push pin, and the geometry tools.
QWidget* MainWindow::buildObjColumn() {
  ui::Opening& o = m_program.opening;
  auto* columnBox = new QWidget;
  columnBox->setFixedWidth(128);
  auto* column = new QVBoxLayout(columnBox);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(4);
  auto* results = new QHBoxLayout;
  for (ui::Picture* p : {&o.PictureBrktsOK, &o.PictureBrktLeft, &o.PictureBrktRight})
    results->addWidget(picture(*p, 48));
  results->addWidget(picture(o.PicturePushPin, 28));
  column->addLayout(results);
  column->addSpacing(20);
  for (ui::Picture* p : {&o.PictureOBJExtract, &o.PictureOBJView, &o.PictureScaleObj, &o.PictureMash,
                         &o.PictureMapViewer, &o.PictureMirror})
    column->addWidget(picture(*p), 0, Qt::AlignHCenter);
  column->addStretch();
  m_objTools = column;
  return columnBox;
}

QWidget* MainWindow::buildBottom() {
  ui::Opening& o = m_program.opening;
  auto* bottom = new QWidget;
  auto* row = new QHBoxLayout(bottom);
  row->setContentsMargins(0, 0, 0, 0);

  auto* paths = new QGroupBox(tr("Geometry and maps"));
  place(o.FramePaths, paths);
  auto* grid = new QGridLayout(paths);
  int r = 0;
  for (auto [l, box] : {std::pair<ui::Control*, ui::Control*>{&o.LabelMainOBJPath, &o.TextMainOBJ},
                        {&o.LabelMainTex, &o.TextMainTex},
                        {&o.LabelMainBump, &o.TextMainBump},
                        {&o.LabelMainReflect, &o.TextMainReflect},
                        {&o.LabelMainTrans, &o.TextMainTrans}}) {
    grid->addWidget(label(*l, true), r, 0);
    grid->addWidget(lineBox(*box), r++, 1);
  }
  row->addWidget(paths, 3);

  auto* materials = new QGridLayout;
  materials->addWidget(label(o.LabelMaterials), 0, 0);
  auto* swatches = new QHBoxLayout;
  swatches->addWidget(picture(o.PictureMatColor, 22));
  swatches->addWidget(picture(o.PictureMatHiLite, 22));
  swatches->addStretch();
  materials->addLayout(swatches, 0, 1);
  materials->addWidget(list(o.ListMaterials), 1, 0, 1, 2);
  materials->addWidget(label(o.LabelPropOBJs), 0, 2);
  materials->addWidget(list(o.ListPropObj), 1, 2);
  row->addLayout(materials, 3);

  auto* notes = new QPlainTextEdit;
  notes->setPlaceholderText(tr("Notes (double-click to put them away)"));
  typeTabsWithCtrl(notes);
  notes->setMaximumHeight(150);
  row->addWidget(place(o.TextOpeningNotes, notes), 2);
  bottom->setMaximumHeight(190);
  return bottom;
}

QWidget* MainWindow::buildToolRow() {
  ui::Opening& o = m_program.opening;
  auto* tools = new QWidget;
  auto* row = new QHBoxLayout(tools);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(place(o.OptionChannelRename, new QRadioButton));
  row->addWidget(place(o.OptionBodyPartRename, new QRadioButton));
  row->addWidget(lineBox(o.TextMorphRename));
  row->addWidget(picture(o.PictureRenameMorph, 28));
  row->addWidget(lineBox(o.TextTrackingSpeed));
  row->addWidget(lineBox(o.TextERCUnique));
  row->addWidget(lineBox(o.TextOBJScale));
  auto* slider = new QSlider(Qt::Horizontal);
  slider->setMinimumWidth(160);
  row->addWidget(place(o.SliderOBJScale, slider));
  row->addWidget(place(o.CheckOBJBatch, new QCheckBox(tr("Batch"))));
  auto* mash = new QGroupBox(tr("Mash"));
  place(o.FrameMash, mash);
  auto* mashRow = new QHBoxLayout(mash);
  mashRow->addWidget(place(o.OptionMashOBJ, new QRadioButton(tr("OBJ"))));
  mashRow->addWidget(place(o.OptionMashMorph, new QRadioButton(tr("Morph"))));
  row->addWidget(mash);
  for (ui::Label* l : {&o.LabelX, &o.LabelY, &o.LabelZ}) row->addWidget(label(*l));
  m_extraRow = row;
  row->addStretch();
  return tools;
}

void MainWindow::buildCentral() {
  ui::Opening& o = m_program.opening;
  auto* central = new QWidget;
  auto* column = new QVBoxLayout(central);
  column->setContentsMargins(6, 6, 6, 6);
  column->addWidget(buildHeader());
  column->addWidget(buildBody(), 1);
  column->addWidget(buildToolRow());
  column->addWidget(buildBottom());
  setCentralWidget(central);

  // The pop-up lists float over the window.
  for (ui::ListBox* l : {&o.ListMRU, &o.ListAllTexMaps}) {
    auto* popUp = new LineList(central);
    popUp->setFrameShape(QFrame::Box);
    popUp->setLineWidth(2);
    auto* shadow = new QGraphicsDropShadowEffect(popUp);
    shadow->setBlurRadius(16);
    shadow->setOffset(2, 3);
    popUp->setGraphicsEffect(shadow);
    popUp->installEventFilter(this);
    place(*l, popUp);
  }
  m_progress = new JobProgressBar;
  m_status = new QLabel;
  statusBar()->addWidget(m_status, 1);
  statusBar()->addPermanentWidget(m_progress);
}

// Controls that no place was made for (added to the form later) still get a widget, so
// that every control of the form is on screen when its model shows it.
void MainWindow::bindRemaining() {
  for (ui::Control* c : m_program.opening.controls()) {
    if (m_binding->isBound(*c)) continue;
    using K = ui::ControlKind;
    QObject* target = nullptr;
    switch (c->kind()) {
      case K::Menu:
        target = menuAction(m_menus["MenuCR2Tools"]);
        break;
      case K::Timer:
        break;
      case K::Picture: {
        auto* button = new PictureButton(nullptr, 40);
        m_objTools->insertWidget(m_objTools->count() - 1, button, 0, Qt::AlignHCenter);
        target = button;
        break;
      }
      case K::ListBox:
        target = new LineList;
        m_workLists->addWidget(static_cast<QWidget*>(target));
        break;
      case K::TextBox:
        target = new QLineEdit;
        break;
      case K::CheckBox:
        target = new QCheckBox;
        break;
      case K::Option:
        target = new QRadioButton;
        break;
      case K::Slider:
        target = new QSlider(Qt::Horizontal);
        break;
      case K::ComboBox:
        target = new QComboBox;
        break;
      default:
        target = new QLabel;
        break;
    }
    if (auto* w = qobject_cast<QWidget*>(target)) {
      w->setObjectName(fromBytes(c->name()));
      if (w->parentWidget() == nullptr) m_extraRow->insertWidget(m_extraRow->count() - 1, w);
      m_widgets[c->name()] = w;
    }
    m_binding->bind(*c, target);
  }
}

void MainWindow::restorePlace() {
  resize(1120, 760);
  std::unique_ptr<QSettings> store = windowSettings();
  restoreGeometry(store->value("Window/geometry").toByteArray());
}

}  // namespace tolvane::gui
