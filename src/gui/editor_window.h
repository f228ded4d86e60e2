// The Manual Editor's window: the two panes, the line number box, the picture buttons,
// the find and replace controls and the editor's recently used list, bound to
// FormEditor. The window shows what the form holds and turns the user's actions into
// the form's events.
#pragma once

#include "gui/form_windows.h"

class QListWidget;
class QPushButton;

namespace tolvane::ui {
class FormEditor;
}

namespace tolvane::gui {

class EditorView;
class JobProgressBar;

class EditorWindow : public FormWindow {
  Q_OBJECT

 public:
  EditorWindow(FormBinding& binding, QWidget* mainWindow);

  EditorView* leftView() const { return m_left; }
  EditorView* rightView() const { return m_right; }

 protected:
  void showEvent(QShowEvent* event) override;
  void moveEvent(QMoveEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QWidget* buildToolRow();
  QWidget* buildFindRow();
  QWidget* buildPaneArea();
  // The panes and the list are drawn from the form after every event of the form.
  void refreshPanes();
  void refreshList();
  void layoutPanes();
  void keepPlacement();
  // The keys of the editor (Ctrl+F, F3, Ctrl+H, Ctrl+G, Ctrl+S, Ctrl+P) and the buttons
  // that keep Replace and Replace All at hand.
  void addShortcuts();
  void findKeys();
  void replaceKeys();
  void findAgain();
  void goToLineKeys();
  void replaceOne();
  void replaceAll();
  // Turns replace mode back on after a replace ended it, with the text last used.
  void reopenReplace();
  void refreshTitle();

  ui::FormEditor& m_form;
  EditorView* m_left = nullptr;
  EditorView* m_right = nullptr;
  QWidget* m_paneArea = nullptr;
  QListWidget* m_mru = nullptr;
  JobProgressBar* m_progress = nullptr;
  QPushButton* m_replaceOne = nullptr;
  QPushButton* m_replaceAll = nullptr;
  std::string m_lastReplacement;
  std::vector<std::string> m_mruItems;
  bool m_placementApplied = false;
};

// Registers the window's factory under "FormEditor".
void registerEditorWindow();

}  // namespace tolvane::gui
