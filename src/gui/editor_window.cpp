#include "gui/editor_window.h"

#include <QAction>
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

#include "editor/editor_pane_events.h"
#include "editor/editor_panes.h"
#include "gui/editor_view.h"
#include "gui/job_progress.h"
#include "gui/picture_button.h"
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
  connect(&binding, &FormBinding::formChanged, this, [this] { m_progress->follow(m_form); });
  addShortcuts();
  refreshPanes();
}

void EditorWindow::addShortcuts() {
  auto add = [this](const QKeySequence& keys, void (EditorWindow::*slot)()) {
    auto* action = new QAction(this);
    action->setShortcut(keys);
    action->setShortcutContext(Qt::WindowShortcut);
    connect(action, &QAction::triggered, this, slot);
    addAction(action);
  };
  add(QKeySequence::Find, &EditorWindow::findKeys);
  add(QKeySequence(Qt::Key_F3), &EditorWindow::findAgain);
  add(QKeySequence("Ctrl+H"), &EditorWindow::replaceKeys);
  add(QKeySequence("Ctrl+G"), &EditorWindow::goToLineKeys);
}

void EditorWindow::goToLineKeys() {
  // The line number box, ready for a number and Enter.
  auto* box = findChild<QLineEdit*>("TextLineNum");
  if (box == nullptr || !box->isVisible()) return;
  box->setFocus(Qt::ShortcutFocusReason);
  box->selectAll();
}

void EditorWindow::findKeys() {
  // Find mode on, or the search box again when it is on.
  if (m_form.ComboFind.visible()) {
    if (auto* box = findChild<QComboBox*>("ComboFind")) {
      box->setFocus(Qt::ShortcutFocusReason);
      if (box->lineEdit() != nullptr) box->lineEdit()->selectAll();
    }
    return;
  }
  binding().fire(&m_form.PictureFind, EventKind::Click);
}

void EditorWindow::replaceKeys() {
  if (m_form.TextReplace.visible()) {
    if (auto* box = findChild<QLineEdit*>("TextReplace")) box->setFocus(Qt::ShortcutFocusReason);
    return;
  }
  binding().fire(&m_form.PictureReplace, EventKind::Click);
}

void EditorWindow::findAgain() {
  // F3 anywhere in the window is F3 in the active pane.
  EventArgs args;
  args.keyCode = editor::kKeyF3;
  binding().fire(&editor::paneOf(m_form, editor::activeSide(m_form)), EventKind::Key, args);
}

void EditorWindow::reopenReplace() {
  if (m_form.TextReplace.visible()) return;
  binding().fire(&m_form.PictureReplace, EventKind::Click);
  if (!m_lastReplacement.empty()) {
    m_form.TextReplace.setText(m_lastReplacement);
    binding().fire(&m_form.TextReplace, EventKind::Change);
  }
}

void EditorWindow::replaceOne() {
  reopenReplace();
  m_lastReplacement = m_form.TextReplace.text();
  findAgain();
}

void EditorWindow::replaceAll() {
  reopenReplace();
  m_lastReplacement = m_form.TextReplace.text();
  EventArgs args;
  args.keyCode = 13;
  binding().fire(&m_form.TextReplace, EventKind::Enter, args);
}

void EditorWindow::refreshTitle() {
  // The form's caption names the left pane's file; the title adds the right pane's.
  QString title = fromDisplayBytes(m_form.caption());
  const std::string& second = m_form.LabelSecFile.caption();
  if (m_form.RichTextBox2.visible() && !second.empty())
    title = tr("%1  |  %2").arg(title.isEmpty() ? tr("(no file)") : title, fromDisplayBytes(second));
  setWindowTitle(title);
}

QWidget* EditorWindow::buildToolRow() {
  FormBinding& b = binding();
  auto* row = new QWidget;
  auto* layout = new QHBoxLayout(row);
  layout->setContentsMargins(0, 0, 0, 0);
  struct Tool {
    ui::Picture* picture;
    QString text;
    QKeySequence keys;
  };
  const Tool pictures[] = {{&m_form.PictureSecFile, tr("Second file"), {}},
                           {&m_form.PictureSave, tr("Save"), QKeySequence::Save},
                           {&m_form.PicturePrint, tr("Print"), QKeySequence::Print},
                           {&m_form.PictureFind, tr("Find"), QKeySequence::Find},
                           {&m_form.PictureReplace, tr("Replace"), QKeySequence("Ctrl+H")}};
  for (const Tool& tool : pictures) {
    QPushButton* w = button(tool.picture->name().c_str(), tool.text);
    // Find and Replace take their keys in the window (they open or focus the boxes).
    bool windowKeys = tool.picture == &m_form.PictureFind || tool.picture == &m_form.PictureReplace;
    describeButton(w, tool.text, windowKeys ? QKeySequence() : tool.keys);
    if (windowKeys) w->setProperty(kShortcutProperty, tool.keys);
    layout->addWidget(w);
    b.bind(*tool.picture, w);
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
  // A large file's load and save tell how far they are.
  m_progress = new JobProgressBar;
  layout->addWidget(m_progress);
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
  connect(replace, &QLineEdit::textEdited, this, [this](const QString& text) { m_lastReplacement = toBytes(text); });
  m_replaceOne = new QPushButton(tr("Replace"));
  m_replaceOne->setObjectName("ButtonReplaceOne");
  m_replaceOne->setToolTip(withShortcut(tr("Find the next place and ask to replace it"), QKeySequence(Qt::Key_F3)));
  m_replaceAll = new QPushButton(tr("Replace All"));
  m_replaceAll->setObjectName("ButtonReplaceAll");
  m_replaceAll->setToolTip(withShortcut(tr("Replace every place on this page"), QKeySequence(Qt::Key_Return)));
  for (QPushButton* w : {m_replaceOne, m_replaceAll}) w->setFocusPolicy(Qt::NoFocus);
  connect(m_replaceOne, &QPushButton::clicked, this, &EditorWindow::replaceOne);
  connect(m_replaceAll, &QPushButton::clicked, this, &EditorWindow::replaceAll);
  for (QWidget* w : std::initializer_list<QWidget*>{findLabel, find, wholeWord, matchCase, replaceLabel, replace,
                                                    m_replaceOne, m_replaceAll})
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
  // Replace and Replace All stay at hand while replace mode is on, and after a replace
  // ended it (its caption stays): they turn it on again with the text last used.
  const bool replacing = m_form.LabelReplace.visible() || m_form.TextReplace.visible();
  m_replaceOne->setVisible(replacing);
  m_replaceAll->setVisible(replacing);
  refreshTitle();
}

void EditorWindow::layoutPanes() {
  const int width = m_paneArea->width(), height = m_paneArea->height();
  const int shrunk = m_form.RichTextBox1.width();
  if (m_form.RichTextBox2.visible() && m_form.RichTextBox1.visible()) {
    // Two files side by side, each with half of the room.
    const int left = std::max(0, (width - kPaneGap) / 2);
    m_left->setGeometry(0, 0, left, height);
    m_right->setGeometry(left + kPaneGap, 0, std::max(0, width - left - kPaneGap), height);
  } else {
    m_left->setGeometry(0, 0, shrunk == ui::TextPane::kFullWidth ? width : std::min(width, shrunk), height);
    m_right->setGeometry(0, 0, width, height);
  }
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
