// The main window: the form Opening as a desktop window with its menus, the two panes,
// the tool pictures, the path boxes, the material swatches, the splash picture and the
// notes box, all bound to the form model. It also shows the windows of the other forms
// when their models become visible, and takes files dropped from the desktop.
#pragma once

#include <QMainWindow>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "gui/form_binding.h"
#include "gui/job_progress.h"

class QLabel;
class QMenu;
class QProgressBar;
class QBoxLayout;

namespace tolvane {
class Program;
}
namespace tolvane::ui {
class Control;
class ListBox;
}  // namespace tolvane::ui

namespace tolvane::gui {

class PictureButton;

class MainWindow : public QMainWindow {
  Q_OBJECT
 public:
  explicit MainWindow(Program& program, Dispatch dispatch = defaultDispatch(), QWidget* parent = nullptr);
  ~MainWindow() override;

  // The form's load: the start-up of the program.
  void start();
  FormBinding& binding() { return *m_binding; }
  // The widget (or nothing) that shows a control of the main form.
  QWidget* widgetFor(const std::string& controlName) const;
  QMenu* menuFor(const std::string& controlName) const;
  // The window of another form, once it was made.
  QWidget* formWindow(const std::string& formName) const;
  // The status bar's bar shows a percentage for work on files larger than this.
  static constexpr std::uint64_t kMeasuredFrom = JobProgressBar::kMeasuredFrom;
  QProgressBar* progressBar() const { return m_progress; }

 protected:
  void closeEvent(QCloseEvent* event) override;
  void changeEvent(QEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  // Building (main_window_layout.cpp).
  void buildMenus();
  void buildCentral();
  QWidget* buildHeader();
  QWidget* buildBody();
  QWidget* buildPanes();
  QWidget* buildObjColumn();
  QWidget* buildBottom();
  QWidget* buildToolRow();
  PictureButton* picture(ui::Control& control, int side = 40);
  QWidget* label(ui::Control& control, bool clickable = false, bool path = false);
  QWidget* lineBox(ui::Control& control);
  QWidget* list(ui::Control& control, bool draggable = false);
  QWidget* place(ui::Control& control, QWidget* widget);
  void bindRemaining();
  void restorePlace();

  // Behaviour (main_window.cpp).
  void openingChanged();
  void otherFormChanged(FormBinding& binding);
  void afterEvent();
  void removeSelected(const ui::ListBox& list);
  void showPaneMenu(const ui::ListBox& list, const QPoint& at);
  void placePopUp(QWidget* popUp);
  // The status bar: the open file's kind, size and lines when idle, the work when busy.
  void showDocumentState();
  void showChannelsHeading();
  void closePopUpsAround(QWidget* clicked);

  Program& m_program;
  Dispatch m_dispatch;
  std::unique_ptr<FormBinding> m_binding;
  std::vector<std::unique_ptr<FormBinding>> m_otherBindings;
  std::map<std::string, QWidget*> m_formWindows;
  std::map<std::string, QWidget*> m_widgets;
  std::map<std::string, QMenu*> m_menus;
  // Controls placed while building, bound once every widget has its parent.
  std::vector<std::pair<ui::Control*, QObject*>> m_pending;
  JobProgressBar* m_progress = nullptr;
  QLabel* m_status = nullptr;
  QLabel* m_channelsHeading = nullptr;
  // What the status bar last counted: the file, its size and time, and its lines.
  QString m_countedPath;
  qint64 m_countedSize = -1;
  qint64 m_countedTime = -1;
  qint64 m_countedLines = 0;
  QBoxLayout* m_extraRow = nullptr;
  QBoxLayout* m_workLists = nullptr;
  QBoxLayout* m_objTools = nullptr;
  bool m_closing = false;
};

}  // namespace tolvane::gui
