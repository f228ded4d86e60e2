// Services that play the user's answers in order and record every prompt: the tests'
// and the script runner's user. A prompt with no answer queued, or an answer of the
// wrong kind or for another message, throws UnexpectedPrompt, which no tool catches.
#pragma once

#include <deque>
#include <filesystem>
#include <optional>
#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "ui/services.h"

namespace tolvane::ui {

class UnexpectedPrompt : public std::logic_error {
 public:
  using std::logic_error::logic_error;
};

struct ScriptedAnswer {
  enum class Kind { Message, Dialog, Input, Colour, Print } kind = Kind::Message;
  bool cancel = false;
  // Message: expected title and text (matchAny skips the check); a text ending in
  // "..." matches a prefix.
  bool matchAny = false;
  std::string title;
  std::string text;
  Answer button = Answer::OK;
  std::string value;  // dialog path, typed text, print output path
  Colour colour = 0;
  bool stepDialog = false;  // the answer of a step that raises its own open dialog

  static ScriptedAnswer message(std::string title, std::string text, Answer button);
  static ScriptedAnswer anyMessage(Answer button);
  static ScriptedAnswer dialog(std::string path);
  static ScriptedAnswer dialogCancel();
  static ScriptedAnswer input(std::string text);
  static ScriptedAnswer inputCancel();
  static ScriptedAnswer colourAnswer(Colour colour);
  static ScriptedAnswer colourCancel();
  static ScriptedAnswer print(std::string path);
  static ScriptedAnswer printCancel();
};

class ScriptedServices : public Services {
 public:
  ScriptedServices() = default;

  void queue(ScriptedAnswer answer) { m_answers.push_back(std::move(answer)); }
  // The dialog answer of a step such as File, Open, queued behind the answers already
  // there. The prompts that come before the step's open dialog take those in order; the
  // open dialog takes this answer wherever it stands, and the answers still ahead of it
  // go on to the prompts that follow the dialog.
  void queueStepDialog(ScriptedAnswer answer);
  // Shorthands for tests.
  void answer(Answer button) { queue(ScriptedAnswer::anyMessage(button)); }
  void expect(std::string title, std::string text, Answer button = Answer::OK) {
    queue(ScriptedAnswer::message(std::move(title), std::move(text), button));
  }
  void dialog(std::string path) { queue(ScriptedAnswer::dialog(std::move(path))); }
  void cancelDialog() { queue(ScriptedAnswer::dialogCancel()); }
  void input(std::string text) { queue(ScriptedAnswer::input(std::move(text))); }

  std::size_t pending() const { return m_answers.size(); }
  const std::vector<Message>& messages() const { return m_messages; }
  const std::vector<FileDialogRequest>& dialogs() const { return m_dialogs; }
  const std::vector<PrintJob>& printed() const { return m_printed; }
  const std::vector<std::string>& sounds() const { return m_sounds; }
  const std::vector<std::string>& processes() const { return m_processes; }
  int beeps() const { return m_beeps; }
  int tileCloses() const { return m_tileCloses; }
  int yields() const { return m_yields; }
  // Every progress report of the run, in order; the runner prints none of them.
  struct ProgressReport {
    std::uint64_t done = 0;
    std::uint64_t total = 0;
    bool busy = false;  // whether the program was busy when it came
  };
  const std::vector<ProgressReport>& progressReports() const { return m_progress; }
  bool busy() const { return m_busy; }
  void clearRecords();
  // Forgets the answers still queued, as when a step stopped before it asked.
  void dropAnswers() { m_answers.clear(); }
  // With `on`, a run-time error report is answered OK without an answer queued, and
  // counted: the user of a test that makes the disk fail at every step in turn.
  void answerRunTimeErrors(bool on) { m_answerReports = on; }
  int runTimeErrorReports() const { return m_reports; }

  // Where each prompt is echoed as the runner prints it; none by default.
  void setEcho(std::ostream* echo) { m_echo = echo; }
  void setSystemFolder(std::filesystem::path folder) { m_systemFolder = std::move(folder); }
  void setHttpResponse(std::optional<std::string> body) { m_http = std::move(body); }
  void setNow(std::chrono::system_clock::time_point now) { m_now = now; }

  Answer message(const Message& message) override;
  std::optional<std::string> fileDialog(const FileDialogRequest& request) override;
  std::optional<std::string> inputLine(const std::string& prompt, const std::string& title,
                                       const std::string& initial) override;
  std::optional<Colour> chooseColour(Colour initial) override;
  bool print(const PrintJob& job) override;
  void beep() override { ++m_beeps; }
  void setBusy(bool busy) override { m_busy = busy; }
  void yield() override { ++m_yields; }
  void progress(std::uint64_t done, std::uint64_t total) override { m_progress.push_back({done, total, m_busy}); }
  void playSound(const std::filesystem::path& file) override { m_sounds.push_back(file.string()); }
  bool startProcess(const std::string& program, const std::vector<std::string>& args) override;
  std::optional<std::string> httpGet(const std::string& url) override;
  void tileClose() override { ++m_tileCloses; }
  std::filesystem::path systemFolder() override { return m_systemFolder; }
  std::chrono::system_clock::time_point now() override;
  // There is no image reader here: a picture file that is there and not empty counts
  // as read, and nothing is drawn; a missing or empty one cannot be read.
  bool loadPicture(const std::filesystem::path& file, Raster& raster) override;
  const std::vector<std::string>& pictures() const { return m_pictures; }

 private:
  ScriptedAnswer next(ScriptedAnswer::Kind kind, const std::string& what);

  std::deque<ScriptedAnswer> m_answers;
  std::vector<Message> m_messages;
  std::vector<FileDialogRequest> m_dialogs;
  std::vector<PrintJob> m_printed;
  std::vector<std::string> m_sounds;
  std::vector<std::string> m_processes;
  std::vector<std::string> m_pictures;  // the picture files read, in order
  int m_beeps = 0;
  bool m_answerReports = false;
  int m_reports = 0;
  int m_tileCloses = 0;
  int m_yields = 0;
  bool m_busy = false;
  std::vector<ProgressReport> m_progress;
  std::ostream* m_echo = nullptr;
  std::filesystem::path m_systemFolder;
  std::optional<std::string> m_http;
  std::optional<std::chrono::system_clock::time_point> m_now;
};

// "CR" line breaks of a message shown as {CR} on one line, as the runner prints them.
std::string oneLine(const std::string& text);

}  // namespace tolvane::ui
