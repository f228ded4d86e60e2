#include "gui/erc_windows.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QRadioButton>
#include <QVBoxLayout>

#include "gui/form_windows.h"
#include "gui/qt_text.h"
#include "ui/form_erc.h"

namespace tolvane::gui {

namespace {

// Makes a widget for a control, names it after the control and binds it.
template <class W>
W* bound(FormBinding& binding, ui::Control& control, W* widget) {
  widget->setObjectName(fromBytes(control.name()));
  binding.bind(control, widget);
  return widget;
}

QLabel* commandLabel(FormBinding& binding, ui::Label& label) {
  auto* l = bound(binding, label, new QLabel);
  l->setFrameStyle(QFrame::Panel | QFrame::Raised);
  l->setAlignment(Qt::AlignCenter);
  l->setCursor(Qt::PointingHandCursor);
  l->setMinimumWidth(90);
  return l;
}

QWidget* makeListWindow(FormBinding& binding, QWidget* mainWindow) {
  auto& f = static_cast<ui::FormListEMCs&>(binding.form());
  auto* window = new FormWindow(binding, mainWindow);
  auto* layout = new QVBoxLayout(window);
  layout->addWidget(bound(binding, f.LabelTitle, new QLabel));
  layout->addWidget(bound(binding, f.ListEMCs, new QListWidget), 1);
  layout->addWidget(bound(binding, f.Label1, new QLabel));
  layout->addWidget(bound(binding, f.Text1, new QLineEdit));
  window->resize(460, 560);
  return window;
}

QWidget* makeDialogWindow(FormBinding& binding, QWidget* mainWindow) {
  auto& f = static_cast<ui::DialogERC&>(binding.form());
  auto* window = new FormWindow(binding, mainWindow);
  auto* layout = new QVBoxLayout(window);
  for (int i = 0; i < ui::kErcKindCount; ++i)
    layout->addWidget(bound(binding, f.option(static_cast<ui::ErcKind>(i)), new QRadioButton));
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(commandLabel(binding, f.LabelDone));
  buttons->addWidget(commandLabel(binding, f.LabelCancel));
  layout->addLayout(buttons);
  return window;
}

QWidget* makeBuilderWindow(FormBinding& binding, QWidget* mainWindow) {
  auto& f = static_cast<ui::FormECM&>(binding.form());
  auto* window = new FormWindow(binding, mainWindow);
  auto* layout = new QHBoxLayout(window);
  auto* fields = new QGridLayout;
  int row = 0;
  // The kind labels share one place: only one of them shows.
  auto* kinds = new QVBoxLayout;
  for (int i = 0; i < ui::kErcKindCount; ++i) {
    QLabel* kind = bound(binding, f.kindLabel(static_cast<ui::ErcKind>(i)), new QLabel);
    QFont bold = kind->font();
    bold.setBold(true);
    kind->setFont(bold);
    kinds->addWidget(kind);
  }
  fields->addLayout(kinds, row++, 0, 1, 2);
  const std::pair<ui::Label*, ui::TextBox*> boxes[] = {{&f.LabelPBM1, &f.TextPBM1},
                                                       {&f.LabelPBM2, &f.TextPBM2},
                                                       {&f.LabelPBM3, &f.TextPBM3},
                                                       {&f.LabelPBM4, &f.TextPBM4},
                                                       {&f.LabelPBMRatio, &f.TextPBMRatio}};
  for (const auto& [label, box] : boxes) {
    fields->addWidget(bound(binding, *label, new QLabel), row, 0);
    fields->addWidget(bound(binding, *box, new QLineEdit), row++, 1);
  }
  fields->addWidget(bound(binding, f.LabelWait, new QLabel), row++, 0, 1, 2);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(commandLabel(binding, f.LabelDone));
  buttons->addWidget(commandLabel(binding, f.LabelCancel));
  fields->addLayout(buttons, row++, 0, 1, 2);
  fields->setRowStretch(row, 1);
  layout->addLayout(fields, 1);

  // The lists of the steps lie in one column; each step shows its prompt and list.
  auto* lists = new QVBoxLayout;
  for (ui::Label* prompt :
       {&f.LabelMCControled, &f.LabelMCMaster, &f.LabelListConFigECM, &f.LabelListActorsECM}) {
    QLabel* l = bound(binding, *prompt, new QLabel);
    l->setWordWrap(true);
    lists->addWidget(l);
  }
  for (ui::ListBox* list : {&f.ListControlledMorph, &f.ListConFigECM, &f.ListActorsECM, &f.ListMinMax})
    lists->addWidget(bound(binding, *list, new QListWidget), 1);
  layout->addLayout(lists, 1);
  window->resize(860, 520);
  return window;
}

}  // namespace

void registerErcWindows() {
  registerFormWindow("FormListEMCs", makeListWindow);
  registerFormWindow("DialogERC", makeDialogWindow);
  registerFormWindow("FormECM", makeBuilderWindow);
}

}  // namespace tolvane::gui
