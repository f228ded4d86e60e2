// The windows of the forms other than the main one. A form registers a factory for its
// window under the form's name; the main window makes the window when the form's model
// first becomes visible, and shows and hides it with the model from then on.
#pragma once

#include <QKeySequence>
#include <QLabel>
#include <QWidget>
#include <functional>
#include <string>

#include "gui/form_binding.h"

class QPlainTextEdit;

namespace tolvane::gui {

using FormWindowFactory = std::function<QWidget*(FormBinding& binding, QWidget* mainWindow)>;

void registerFormWindow(const std::string& formName, FormWindowFactory factory);
const FormWindowFactory* formWindowFactory(const std::string& formName);
// The windows that ship with the main window (the notebook, ...).
void registerBuiltInFormWindows();

// The conventions every window of the program shares.
// A tool tip that names the keys of the action: "Save (Ctrl+S)".
QString withShortcut(const QString& text, const QKeySequence& keys);
// Gives a picture or push button its tool tip with the keys, its accessible name, and
// the keys themselves (working anywhere in the button's window).
void describeButton(QWidget* button, const QString& name, const QKeySequence& keys = {});
// Places `window` in the middle of `over` (on the screen of `over`).
void centreOver(QWidget* window, const QWidget* over);
// A text box of several lines where Tab moves on to the next control, as in a form,
// and Ctrl+Tab types a tab.
void typeTabsWithCtrl(QPlainTextEdit* box);

// A label for a path: a text too long for its place is cut in the middle ("/home/…/Ava.cr2")
// and the tool tip then shows it whole.
class ElidedLabel : public QLabel {
  Q_OBJECT
 public:
  using QLabel::QLabel;
  QSize minimumSizeHint() const override;
  QSize sizeHint() const override;
  bool isElided() const;

 protected:
  void paintEvent(QPaintEvent* event) override;
  bool event(QEvent* event) override;
};

// Base of a form's window: the caption follows the model, the window remembers its
// place and size (and opens centred over the main window the first time), Escape closes
// it, and closing the window is the form's unload: the Unload event (with the
// questions the form asks there), then the model is hidden.
class FormWindow : public QWidget {
  Q_OBJECT
 public:
  FormWindow(FormBinding& binding, QWidget* mainWindow);
  FormBinding& binding() const { return m_binding; }

 protected:
  // A window whose form takes the Escape key itself turns this off.
  void setEscapeCloses(bool on) { m_escapeCloses = on; }
  void keyPressEvent(QKeyEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  void formChanged();
  FormBinding& m_binding;
  bool m_placed = false;  // the window took its remembered place
  bool m_escapeCloses = true;
};

}  // namespace tolvane::gui
