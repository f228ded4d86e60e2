#include "gui/editor_window.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>
#include <functional>
#include <memory>

#include "gui/editor_view.h"
#include "gui/qt_text.h"
#include "program/program.h"
#include "ui/form_editor.h"

namespace tolvane::gui {

namespace {
constexpr int kPaneGap = 4;

// A pane's binder: the view draws the pane's text control; the binder passes on what
// else the form says about the pane (shown, colour, width and order, focus) as soon as
// it changes, so that a question shows the pane it is about.
class PaneBinder : public ControlBinder {
 public:
  PaneBinder(FormBinding& binding, ui::TextPane& pane, EditorView* view, std::function<void()> placed)
      : ControlBinder(binding, pane, view), m_view(view), m_placed(std::move(placed)) {}

 protected:
  void refreshContent(bool) override {
    m_view->refresh();
    m_placed();
  }
  void applyColours(ui::Colour, ui::Colour) override {}  // the view paints the pane's colours

 private:
  EditorView* m_view;
  std::function<void()> m_placed;
};

QPushButton* button(const char* name, const QString& text) {
  auto* b = new QPushButton(text);
  b->setObjectName(name);
  b->setFocusPolicy(Qt::NoFocus);  // a click leaves the focus in the pane it is about
  return b;
}
}  // namespace

EditorWindow::EditorWindow(FormBinding& binding, QWidget* mainWindow)
    : FormWindow(binding, mainWindow), m_form(static_cast<ui::FormEditor&>(binding.form())) {
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(buildToolRow());
  layout->addWidget(buildFindRow());
  layout->addWidget(buildPaneArea(), 1);
  binding.bind(m_form.Timer1, nullptr);
  binding.bind(m_form.Timer2, nullptr);
  connect(&binding, &FormBinding::eventHandled, this, &EditorWindow::refreshPanes);
  // The hand-over runs in the main form's handlers; it shows the form, which reports here.
  connect(&binding, &FormBinding::formChanged, this, &EditorWindow::refreshPanes);
  refreshPanes();
}

QWidget* EditorWindow::buildToolRow() {
  FormBinding& b = binding();
  auto* row = new QWidget;
  auto* layout = new QHBoxLayout(row);
  layout->setContentsMargins(0, 0, 0, 0);
  const std::pair<ui::Picture*, QString> pictures[] = {{&m_form.PictureSecFile, tr("Second file")},
                                                       {&m_form.PictureSave, tr("Save")},
                                                       {&m_form.PicturePrint, tr("Print")},
                                                       {&m_form.PictureFind, tr("Find")},
                                                       {&m_form.PictureReplace, tr("Replace")}};
  for (const auto& [picture, text] : pictures) {
    QPushButton* w = button(picture->name().c_str(), text);
    layout->addWidget(w);
    b.bind(*picture, w);
  }
  auto* lineLabel = new QLabel;
  auto* lineNum = new QLineEdit;
  lineNum->setObjectName("TextLineNum");
  lineNum->setMaximumWidth(90);
  QPushButton* go = button("CommandGotoLineNum", {});
  layout->addSpacing(12);
  for (QWidget* w : std::initializer_list<QWidget*>{lineLabel, lineNum, go}) layout->addWidget(w);
  b.bind(m_form.LabelLineNum, lineLabel);
  b.bind(m_form.TextLineNum, lineNum);
  b.bind(m_form.CommandGotoLineNum, go);
  for (ui::Label* label : {&m_form.LabelFileSizeEd1, &m_form.LabelFileSizeEd2, &m_form.LabelSecFile}) {
    auto* shown = new QLabel;
    shown->setObjectName(QString::fromStdString(label->name()));
    layout->addSpacing(12);
    layout->addWidget(shown);
    b.bind(*label, shown);
  }
  layout->addStretch(1);
  return row;
}

QWidget* EditorWindow::buildFindRow() {
  FormBinding& b = binding();
  auto* row = new QWidget;
  auto* layout = new QHBoxLayout(row);
  layout->setContentsMargins(0, 0, 0, 0);
  auto* findLabel = new QLabel;
  auto* find = new QComboBox;
  find->setObjectName("ComboFind");
  find->setEditable(true);
  find->setInsertPolicy(QComboBox::NoInsert);  // the form keeps the history
  find->setMinimumWidth(220);
  auto* wholeWord = new QCheckBox;
  auto* matchCase = new QCheckBox;
  wholeWord->setObjectName("CheckWholeWord");
  matchCase->setObjectName("CheckMatchCase");
  auto* replaceLabel = new QLabel;
  auto* replace = new QLineEdit;
  replace->setObjectName("TextReplace");
  for (QWidget* w :
       std::initializer_list<QWidget*>{findLabel, find, wholeWord, matchCase, replaceLabel, replace})
    layout->addWidget(w);
  layout->addStretch(1);
  b.bind(m_form.LabelFind, findLabel);
  b.bind(m_form.ComboFind, find);
  b.bind(m_form.CheckWholeWord, wholeWord);
  b.bind(m_form.CheckMatchCase, matchCase);
  b.bind(m_form.LabelReplace, replaceLabel);
  b.bind(m_form.TextReplace, replace);
  return row;
}

QWidget* EditorWindow::buildPaneArea() {
  m_paneArea = new QWidget;
  m_paneArea->setMinimumSize(300, 200);
  m_paneArea->installEventFilter(this);
  m_left = new EditorView(m_form.RichTextBox1, m_paneArea);
  m_right = new EditorView(m_form.RichTextBox2, m_paneArea);
  for (EditorView* view : {m_left, m_right}) {
    ui::TextPane* pane = &view->pane();
    view->setObjectName(QString::fromStdString(pane->name()));
    connect(view, &EditorView::keyDown, this, [this, pane](int code, int shift) {
      EventArgs args;
      args.keyCode = code;
      args.shift = shift;
      binding().fire(pane, EventKind::Key, args);
    });
    connect(view, &EditorView::clicked, this, [this, pane] { binding().fire(pane, EventKind::Click); });
  }
  // The list is the editor's own: a shift click opens the entry in the right pane.
  m_mru = new QListWidget(m_paneArea);
  m_mru->setObjectName("ListMRU");
  connect(m_mru, &QListWidget::itemClicked, this, [this](QListWidgetItem* item) {
    m_form.ListMRU.setListIndex(m_mru->row(item));
    EventArgs args;
    args.shift = shiftState(QApplication::keyboardModifiers());
    binding().fire(&m_form.ListMRU, EventKind::Click, args);
  });
  for (EditorView* view : {m_left, m_right})
    binding().bindWith(
        view->pane(), std::make_unique<PaneBinder>(binding(), view->pane(), view, [this] { layoutPanes(); }));
  return m_paneArea;
}

void EditorWindow::refreshList() {
  if (m_form.ListMRU.items() != m_mruItems) {
    m_mruItems = m_form.ListMRU.items();
    m_mru->clear();
    for (const std::string& item : m_mruItems) m_mru->addItem(fromDisplayBytes(item));
  }
  m_mru->setToolTip(fromBytes(m_form.ListMRU.toolTip()));
  m_mru->setVisible(m_form.ListMRU.visible());
  m_mru->setGeometry(0, 0, std::min(m_paneArea->width(), 600), std::min(m_paneArea->height(), 240));
  if (m_mru->isVisible()) m_mru->raise();
}

void EditorWindow::refreshPanes() {
  // The handlers edit the text controls without a word to the form: draw them anew.
  for (EditorView* view : {m_left, m_right}) view->refresh();
  layoutPanes();
  refreshList();
}

void EditorWindow::layoutPanes() {
  const int width = m_paneArea->width(), height = m_paneArea->height();
  const int shrunk = m_form.RichTextBox1.width();
  m_left->setGeometry(0, 0, shrunk == ui::TextPane::kFullWidth ? width : std::min(width, shrunk), height);
  const int rightX = std::max(0, std::min(width - 100, ui::kPaneShrunkWidth + kPaneGap));
  m_right->setGeometry(rightX, 0, width - rightX, height);
  if (m_form.RichTextBox1.zOrder() > m_form.RichTextBox2.zOrder())
    m_left->raise();
  else
    m_right->raise();
  if (m_mru->isVisible()) m_mru->raise();
}

void EditorWindow::keepPlacement() {
  if (!m_placementApplied || !isVisible()) return;
  QRect g = geometry();
  m_form.Left = g.x();
  m_form.Top = g.y();
  m_form.Width = g.width();
  m_form.Height = g.height();
}

void EditorWindow::showEvent(QShowEvent* event) {
  FormWindow::showEvent(event);
  // The placement the form loaded from the settings store wins; it is kept again as
  // the window moves.
  setGeometry(m_form.Left, m_form.Top, m_form.Width, m_form.Height);
  m_placementApplied = true;
  refreshPanes();
}

void EditorWindow::moveEvent(QMoveEvent* event) {
  FormWindow::moveEvent(event);
  keepPlacement();
}

void EditorWindow::resizeEvent(QResizeEvent* event) {
  FormWindow::resizeEvent(event);
  keepPlacement();
}

bool EditorWindow::eventFilter(QObject* watched, QEvent* event) {
  if (watched == m_paneArea && event->type() == QEvent::Resize) layoutPanes();
  return FormWindow::eventFilter(watched, event);
}

void registerEditorWindow() {
  registerFormWindow("FormEditor", [](FormBinding& binding, QWidget* mainWindow) {
    return new EditorWindow(binding, mainWindow);
  });
}

}  // namespace tolvane::gui
