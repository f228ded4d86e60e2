// Helpers of the GUI tests: a dispatch that records every event with the model's state
// at that moment, a main window over a test program, and a drop as the user makes it.
#pragma once

#include <QMimeData>
#include <QWidget>
#include <memory>
#include <string>
#include <vector>

#include "gui/form_binding.h"
#include "gui/main_window.h"
#include "test_support.h"

namespace tolvane::gui::test {

struct RecordedEvent {
  std::string form;
  std::string control;
  EventKind kind;
  EventArgs args;
  std::vector<int> channelsSelected;  // ListChannels' selection when the event came
};

class EventRecorder {
 public:
  // Records, then passes the event on to the program's handlers when `passOn` is set.
  Dispatch dispatch(bool passOn = false);
  // The events of one control and kind.
  std::vector<RecordedEvent> of(const std::string& control, EventKind kind) const;

 private:
  std::vector<RecordedEvent> m_events;
};

// A test program with a shown main window; settings of the window go to a temporary file.
struct WindowFixture {
  explicit WindowFixture(bool passOn = false);
  ~WindowFixture();
  tolvane::test::TestProgram program;
  EventRecorder recorder;
  std::unique_ptr<MainWindow> window;

  template <class W>
  W* widget(const std::string& name) const {
    return qobject_cast<W*>(window->widgetFor(name));
  }
  ui::Opening& opening() { return program->opening; }
  // Shows the figure page as an open file does.
  void showFigurePage();
};

// Drags `mime` into the middle of `target` and lets it go there.
void dropOn(QWidget* target, const QMimeData* mime);

}  // namespace tolvane::gui::test
