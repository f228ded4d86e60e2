#include "gui_test_support.h"

#include <QApplication>
#include <QDropEvent>

#include "program/program.h"

namespace tolvane::gui::test {

Dispatch EventRecorder::dispatch(bool passOn) {
  return [this, passOn](Program& program, const std::string& form, const std::string& control, EventKind kind,
                        const EventArgs& args) {
    m_events.push_back({form, control, kind, args, program.opening.ListChannels.selectedIndexes()});
    return passOn ? fireEvent(program, form, control, kind, args) : true;
  };
}

std::vector<RecordedEvent> EventRecorder::of(const std::string& control, EventKind kind) const {
  std::vector<RecordedEvent> out;
  for (const RecordedEvent& e : m_events)
    if (e.control == control && e.kind == kind) out.push_back(e);
  return out;
}

WindowFixture::WindowFixture(bool passOn) {
  qputenv("TOLVANE_SETTINGS", QByteArray::fromStdString((program.dir.path() / "window.ini").string()));
  window = std::make_unique<MainWindow>(*program, recorder.dispatch(passOn));
  window->show();
  QApplication::processEvents();
}

WindowFixture::~WindowFixture() {
  window.reset();
  qunsetenv("TOLVANE_SETTINGS");
}

void WindowFixture::showFigurePage() {
  ui::Opening& o = opening();
  for (ui::Control* c : std::initializer_list<ui::Control*>{
           &o.FrameFigurePage, &o.FramePaths, &o.ListActors, &o.ListChannels, &o.LabelBodyParts,
           &o.PictureTrash, &o.PictureViewChannels, &o.PictureJoints, &o.LabelFileName, &o.LabelMainTex,
           &o.TextMainTex, &o.LabelMainOBJPath, &o.TextMainOBJ, &o.TextMorphRename})
    c->setVisible(true);
  o.ImageSplash.setVisible(false);
  FormBinding::flushAll();
}

void dropOn(QWidget* target, const QMimeData* mime) {
  QPoint at = target->rect().center();
  QDragEnterEvent enter(at, Qt::CopyAction, mime, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(target, &enter);
  QDropEvent drop(at, Qt::CopyAction, mime, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(target, &drop);
}

}  // namespace tolvane::gui::test
