// The Manual Editor's window: the two panes, the line number box, the picture buttons,
// the find and replace controls and the recently used list, bound to FormEditor. The
// window shows what the form holds and turns the user's actions into the form's events.
#pragma once

#include <QTimer>
#include <QWidget>
#include <map>

#include "program/events.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;

namespace tolvane {
class Program;
namespace ui {
class Control;
class FormEditor;
}  // namespace ui
}  // namespace tolvane

namespace tolvane::gui {

class EditorView;

class EditorWindow : public QWidget {
  Q_OBJECT

 public:
  explicit EditorWindow(Program& program, QWidget* parent = nullptr);
  ~EditorWindow() override;

  EditorView* leftView() const { return m_left; }
  EditorView* rightView() const { return m_right; }
  // Brings every widget in line with the form.
  void refreshAll();
  // Shows what one control of the form now holds; nullptr: the form itself.
  void refresh(ui::Control* control);

 protected:
  void closeEvent(QCloseEvent* event) override;
  void moveEvent(QMoveEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void build();
  QWidget* buildToolRow();
  QWidget* buildFindRow();
  QPushButton* picture(const char* name, const QString& caption);
  void fire(const std::string& control, EventKind kind, const EventArgs& args = {});
  void layoutPanes();
  void refreshPane(ui::Control* control);
  void keepPlacement();

  Program& m_program;
  ui::FormEditor& m_form;
  EditorView* m_left = nullptr;
  EditorView* m_right = nullptr;
  QWidget* m_paneArea = nullptr;
  QListWidget* m_mru = nullptr;
  QLineEdit* m_lineNum = nullptr;
  QComboBox* m_find = nullptr;
  QLineEdit* m_replace = nullptr;
  QCheckBox* m_wholeWord = nullptr;
  QCheckBox* m_matchCase = nullptr;
  QTimer m_timer1, m_timer2;
  std::map<ui::Control*, QWidget*> m_widgets;
  bool m_refreshing = false;
};

}  // namespace tolvane::gui
