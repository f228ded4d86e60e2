#include "gui/form_windows.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <map>

#include "gui/qt_settings.h"
#include "gui/editor_window.h"
#include "gui/erc_windows.h"
#include "gui/library_windows.h"
#include "gui/obj_window.h"
#include "gui/phi_windows.h"
#include "gui/qt_text.h"
#include "gui/tool_windows.h"
#include "program/program.h"

namespace tolvane::gui {

namespace {
std::map<std::string, FormWindowFactory>& factories() {
  static std::map<std::string, FormWindowFactory> table;
  return table;
}

// "Open Notebook": the whole notes file in a plain text box, with Save and Close.
QWidget* makeNotesWindow(FormBinding& binding, QWidget* mainWindow) {
  auto& notes = static_cast<ui::FormNotes&>(binding.form());
  auto* window = new FormWindow(binding, mainWindow);
  auto* text = new QPlainTextEdit(window);
  text->setObjectName("RichTextBox1");
  QFont fixed("Monospace");
  fixed.setStyleHint(QFont::TypeWriter);
  text->setFont(fixed);
  auto* save = new QPushButton(window);
  save->setObjectName("CommandSave");
  auto* close = new QPushButton(window);
  close->setObjectName("CommandClose");
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(save);
  buttons->addWidget(close);
  auto* layout = new QVBoxLayout(window);
  layout->addWidget(text);
  layout->addLayout(buttons);
  binding.bind(notes.RichTextBox1, text);
  binding.bind(notes.CommandSave, save);
  binding.bind(notes.CommandClose, close);
  window->resize(620, 460);
  return window;
}
}  // namespace

void registerFormWindow(const std::string& formName, FormWindowFactory factory) {
  factories()[formName] = std::move(factory);
}

const FormWindowFactory* formWindowFactory(const std::string& formName) {
  auto it = factories().find(formName);
  return it == factories().end() ? nullptr : &it->second;
}

void registerBuiltInFormWindows() {
  if (formWindowFactory("FormNotes") == nullptr) registerFormWindow("FormNotes", makeNotesWindow);
  if (formWindowFactory("FormEditor") == nullptr) registerEditorWindow();
  if (formWindowFactory("FormOBJ") == nullptr) registerObjWindow();
  if (formWindowFactory("FormECM") == nullptr) registerErcWindows();
  registerLibraryWindows();
  if (formWindowFactory("FormPhi") == nullptr) registerPhiWindows();
  registerToolWindows();
}

FormWindow::FormWindow(FormBinding& binding, QWidget* mainWindow)
    : QWidget(mainWindow, Qt::Window), m_binding(binding) {
  setObjectName(fromBytes(binding.form().name()));
  connect(&binding, &FormBinding::formChanged, this, &FormWindow::formChanged);
  formChanged();
}

void FormWindow::formChanged() {
  setWindowTitle(fromDisplayBytes(m_binding.form().caption()));
  if (m_binding.form().busy())
    setCursor(Qt::WaitCursor);
  else
    unsetCursor();
}

void FormWindow::showEvent(QShowEvent* event) {
  formChanged();
  if (!m_placed) {
    m_placed = true;
    restoreGeometry(windowSettings()->value("Forms/" + objectName()).toByteArray());
  }
  QWidget::showEvent(event);
}

void FormWindow::hideEvent(QHideEvent* event) {
  windowSettings()->setValue("Forms/" + objectName(), saveGeometry());
  QWidget::hideEvent(event);
}

void FormWindow::closeEvent(QCloseEvent* event) {
  ui::Form& form = m_binding.form();
  if (form.visible()) {
    m_binding.fire(nullptr, EventKind::Unload);
    form.setVisible(false);
  }
  event->accept();
}

}  // namespace tolvane::gui
