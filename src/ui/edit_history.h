// The undo and redo history of an editor pane. Every replacement of a selection is kept
// as the bytes it took out and the bytes it put in, at its position; a step is one edit,
// a run of typed characters, or a group the caller opens around many edits (a replace
// of every match undoes as one step). The oldest steps go when the history holds more
// bytes than its limit, the newest step always stays.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tolvane::ui {

struct Edit {
  std::int64_t position = 0;
  std::string removed;
  std::string inserted;
};

class EditHistory {
 public:
  static constexpr std::size_t kDefaultLimit = std::size_t{256} << 20;
  explicit EditHistory(std::size_t byteLimit = kDefaultLimit) : m_limit(byteLimit) {}

  // Keeps one edit; the redo steps are gone from here on.
  void record(std::int64_t position, std::string_view removed, std::string_view inserted);
  // Edits recorded between the outermost begin and its end make one step.
  void beginGroup();
  void endGroup();
  // Ends the current run of typing, so the next edit starts a step of its own.
  void breakRun() { m_runOpen = false; }
  void clear();

  bool canUndo() const { return !m_undo.empty(); }
  bool canRedo() const { return !m_redo.empty(); }
  // The edits of the step to take back, in the order they were made; the step moves to
  // the redo side. Empty when there is nothing to undo. The reference holds until the
  // history next changes.
  const std::vector<Edit>& takeUndo() { return moveStep(m_undo, m_redo); }
  // The edits of the step to make again, in order; the step moves back to the undo side.
  const std::vector<Edit>& takeRedo() { return moveStep(m_redo, m_undo); }

  std::size_t bytesHeld() const { return m_bytes; }

 private:
  using Step = std::vector<Edit>;
  static std::size_t sizeOf(const Step& step);
  // Moves the newest step of `from` to `to` and returns it.
  const std::vector<Edit>& moveStep(std::vector<Step>& from, std::vector<Step>& to);
  void trim();

  std::vector<Step> m_undo;
  std::vector<Step> m_redo;
  std::size_t m_limit;
  std::size_t m_bytes = 0;  // bytes held by both sides
  int m_groupDepth = 0;
  bool m_groupStarted = false;  // the open group has its step on the undo side
  bool m_runOpen = false;       // the last step is a run of typing that may grow
};

}  // namespace tolvane::ui
