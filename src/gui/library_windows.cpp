#include "gui/library_windows.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "gui/binders.h"
#include "gui/form_windows.h"
#include "gui/picture_button.h"
#include "ui/form_library.h"

namespace tolvane::gui {

namespace {

template <class W>
W* named(const std::string& name, QWidget* parent = nullptr) {
  auto* w = new W(parent);
  w->setObjectName(QString::fromStdString(name));
  return w;
}

QListWidget* list(FormBinding& b, ui::ListBox& model) {
  auto* w = named<LineList>(model.name());
  if (model.multiSelect()) w->setSelectionMode(QAbstractItemView::MultiSelection);
  b.bind(model, w);
  return w;
}

QLabel* label(FormBinding& b, ui::Label& model) {
  auto* w = named<QLabel>(model.name());
  w->setWordWrap(true);
  b.bind(model, w);
  return w;
}

QPushButton* command(FormBinding& b, ui::Label& model) {
  auto* w = named<QPushButton>(model.name());
  b.bind(model, w);
  return w;
}

QCheckBox* check(FormBinding& b, ui::CheckBox& model) {
  auto* w = named<QCheckBox>(model.name());
  b.bind(model, w);
  return w;
}

// A titled column: a caption over a list.
QWidget* column(const QString& title, QWidget* content) {
  auto* box = new QWidget;
  auto* layout = new QVBoxLayout(box);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(new QLabel(title));
  layout->addWidget(content, 1);
  return box;
}

QHBoxLayout* buttonRow(QPushButton* done, QPushButton* cancel) {
  auto* row = new QHBoxLayout;
  row->addStretch(1);
  row->addWidget(done);
  row->addWidget(cancel);
  return row;
}

// The lists that only carry data for the handlers stay out of sight, but bound, so that
// the runner and the window agree on them.
void hiddenList(FormBinding& b, ui::ListBox& model, QWidget* parent) {
  auto* w = named<LineList>(model.name(), parent);
  w->hide();
  b.bind(model, w);
}

QWidget* makePoseWindow(FormBinding& b, QWidget* mainWindow) {
  auto& f = static_cast<ui::FormPZ2&>(b.form());
  auto* window = new FormWindow(b, mainWindow);
  auto* layout = new QVBoxLayout(window);
  auto* top = new QHBoxLayout;
  top->addWidget(label(b, f.LabelMAT));
  top->addWidget(label(b, f.LabelFNamePZ2), 1);
  layout->addLayout(top);
  layout->addWidget(label(b, f.LabelDirections));
  auto* lists = new QGridLayout;
  lists->addWidget(column(QObject::tr("Actors"), list(b, f.ListActorsPZ2)), 0, 0);
  lists->addWidget(column(QObject::tr("Chosen"), list(b, f.ListActorsWanted)), 0, 1);
  lists->addWidget(list(b, f.ListMaterialsMAT), 1, 0);
  lists->addWidget(list(b, f.ListMaterialsMATWanted), 1, 1);
  layout->addLayout(lists, 1);
  hiddenList(b, f.ListMATColors, window);

  auto* frame = named<QGroupBox>(f.Frame1.name());
  auto* frameLayout = new QGridLayout(frame);
  frameLayout->addWidget(label(b, f.LabelPresent), 0, 0);
  frameLayout->addWidget(label(b, f.LabelNew), 0, 1);
  auto* present = named<PictureButton>(f.ShapePresentColor.name());
  auto* chosen = named<PictureButton>(f.ShapeNewColor.name());
  b.bind(f.ShapePresentColor, present);
  b.bind(f.ShapeNewColor, chosen);
  frameLayout->addWidget(present, 1, 0);
  frameLayout->addWidget(chosen, 1, 1);
  frameLayout->addWidget(command(b, f.LabelChangeColor), 2, 0, 1, 2);
  b.bind(f.Frame1, frame);

  auto* options = new QVBoxLayout;
  for (ui::CheckBox* c : {&f.CheckAllMat, &f.CheckIncludeMaps, &f.CheckNoTrans, &f.CheckSetToWhite})
    options->addWidget(check(b, *c));
  auto* bottom = new QHBoxLayout;
  bottom->addLayout(options);
  bottom->addWidget(frame);
  layout->addLayout(bottom);
  layout->addLayout(buttonRow(command(b, f.LabelDonePZ2), command(b, f.LabelCancelPZ2)));
  window->resize(560, 620);
  return window;
}

QWidget* makeMorWindow(FormBinding& b, QWidget* mainWindow) {
  auto& f = static_cast<ui::FormMOR&>(b.form());
  auto* window = new FormWindow(b, mainWindow);
  auto* layout = new QVBoxLayout(window);
  layout->addWidget(label(b, f.LabelFileName));
  auto* lists = new QHBoxLayout;
  lists->addWidget(column(QObject::tr("Morphs"), list(b, f.ListMorphs)), 2);
  lists->addWidget(column(QObject::tr("Values"), list(b, f.ListValues)), 1);
  layout->addLayout(lists, 1);
  auto* value = new QHBoxLayout;
  value->addWidget(label(b, f.LabelValue));
  auto* text = named<QLineEdit>(f.TextValue.name());
  b.bind(f.TextValue, text);
  value->addWidget(text, 1);
  layout->addLayout(value);
  layout->addLayout(buttonRow(command(b, f.LabelDone), command(b, f.LabelCancel)));
  window->resize(480, 560);
  return window;
}

QWidget* makeWelderWindow(FormBinding& b, QWidget* mainWindow) {
  auto& f = static_cast<ui::FormPZ2Combine&>(b.form());
  auto* window = new FormWindow(b, mainWindow);
  auto* layout = new QGridLayout(window);
  layout->addWidget(label(b, f.LabelFileFirst), 0, 0);
  layout->addWidget(label(b, f.LabelFileSecond), 0, 1);
  layout->addWidget(list(b, f.ListFile1), 1, 0);
  layout->addWidget(list(b, f.ListFile2), 1, 1);
  layout->addWidget(label(b, f.LabelKey1), 2, 0);
  layout->addWidget(label(b, f.LabelKey2), 2, 1);
  layout->addWidget(command(b, f.LabelOpenSecond), 3, 1);
  for (ui::ListBox* l : {&f.ListKeyLinesFirst, &f.ListKeyLines, &f.ListActors2, &f.ListTGVP, &f.ListActors1,
                         &f.ListFoundMorphs, &f.ListNotFound})
    hiddenList(b, *l, window);
  layout->addLayout(buttonRow(command(b, f.LabelDone), command(b, f.LabelCancel)), 4, 0, 1, 2);
  layout->setRowStretch(1, 1);
  window->resize(720, 560);
  return window;
}

}  // namespace

void registerLibraryWindows() {
  if (formWindowFactory("FormPZ2") == nullptr) registerFormWindow("FormPZ2", makePoseWindow);
  if (formWindowFactory("FormMOR") == nullptr) registerFormWindow("FormMOR", makeMorWindow);
  if (formWindowFactory("FormPZ2Combine") == nullptr) registerFormWindow("FormPZ2Combine", makeWelderWindow);
}

}  // namespace tolvane::gui
