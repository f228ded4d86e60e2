// Registers the handlers of the Manual Editor: the hand-over from the main form, and
// every event of FormEditor.
#include "editor/editor_events.h"

#include "editor/editor_close.h"
#include "editor/editor_find.h"
#include "editor/editor_goto_line.h"
#include "editor/editor_handover.h"
#include "editor/editor_pane_events.h"
#include "editor/editor_print.h"
#include "editor/editor_replace.h"
#include "editor/editor_save.h"
#include "editor/editor_second_file.h"
#include "program/events.h"

namespace tolvane {

namespace {
using Plain = void (*)(Program&);

void on(EventTable& table, const std::string& form, const std::string& control, EventKind kind,
        Plain handler) {
  table.add(form, control, kind, [handler](Program& p, const EventArgs&) { handler(p); });
}

void registerHandOver(EventTable& table) {
  const std::string o = "Opening";
  on(table, o, "PictureEditor", EventKind::Click, editor::PictureEditorClick);
  on(table, o, "PictureEditor", EventKind::RightClick, editor::PictureEditorRightClick);
  on(table, o, "LabelFileName", EventKind::Click, editor::LabelFileNameClick);
  on(table, o, "LabelChannelFileName", EventKind::Click, editor::LabelChannelFileNameClick);
  on(table, o, "menuEditor", EventKind::Click, editor::MenuEditorClick);
}

void registerPanes(EventTable& table, const std::string& f) {
  using editor::Side;
  for (Side side : {Side::Left, Side::Right}) {
    std::string pane = side == Side::Left ? "RichTextBox1" : "RichTextBox2";
    table.add(f, pane, EventKind::Key,
              [side](Program& p, const EventArgs& a) { editor::PaneKeyDown(p, side, a); });
    table.add(f, pane, EventKind::Click,
              [side](Program& p, const EventArgs&) { editor::PaneClick(p, side); });
    // The button going down or up in a pane shows the cursor's line as well.
    for (EventKind kind : {EventKind::Press, EventKind::Release})
      table.add(f, pane, kind, [side](Program& p, const EventArgs&) { editor::ShowLineNumber(p, side); });
    table.add(f, side == Side::Left ? "Timer1" : "Timer2", EventKind::Timer,
              [side](Program& p, const EventArgs&) { editor::PaneTimer(p, side); });
  }
}
}  // namespace

void registerEditorEvents(EventTable& table) {
  registerHandOver(table);
  const std::string f = "FormEditor";
  registerPanes(table, f);
  on(table, f, f, EventKind::Load, editor::EditorLoad);
  on(table, f, f, EventKind::Unload, editor::EditorUnload);
  on(table, f, "CommandGotoLineNum", EventKind::Click, [](Program& p) { editor::GotoLine(p, false); });
  on(table, f, "TextLineNum", EventKind::Enter, [](Program& p) { editor::GotoLine(p, true); });
  on(table, f, "PictureSecFile", EventKind::Click, editor::PictureSecFileClick);
  on(table, f, "PictureSecFile", EventKind::RightClick, editor::PictureSecFileRightClick);
  table.add(f, "ListMRU", EventKind::Click,
            [](Program& p, const EventArgs& a) { editor::EditorListMRUClick(p, a); });
  on(table, f, "PictureSave", EventKind::Click, editor::PictureSaveClick);
  on(table, f, "PictureSave", EventKind::RightClick, editor::PictureSaveRightClick);
  on(table, f, "PicturePrint", EventKind::Click, editor::PicturePrintClick);
  on(table, f, "PictureFind", EventKind::Click, editor::PictureFindClick);
  on(table, f, "PictureFind", EventKind::RightClick, editor::PictureFindRightClick);
  on(table, f, "PictureReplace", EventKind::Click, editor::PictureReplaceClick);
  on(table, f, "PictureReplace", EventKind::RightClick, editor::PictureReplaceRightClick);
  on(table, f, "ComboFind", EventKind::Enter, editor::ComboFindEnter);
  table.add(f, "ComboFind", EventKind::Key, [](Program& p, const EventArgs& a) {
    if (a.keyCode == editor::kKeyF3) editor::FindAgain(p);
  });
  on(table, f, "TextReplace", EventKind::Enter, editor::TextReplaceEnter);
}

}  // namespace tolvane
