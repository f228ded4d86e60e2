// The windows of the forms other than the main one. A form registers a factory for its
// window under the form's name; the main window makes the window when the form's model
// first becomes visible, and shows and hides it with the model from then on.
#pragma once

#include <QWidget>
#include <functional>
#include <string>

#include "gui/form_binding.h"

namespace tolvane::gui {

using FormWindowFactory = std::function<QWidget*(FormBinding& binding, QWidget* mainWindow)>;

void registerFormWindow(const std::string& formName, FormWindowFactory factory);
const FormWindowFactory* formWindowFactory(const std::string& formName);
// The windows that ship with the main window (the notebook, ...).
void registerBuiltInFormWindows();

// Base of a form's window: the caption follows the model, the window remembers its
// place, and closing the window is the form's unload: the Unload event, then the model
// is hidden.
class FormWindow : public QWidget {
  Q_OBJECT
 public:
  FormWindow(FormBinding& binding, QWidget* mainWindow);
  FormBinding& binding() const { return m_binding; }

 protected:
  void closeEvent(QCloseEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  void formChanged();
  FormBinding& m_binding;
  bool m_placed = false;  // the window took its remembered place
};

}  // namespace tolvane::gui
