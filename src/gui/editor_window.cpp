#include "gui/editor_window.h"

#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include "gui/editor_view.h"
#include "program/program.h"
#include "ui/form_editor.h"

namespace tolvane::gui {

namespace {
constexpr int kPaneGap = 4;

QColor qColour(ui::Colour c) { return QColor(c & 0xFF, (c >> 8) & 0xFF, (c >> 16) & 0xFF); }

QString qText(const std::string& bytes) { return textFromBytes(bytes); }

void setForeColour(QWidget* widget, ui::Colour colour) {
  QPalette p = widget->palette();
  p.setColor(QPalette::WindowText, qColour(colour));
  p.setColor(QPalette::Text, qColour(colour));
  widget->setPalette(p);
}
}  // namespace

EditorWindow::EditorWindow(Program& program, QWidget* parent)
    : QWidget(parent, Qt::Window), m_program(program), m_form(program.formEditor) {
  setObjectName("FormEditor");
  build();
  m_form.setObserver([this](ui::Form&, ui::Control* control) { refresh(control); });
  connect(&m_timer1, &QTimer::timeout, this, [this] { fire("Timer1", EventKind::Timer); });
  connect(&m_timer2, &QTimer::timeout, this, [this] { fire("Timer2", EventKind::Timer); });
  // The form learns where the focus went, so that a refresh does not pull it back.
  connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) {
    for (const auto& [control, widget] : m_widgets)
      if (widget == now || (widget == m_find && now == m_find->lineEdit())) control->setFocus();
  });
  refreshAll();
}

EditorWindow::~EditorWindow() { m_form.setObserver(nullptr); }

QPushButton* EditorWindow::picture(const char* name, const QString& caption) {
  auto* button = new QPushButton(caption);
  button->setObjectName(name);
  button->setContextMenuPolicy(Qt::CustomContextMenu);
  connect(button, &QPushButton::clicked, this, [this, name] { fire(name, EventKind::Click); });
  connect(button, &QPushButton::customContextMenuRequested, this,
          [this, name] { fire(name, EventKind::RightClick); });
  m_widgets[m_form.control(name)] = button;
  return button;
}

QWidget* EditorWindow::buildToolRow() {
  auto* row = new QWidget;
  auto* layout = new QHBoxLayout(row);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(picture("PictureSecFile", tr("Second file")));
  layout->addWidget(picture("PictureSave", tr("Save")));
  layout->addWidget(picture("PicturePrint", tr("Print")));
  layout->addWidget(picture("PictureFind", tr("Find")));
  layout->addWidget(picture("PictureReplace", tr("Replace")));
  auto* lineLabel = new QLabel;
  m_widgets[&m_form.LabelLineNum] = lineLabel;
  m_lineNum = new QLineEdit;
  m_lineNum->setObjectName("TextLineNum");
  m_lineNum->setMaximumWidth(90);
  m_widgets[&m_form.TextLineNum] = m_lineNum;
  connect(m_lineNum, &QLineEdit::textEdited, this,
          [this](const QString& t) { m_form.TextLineNum.setText(bytesFromText(t)); });
  connect(m_lineNum, &QLineEdit::returnPressed, this, [this] { fire("TextLineNum", EventKind::Enter); });
  auto* go = new QPushButton;
  go->setObjectName("CommandGotoLineNum");
  m_widgets[&m_form.CommandGotoLineNum] = go;
  connect(go, &QPushButton::clicked, this, [this] { fire("CommandGotoLineNum", EventKind::Click); });
  layout->addSpacing(12);
  layout->addWidget(lineLabel);
  layout->addWidget(m_lineNum);
  layout->addWidget(go);
  for (ui::Label* label : {&m_form.LabelFileSizeEd1, &m_form.LabelFileSizeEd2, &m_form.LabelSecFile}) {
    auto* shown = new QLabel;
    shown->setObjectName(QString::fromStdString(label->name()));
    m_widgets[label] = shown;
    layout->addSpacing(12);
    layout->addWidget(shown);
  }
  layout->addStretch(1);
  return row;
}

QWidget* EditorWindow::buildFindRow() {
  auto* row = new QWidget;
  auto* layout = new QHBoxLayout(row);
  layout->setContentsMargins(0, 0, 0, 0);
  auto* findLabel = new QLabel;
  m_widgets[&m_form.LabelFind] = findLabel;
  m_find = new QComboBox;
  m_find->setObjectName("ComboFind");
  m_find->setEditable(true);
  m_find->setInsertPolicy(QComboBox::NoInsert);  // the form keeps the history
  m_find->setMinimumWidth(220);
  m_find->lineEdit()->installEventFilter(this);
  m_widgets[&m_form.ComboFind] = m_find;
  connect(m_find, &QComboBox::editTextChanged, this, [this](const QString& t) {
    if (!m_refreshing) m_form.ComboFind.setText(bytesFromText(t));
  });
  m_wholeWord = new QCheckBox;
  m_matchCase = new QCheckBox;
  m_wholeWord->setObjectName("CheckWholeWord");
  m_matchCase->setObjectName("CheckMatchCase");
  m_widgets[&m_form.CheckWholeWord] = m_wholeWord;
  m_widgets[&m_form.CheckMatchCase] = m_matchCase;
  connect(m_wholeWord, &QCheckBox::toggled, this, [this](bool on) { m_form.CheckWholeWord.setValue(on); });
  connect(m_matchCase, &QCheckBox::toggled, this, [this](bool on) { m_form.CheckMatchCase.setValue(on); });
  auto* replaceLabel = new QLabel;
  m_widgets[&m_form.LabelReplace] = replaceLabel;
  m_replace = new QLineEdit;
  m_replace->setObjectName("TextReplace");
  m_widgets[&m_form.TextReplace] = m_replace;
  connect(m_replace, &QLineEdit::textEdited, this,
          [this](const QString& t) { m_form.TextReplace.setText(bytesFromText(t)); });
  connect(m_replace, &QLineEdit::returnPressed, this, [this] { fire("TextReplace", EventKind::Enter); });
  for (QWidget* w :
       std::initializer_list<QWidget*>{findLabel, m_find, m_wholeWord, m_matchCase, replaceLabel, m_replace})
    layout->addWidget(w);
  layout->addStretch(1);
  return row;
}

void EditorWindow::build() {
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(buildToolRow());
  layout->addWidget(buildFindRow());
  m_paneArea = new QWidget;
  m_paneArea->setMinimumSize(300, 200);
  m_paneArea->installEventFilter(this);
  layout->addWidget(m_paneArea, 1);

  m_left = new EditorView(m_form.RichTextBox1, m_paneArea);
  m_right = new EditorView(m_form.RichTextBox2, m_paneArea);
  m_left->setObjectName("RichTextBox1");
  m_right->setObjectName("RichTextBox2");
  m_widgets[&m_form.RichTextBox1] = m_left;
  m_widgets[&m_form.RichTextBox2] = m_right;
  for (EditorView* view : {m_left, m_right}) {
    const std::string name = view == m_left ? "RichTextBox1" : "RichTextBox2";
    connect(view, &EditorView::keyDown, this, [this, name](int code, int shift) {
      EventArgs args;
      args.keyCode = code;
      args.shift = shift;
      fire(name, EventKind::Key, args);
    });
    connect(view, &EditorView::clicked, this, [this, name] { fire(name, EventKind::Click); });
  }

  m_mru = new QListWidget(m_paneArea);
  m_mru->setObjectName("ListMRU");
  m_widgets[&m_form.ListMRU] = m_mru;
  connect(m_mru, &QListWidget::itemClicked, this, [this](QListWidgetItem* item) {
    m_form.ListMRU.setListIndex(m_mru->row(item));
    EventArgs args;
    args.shift = (QApplication::keyboardModifiers() & Qt::ShiftModifier) ? 1 : 0;
    fire("ListMRU", EventKind::Click, args);
  });
}

void EditorWindow::fire(const std::string& control, EventKind kind, const EventArgs& args) {
  fireEvent(m_program, "FormEditor", control, kind, args);
}

void EditorWindow::refreshAll() {
  refresh(nullptr);
  for (ui::Control* control : m_form.controls()) refresh(control);
}

void EditorWindow::refreshPane(ui::Control* control) {
  auto* view = control == &m_form.RichTextBox1 ? m_left : m_right;
  view->setVisible(control->visible());
  view->refresh();
  layoutPanes();
  if (control->hasFocus() && !view->hasFocus()) view->setFocus();
}

void EditorWindow::refresh(ui::Control* control) {
  if (control == nullptr) {
    setWindowTitle(qText(m_form.caption()));
    setCursor(m_form.busy() ? Qt::WaitCursor : Qt::ArrowCursor);
    if (m_form.visible() && !isVisible()) {
      setGeometry(m_form.Left, m_form.Top, m_form.Width, m_form.Height);
      show();
    } else if (!m_form.visible() && isVisible()) {
      hide();
    }
    return;
  }
  if (control == &m_form.Timer1 || control == &m_form.Timer2) {
    QTimer& timer = control == &m_form.Timer1 ? m_timer1 : m_timer2;
    auto* model = static_cast<ui::Timer*>(control);
    if (model->enabled() && !timer.isActive()) timer.start(model->interval());
    if (!model->enabled()) timer.stop();
    return;
  }
  if (control == &m_form.RichTextBox1 || control == &m_form.RichTextBox2) return refreshPane(control);
  auto it = m_widgets.find(control);
  if (it == m_widgets.end()) return;
  QWidget* widget = it->second;
  m_refreshing = true;
  widget->setVisible(control->visible());
  setForeColour(widget, control->foreColor());
  if (auto* label = dynamic_cast<ui::Label*>(control)) {
    if (auto* l = qobject_cast<QLabel*>(widget)) l->setText(qText(label->caption()));
    if (auto* b = qobject_cast<QPushButton*>(widget)) b->setText(qText(label->caption()));
  } else if (auto* box = dynamic_cast<ui::TextBox*>(control)) {
    auto* edit = static_cast<QLineEdit*>(widget);
    if (bytesFromText(edit->text()) != box->text()) edit->setText(qText(box->text()));
  } else if (auto* check = dynamic_cast<ui::CheckBox*>(control)) {
    auto* c = static_cast<QCheckBox*>(widget);
    c->setText(qText(check->caption()));
    c->setChecked(check->value());
  } else if (control == &m_form.ComboFind) {
    if (m_find->count() != static_cast<int>(m_form.ComboFind.items().size())) {
      m_find->clear();
      for (const std::string& item : m_form.ComboFind.items()) m_find->addItem(qText(item));
    }
    if (bytesFromText(m_find->currentText()) != m_form.ComboFind.text())
      m_find->setEditText(qText(m_form.ComboFind.text()));
  } else if (control == &m_form.ListMRU) {
    m_mru->clear();
    for (const std::string& item : m_form.ListMRU.items()) m_mru->addItem(qText(item));
    m_mru->setToolTip(qText(m_form.ListMRU.toolTip()));
    m_mru->setGeometry(0, 0, std::min(m_paneArea->width(), 600), std::min(m_paneArea->height(), 240));
    m_mru->raise();
  }
  m_refreshing = false;
  if (control->hasFocus() && !widget->hasFocus() && widget->isVisible()) widget->setFocus();
}

void EditorWindow::layoutPanes() {
  const int width = m_paneArea->width(), height = m_paneArea->height();
  int leftWidth = m_form.RichTextBox1.width() == ui::TextPane::kFullWidth
                      ? width
                      : std::min(width, m_form.RichTextBox1.width());
  m_left->setGeometry(0, 0, leftWidth, height);
  int rightX = std::min(width - 100, ui::kPaneShrunkWidth + kPaneGap);
  m_right->setGeometry(std::max(0, rightX), 0, width - std::max(0, rightX), height);
  if (m_form.RichTextBox1.zOrder() > m_form.RichTextBox2.zOrder())
    m_left->raise();
  else
    m_right->raise();
  if (m_mru->isVisible()) m_mru->raise();
}

void EditorWindow::keepPlacement() {
  if (!isVisible()) return;
  QRect g = geometry();
  m_form.Left = g.x();
  m_form.Top = g.y();
  m_form.Width = g.width();
  m_form.Height = g.height();
}

void EditorWindow::closeEvent(QCloseEvent* event) {
  keepPlacement();
  if (m_form.visible()) fire("FormEditor", EventKind::Unload);
  event->accept();
}

void EditorWindow::moveEvent(QMoveEvent* event) {
  QWidget::moveEvent(event);
  keepPlacement();
}

void EditorWindow::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  keepPlacement();
}

bool EditorWindow::eventFilter(QObject* watched, QEvent* event) {
  if (watched == m_paneArea && event->type() == QEvent::Resize) layoutPanes();
  if (m_find != nullptr && watched == m_find->lineEdit() && event->type() == QEvent::KeyPress) {
    // Keys are taken here: the combo box hands an unused Enter back to its line edit.
    auto* key = static_cast<QKeyEvent*>(event);
    if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
      fire("ComboFind", EventKind::Enter);
      return true;
    }
    if (key->key() == Qt::Key_F3) {
      EventArgs args;
      args.keyCode = 114;
      fire("ComboFind", EventKind::Key, args);
      return true;
    }
  }
  return QWidget::eventFilter(watched, event);
}

}  // namespace tolvane::gui
