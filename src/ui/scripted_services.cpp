#include "ui/scripted_services.h"

#include <algorithm>
#include <fstream>

namespace tolvane::ui {

ScriptedAnswer ScriptedAnswer::message(std::string title, std::string text, Answer button) {
  ScriptedAnswer a;
  a.title = std::move(title);
  a.text = std::move(text);
  a.button = button;
  return a;
}
ScriptedAnswer ScriptedAnswer::anyMessage(Answer button) {
  ScriptedAnswer a;
  a.matchAny = true;
  a.button = button;
  return a;
}
namespace {
// A dialog, input, colour or print answer: the value it gives, or a cancel.
ScriptedAnswer of(ScriptedAnswer::Kind kind, std::string value, bool cancel) {
  ScriptedAnswer a;
  a.kind = kind;
  a.value = std::move(value);
  a.cancel = cancel;
  return a;
}
}  // namespace

ScriptedAnswer ScriptedAnswer::dialog(std::string path) { return of(Kind::Dialog, std::move(path), false); }
ScriptedAnswer ScriptedAnswer::dialogCancel() { return of(Kind::Dialog, {}, true); }
ScriptedAnswer ScriptedAnswer::input(std::string text) { return of(Kind::Input, std::move(text), false); }
ScriptedAnswer ScriptedAnswer::inputCancel() { return of(Kind::Input, {}, true); }
ScriptedAnswer ScriptedAnswer::colourAnswer(Colour colour) {
  ScriptedAnswer a = of(Kind::Colour, {}, false);
  a.colour = colour;
  return a;
}
ScriptedAnswer ScriptedAnswer::colourCancel() { return of(Kind::Colour, {}, true); }
ScriptedAnswer ScriptedAnswer::print(std::string path) { return of(Kind::Print, std::move(path), false); }
ScriptedAnswer ScriptedAnswer::printCancel() { return of(Kind::Print, {}, true); }

std::string oneLine(const std::string& text) {
  std::string out;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\r') {
      out += "{CR}";
      if (i + 1 < text.size() && text[i + 1] == '\n') ++i;
    } else if (text[i] == '\n') {
      out += "{CR}";
    } else {
      out += text[i];
    }
  }
  return out;
}

namespace {
const char* kindName(ScriptedAnswer::Kind kind) {
  switch (kind) {
    case ScriptedAnswer::Kind::Message: return "message box";
    case ScriptedAnswer::Kind::Dialog: return "file dialog";
    case ScriptedAnswer::Kind::Input: return "typed line";
    case ScriptedAnswer::Kind::Colour: return "colour dialog";
    case ScriptedAnswer::Kind::Print: return "print dialog";
  }
  return "prompt";
}

// Line breaks compare equal whether written {CR}, CR, or CR LF.
bool textMatches(const std::string& expected, const std::string& actual) {
  std::string want = oneLine(expected), got = oneLine(actual);
  if (want.size() >= 3 && want.compare(want.size() - 3, 3, "...") == 0) {
    want.resize(want.size() - 3);
    return got.compare(0, want.size(), want) == 0;
  }
  return got == want;
}
}  // namespace

void ScriptedServices::clearRecords() {
  m_messages.clear();
  m_dialogs.clear();
  m_printed.clear();
  m_sounds.clear();
  m_processes.clear();
  m_pictures.clear();
  m_progress.clear();
  m_beeps = m_tileCloses = m_yields = 0;
}

void ScriptedServices::queueStepDialog(ScriptedAnswer answer) {
  answer.stepDialog = true;
  queue(std::move(answer));
}

ScriptedAnswer ScriptedServices::next(ScriptedAnswer::Kind kind, const std::string& what) {
  if (m_answers.empty() || m_answers.front().stepDialog)
    throw UnexpectedPrompt("unanswered " + std::string(kindName(kind)) + ": " + what);
  ScriptedAnswer a = std::move(m_answers.front());
  m_answers.pop_front();
  if (a.kind != kind)
    throw UnexpectedPrompt("a " + std::string(kindName(kind)) + " came (" + what + ") where the script answers a " +
                           kindName(a.kind));
  return a;
}

Answer ScriptedServices::message(const Message& message) {
  m_messages.push_back(message);
  if (m_answerReports && message.text.rfind("Run-time error '", 0) == 0) {
    ++m_reports;
    return Answer::OK;
  }
  std::string what = "\"" + message.title + "\" \"" + oneLine(message.text) + "\" [" +
                     buttonsName(message.buttons) + "]";
  ScriptedAnswer a = next(ScriptedAnswer::Kind::Message, what);
  if (!a.matchAny && (a.title != message.title || !textMatches(a.text, message.text)))
    throw UnexpectedPrompt("message " + what + " does not match the expected \"" + a.title + "\" \"" + a.text +
                           "\"");
  if (m_echo) *m_echo << "msg " << what << " -> " << answerName(a.button) << '\n';
  return a.button;
}

std::optional<std::string> ScriptedServices::fileDialog(const FileDialogRequest& request) {
  m_dialogs.push_back(request);
  const char* kind = request.kind == FileDialogRequest::Kind::Open ? "open" : "save";
  std::string start = request.startFolder.string();
  auto own = std::find_if(m_answers.begin(), m_answers.end(), [](const auto& a) { return a.stepDialog; });
  ScriptedAnswer a;
  if (request.kind == FileDialogRequest::Kind::Open && own != m_answers.end()) {
    a = std::move(*own);
    m_answers.erase(own);
  } else {
    a = next(ScriptedAnswer::Kind::Dialog, std::string(kind) + " " + start);
  }
  if (m_echo) *m_echo << "dialog " << kind << ' ' << start << " -> " << (a.cancel ? "cancel" : a.value) << '\n';
  if (a.cancel) return std::nullopt;
  return a.value;
}

std::optional<std::string> ScriptedServices::inputLine(const std::string& prompt, const std::string&,
                                                       const std::string&) {
  ScriptedAnswer a = next(ScriptedAnswer::Kind::Input, prompt);
  if (m_echo) *m_echo << "input -> " << (a.cancel ? "cancel" : "\"" + a.value + "\"") << '\n';
  if (a.cancel) return std::nullopt;
  return a.value;
}

std::optional<Colour> ScriptedServices::chooseColour(Colour) {
  ScriptedAnswer a = next(ScriptedAnswer::Kind::Colour, "colour");
  if (m_echo) *m_echo << "color -> " << (a.cancel ? "cancel" : std::to_string(a.colour)) << '\n';
  if (a.cancel) return std::nullopt;
  return a.colour;
}

bool ScriptedServices::print(const PrintJob& job) {
  ScriptedAnswer a = next(ScriptedAnswer::Kind::Print, job.title);
  if (m_echo) *m_echo << "print -> " << (a.cancel ? "cancel" : a.value) << '\n';
  if (a.cancel) return false;
  m_printed.push_back(job);
  if (!a.value.empty()) {
    // Headless printing puts the page text in the named file.
    std::ofstream out(a.value, std::ios::binary | std::ios::trunc);
    out << job.text;
  }
  return true;
}

bool ScriptedServices::startProcess(const std::string& program, const std::vector<std::string>& args) {
  std::string line = program;
  for (const auto& a : args) line += " " + a;
  m_processes.push_back(line);
  return true;
}

std::optional<std::string> ScriptedServices::httpGet(const std::string&) { return m_http; }

std::chrono::system_clock::time_point ScriptedServices::now() {
  return m_now ? *m_now : std::chrono::system_clock::now();
}

bool ScriptedServices::loadPicture(const std::filesystem::path& file, Raster&) {
  std::error_code error;
  bool readable = std::filesystem::is_regular_file(file, error) && std::filesystem::file_size(file, error) > 0 &&
                  !error && std::ifstream(file, std::ios::binary).good();
  if (readable) m_pictures.push_back(file.string());
  return readable;
}

}  // namespace tolvane::ui
