#include "gui/phi_windows.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QVBoxLayout>

#include "gui/binders.h"
#include "gui/form_windows.h"
#include "gui/qt_text.h"
#include "ui/form_phi.h"

namespace tolvane::gui {

namespace {

QFont fixedFont() {
  QFont fixed("Monospace");
  fixed.setStyleHint(QFont::TypeWriter);
  return fixed;
}

template <class W>
W* named(W* widget, const ui::Control& control) {
  widget->setObjectName(fromBytes(control.name()));
  return widget;
}

QLabel* commandLabel() {
  auto* l = new QLabel;
  l->setFrameStyle(QFrame::Panel | QFrame::Raised);
  l->setAlignment(Qt::AlignCenter);
  l->setCursor(Qt::PointingHandCursor);
  return l;
}

QWidget* makePhiWindow(FormBinding& binding, QWidget* mainWindow) {
  auto& form = static_cast<ui::FormPhi&>(binding.form());
  auto* window = new FormWindow(binding, mainWindow);
  auto* layout = new QVBoxLayout(window);
  auto* menus = new QMenuBar(window);
  QAction* print = menus->addAction(QString());
  QAction* help = menus->addAction(QString());
  print->setObjectName("MenuPrint");
  help->setObjectName("MenuPhiHelp");
  layout->setMenuBar(menus);
  auto* path = named(new QLabel, form.LabelPhiFileName);
  auto* list = named(new LineList, form.ListPhi);
  list->setFont(fixedFont());
  auto* edit = named(new QLineEdit, form.TextPhiEdit);
  edit->setFont(fixedFont());
  edit->setToolTip(QObject::tr("Double-click to put the text in place of the selected line"));
  auto* done = named(commandLabel(), form.LabelPhiDone);
  auto* save = named(commandLabel(), form.LabelPhiSave);
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(save);
  buttons->addStretch();
  buttons->addWidget(done);
  layout->addWidget(path);
  layout->addWidget(list, 1);
  layout->addWidget(edit);
  layout->addLayout(buttons);
  binding.bind(form.MenuPrint, print);
  binding.bind(form.MenuPhiHelp, help);
  binding.bind(form.LabelPhiFileName, path);
  binding.bind(form.ListPhi, list);
  binding.bind(form.TextPhiEdit, edit);
  binding.bind(form.LabelPhiDone, done);
  binding.bind(form.LabelPhiSave, save);
  window->resize(640, 560);
  return window;
}

QWidget* makeTreeWindow(FormBinding& binding, QWidget* mainWindow) {
  auto& form = static_cast<ui::FormTree&>(binding.form());
  auto* window = new FormWindow(binding, mainWindow);
  auto* layout = new QVBoxLayout(window);
  auto* list = named(new LineList, form.ListPhi);
  list->setFont(fixedFont());
  auto* go = named(new QPushButton, form.CommandGo);
  layout->addWidget(list, 1);
  layout->addWidget(go);
  binding.bind(form.ListPhi, list);
  binding.bind(form.CommandGo, go);
  window->resize(360, 600);
  return window;
}

}  // namespace

void registerPhiWindows() {
  registerFormWindow("FormPhi", makePhiWindow);
  registerFormWindow("FormTree", makeTreeWindow);
}

}  // namespace tolvane::gui
