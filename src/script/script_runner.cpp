#include "script/script_runner.h"

#include <fstream>
#include <memory>
#include <optional>
#include <random>
#include <sstream>

#include "app/app.h"
#include "program/data_folder.h"
#include "program/events.h"
#include "program/program.h"
#include "script/png_file.h"
#include "script/script_line.h"
#include "text/figure_text.h"
#include "text/run_time_number.h"
#include "ui/drawn_picture.h"
#include "ui/scripted_services.h"

namespace tolvane::script {

namespace {

struct ScriptWrong : std::runtime_error {
  using std::runtime_error::runtime_error;
};

std::string readWhole(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) throw ScriptWrong("cannot read " + path.string());
  std::ostringstream s;
  s << in.rdbuf();
  return s.str();
}

std::vector<std::string> splitLf(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream in(text);
  for (std::string l; std::getline(in, l);) {
    if (!l.empty() && l.back() == '\r') l.pop_back();
    lines.push_back(l);
  }
  return lines;
}

std::string hex6(ui::Colour c) {
  char buf[8];
  std::snprintf(buf, sizeof buf, "%06X", c & 0xFFFFFF);
  return buf;
}

// A line of an expected-messages file; one that ends in "..." is a prefix, so that a
// message holding a long path can be checked.
bool matchesLine(const std::string& actual, const std::string& expected) {
  if (expected.size() < 3 || expected.compare(expected.size() - 3, 3, "...") != 0) return actual == expected;
  return actual.compare(0, expected.size() - 3, expected, 0, expected.size() - 3) == 0;
}

ui::Answer answerFromName(const std::string& name) {
  static const std::pair<const char*, ui::Answer> names[] = {
      {"OK", ui::Answer::OK},       {"Cancel", ui::Answer::Cancel}, {"Yes", ui::Answer::Yes},
      {"No", ui::Answer::No},       {"Abort", ui::Answer::Abort},   {"Retry", ui::Answer::Retry},
      {"Ignore", ui::Answer::Ignore}};
  for (const auto& [text, answer] : names)
    if (name == text) return answer;
  throw ScriptWrong("unknown button " + name);
}

class Runner {
 public:
  Runner(const RunnerOptions& options, std::ostream& out) : m_out(out), m_vars(options.vars) {
    m_services.setEcho(&out);
    if (options.settingsFile) m_settings = std::make_unique<ui::IniSettings>(*options.settingsFile);
    else m_settings = std::make_unique<ui::MemorySettings>();
    ProgramOptions po;
    po.workDir = options.workDir;
    po.currentDir = options.currentDir;
    po.appPath = options.workDir.string();
    m_base = options.currentDir;
    m_vars["WORK"] = options.workDir.string();
    m_vars["CWD"] = options.currentDir.string();
    m_program = std::make_unique<Program>(m_services, *m_settings, po);
    app::wire(*m_program);
  }

  const std::map<std::string, std::string>& vars() const { return m_vars; }
  int passed() const { return m_passed; }
  int failed() const { return m_failed; }
  std::size_t pendingAnswers() const { return m_services.pending(); }

  void run(const ScriptLine& line);

 private:
  struct Target {
    ui::Form* form;
    ui::Control* control;  // nullptr: the form itself
  };

  Target target(const std::string& name) const;
  ui::ListBox& list(const std::string& name) const;
  std::filesystem::path file(const std::string& text) const {
    std::filesystem::path p(text);
    return p.is_relative() ? m_base / p : p;
  }
  void fire(const Target& t, EventKind kind, const EventArgs& args = {});
  void check(bool ok, const ScriptLine& line, const std::string& why);
  void answer(const ScriptLine& line);
  void act(const ScriptLine& line);
  void verify(const ScriptLine& line);
  std::string caption(const Target& t) const;

  std::ostream& m_out;
  std::map<std::string, std::string> m_vars;
  ui::ScriptedServices m_services;
  std::unique_ptr<ui::Settings> m_settings;
  std::unique_ptr<Program> m_program;
  std::filesystem::path m_base;
  int m_passed = 0;
  int m_failed = 0;
};

Runner::Target Runner::target(const std::string& name) const {
  std::string formName = "Opening", controlName = name;
  if (auto dot = name.find('.'); dot != std::string::npos) {
    formName = name.substr(0, dot);
    controlName = name.substr(dot + 1);
  } else if (ui::Form* named = m_program->form(name);
             named != nullptr && m_program->opening.control(name) == nullptr) {
    return {named, nullptr};  // a bare form name: the form itself (its caption, whether it shows)
  }
  ui::Form* form = m_program->form(formName);
  if (form == nullptr) throw ScriptWrong("unknown form " + formName);
  if (controlName == formName) return {form, nullptr};
  ui::Control* control = form->control(controlName);
  if (control == nullptr) throw ScriptWrong("unknown control " + name);
  return {form, control};
}

ui::ListBox& Runner::list(const std::string& name) const {
  auto* l = dynamic_cast<ui::ListBox*>(target(name).control);
  if (l == nullptr) throw ScriptWrong(name + " is not a list");
  return *l;
}

void Runner::fire(const Target& t, EventKind kind, const EventArgs& args) {
  std::string control = t.control ? t.control->name() : t.form->name();
  if (!fireEvent(*m_program, t.form->name(), control, kind, args))
    throw ScriptWrong("no " + std::string(eventKindName(kind)) + " event on " + t.form->name() + "." + control);
}

void Runner::check(bool ok, const ScriptLine& line, const std::string& why) {
  if (ok) {
    ++m_passed;
    return;
  }
  ++m_failed;
  m_out << "FAILED line " << line.number << ": " << line.step << ' ' << line.rest << " -- " << why << '\n';
}

void Runner::answer(const ScriptLine& line) {
  std::string before, ans;
  const std::string& s = line.step;
  if (s == "msg" || s == "msg-any") {
    if (!arrow(" " + line.rest, before, ans)) throw ScriptWrong("missing -> BUTTON");
    if (s == "msg-any") return m_services.queue(ui::ScriptedAnswer::anyMessage(answerFromName(ans)));
    std::string title, text;
    if (!twoQuoted(before, title, text)) throw ScriptWrong("msg needs \"TITLE\" \"TEXT\"");
    return m_services.queue(ui::ScriptedAnswer::message(title, text, answerFromName(ans)));
  }
  std::string q;
  if (s == "dialog")
    return m_services.queue(line.rest == "cancel" ? ui::ScriptedAnswer::dialogCancel()
                                                  : ui::ScriptedAnswer::dialog(file(line.rest).string()));
  if (s == "input") {
    if (line.rest == "cancel") return m_services.queue(ui::ScriptedAnswer::inputCancel());
    if (!quoted(line.rest, q)) throw ScriptWrong("input needs \"TEXT\"");
    return m_services.queue(ui::ScriptedAnswer::input(q));
  }
  if (s == "color") {
    if (line.rest == "cancel") return m_services.queue(ui::ScriptedAnswer::colourCancel());
    if (line.words.size() != 3) throw ScriptWrong("color needs R G B");
    ui::Colour c = static_cast<ui::Colour>(std::stoi(line.words[0]) | (std::stoi(line.words[1]) << 8) |
                                           (std::stoi(line.words[2]) << 16));
    return m_services.queue(ui::ScriptedAnswer::colourAnswer(c));
  }
  if (s == "print")
    return m_services.queue(line.rest == "cancel" ? ui::ScriptedAnswer::printCancel()
                                                  : ui::ScriptedAnswer::print(file(line.rest).string()));
  throw ScriptWrong("unknown step " + s);
}

std::string Runner::caption(const Target& t) const {
  if (t.control == nullptr) return t.form->caption();
  if (auto* l = dynamic_cast<ui::Label*>(t.control)) return l->caption();
  if (auto* b = dynamic_cast<ui::TextBox*>(t.control)) return b->text();
  if (auto* c = dynamic_cast<ui::ComboBox*>(t.control)) return c->text();
  if (auto* m = dynamic_cast<ui::MenuItem*>(t.control)) return m->caption();
  if (auto* k = dynamic_cast<ui::CheckBox*>(t.control)) return k->caption();
  if (auto* l = dynamic_cast<ui::ListBox*>(t.control)) return l->text();
  throw ScriptWrong(t.control->name() + " has no caption");
}

void Runner::act(const ScriptLine& line) {
  const std::string& s = line.step;
  const auto& w = line.words;
  std::string q;
  if (s == "setting") {
    if (w.size() < 3) throw ScriptWrong("setting needs SECTION KEY VALUE");
    std::string value = line.rest.substr(line.rest.find(w[1], w[0].size()) + w[1].size() + 1);
    if (quoted(value, q)) value = q;
    m_settings->save(kAppName, w[0], w[1], value);
  } else if (s == "start") {
    m_program->commandLine = line.rest;
    fire(target("Opening"), EventKind::Load);
  } else if (s == "exit") {
    fire(target("Opening"), EventKind::Unload);
  } else if (s == "open" || s == "open-cancel" || s == "source") {
    m_services.queueStepDialog(s == "open-cancel" ? ui::ScriptedAnswer::dialogCancel()
                                                  : ui::ScriptedAnswer::dialog(file(line.rest).string()));
    fire(target(s == "source" ? "LabelOpenSource" : "MenuFileOpen"), EventKind::Click);
  } else if (s == "select") {
    if (w.size() < 2) throw ScriptWrong("select needs CONTROL I");
    ui::ListBox& l = list(w[0]);
    for (int i = 0; i < l.listCount(); ++i)
      if (l.selected(i)) l.setSelected(i, false);
    for (std::size_t i = 1; i < w.size(); ++i) l.setSelected(std::stoi(w[i]), true);
    l.setListIndex(std::stoi(w.back()));
  } else if (s == "select-text") {
    if (w.empty() || !quoted(line.rest, q)) throw ScriptWrong("select-text needs CONTROL \"TEXT\"");
    ui::ListBox& l = list(w[0]);
    int index = l.indexOf(q);
    if (index < 0) check(false, line, "no entry \"" + q + "\"");
    if (index >= 0) l.setListIndex(index);
    if (index >= 0 && l.multiSelect()) l.setSelected(index, true);
  } else if (s == "event") {
    if (w.size() != 2 && w.size() != 4) throw ScriptWrong("event needs CONTROL KIND [X Y]");
    auto kind = eventKindFromName(w[1]);
    if (!kind) throw ScriptWrong("unknown event kind " + w[1]);
    EventArgs args;
    if (w.size() == 4) {  // a mouse event at a place in the control
      args.x = text::Val(w[2]);
      args.y = text::Val(w[3]);
    }
    if (*kind == EventKind::RightClick || *kind == EventKind::RightRelease) args.button = 2;
    Target t = target(w[0]);
    std::string name = t.control ? t.control->name() : t.form->name();
    // A box that reads its keys itself takes Enter as the key press it is.
    if (*kind == EventKind::Enter && !m_program->events().has(t.form->name(), name, EventKind::Enter) &&
        m_program->events().has(t.form->name(), name, EventKind::Key)) {
      kind = EventKind::Key;
      args.keyCode = 13;
    }
    fire(t, *kind, args);
  } else if (s == "drop") {
    if (w.size() != 2) throw ScriptWrong("drop needs SOURCE TARGET");
    Target source = target(w[0]);
    const std::string sourceName = source.control ? source.control->name() : source.form->name();
    // A drag begins with the left button pressed on its source, as in the window; a list
    // that reads that press decides there whether its lines may be dragged.
    if (m_program->events().has(source.form->name(), sourceName, EventKind::Press)) {
      EventArgs press;
      press.button = 1;
      fire(source, EventKind::Press, press);
    }
    EventArgs args;
    args.source = source.form->name() + "." + sourceName;
    fire(target(w[1]), EventKind::Drop, args);
  } else if (s == "type") {
    Target t = target(w.empty() ? "" : w[0]);
    if (!quoted(line.rest, q)) throw ScriptWrong("type needs \"TEXT\"");
    if (auto* b = dynamic_cast<ui::TextBox*>(t.control)) b->setText(q);
    else if (auto* c = dynamic_cast<ui::ComboBox*>(t.control)) c->setText(q);
    else throw ScriptWrong(w[0] + " takes no typing");
  } else if (s == "key") {
    if (w.size() != 2) throw ScriptWrong("key needs CONTROL CODE");
    Target t = target(w[0]);
    EventArgs args;
    args.keyCode = std::stoi(w[1]);
    std::string name = t.control ? t.control->name() : t.form->name();
    // As in the window: the key press, and Enter besides as its own event, so that a box
    // that reads both (ComboFind: F3 and Enter) takes Enter.
    const bool onKey = m_program->events().has(t.form->name(), name, EventKind::Key);
    const bool onEnter = args.keyCode == 13 && m_program->events().has(t.form->name(), name, EventKind::Enter);
    if (!onKey && !onEnter) throw ScriptWrong("no key event on " + w[0]);
    if (onKey) fire(t, EventKind::Key, args);
    if (onEnter) fire(t, EventKind::Enter, args);
  } else if (s == "menu") {
    Target t = target(line.rest);
    if (t.control != nullptr && !t.control->enabled()) check(false, line, line.rest + " is disabled");
    else fire(t, EventKind::Click);
  } else if (s == "check") {
    if (w.size() != 2) throw ScriptWrong("check needs CONTROL on|off");
    Target t = target(w[0]);
    auto* box = dynamic_cast<ui::CheckBox*>(t.control);
    if (box == nullptr) throw ScriptWrong(w[0] + " is not a check box or option");
    // An option turned on turns its group's others off; only that one clicks, while a
    // check box clicks whichever way it goes.
    bool on = w[1] == "on";
    box->setValue(on);
    bool clicks = on || box->kind() != ui::ControlKind::Option;
    if (clicks && m_program->events().has(t.form->name(), t.control->name(), EventKind::Click))
      fire(t, EventKind::Click);
  } else {
    throw ScriptWrong("unknown step " + s);
  }
}

void Runner::verify(const ScriptLine& line) {
  const std::string& s = line.step;
  const auto& w = line.words;
  std::string q;
  if (s == "check-file") {
    if (w.size() != 2) throw ScriptWrong("check-file needs PATH EXPECTED");
    std::string a = readWhole(file(w[1]));
    bool exists = std::filesystem::exists(file(w[0]));
    check(exists && readWhole(file(w[0])) == a, line, exists ? "files differ" : "no file " + w[0]);
  } else if (s == "check-absent" || s == "check-exists") {
    bool exists = std::filesystem::exists(file(line.rest));
    check(exists == (s == "check-exists"), line, exists ? "the file exists" : "no such file");
  } else if (s == "check-list") {
    if (w.size() != 2) throw ScriptWrong("check-list needs CONTROL FILE");
    auto expected = splitLf(expandVars(readWhole(file(w[1])), m_vars));
    const auto& items = list(w[0]).items();
    std::string why;
    for (std::size_t i = 0; i < std::max(items.size(), expected.size()) && why.empty(); ++i) {
      std::string a = i < items.size() ? items[i] : "<none>";
      std::string e = i < expected.size() ? expected[i] : "<none>";
      if (a != e) why = "entry " + std::to_string(i) + " is \"" + a + "\", expected \"" + e + "\"";
    }
    check(why.empty(), line, why);
  } else if (s == "check-entry") {
    if (w.size() < 2 || !quoted(line.rest, q)) throw ScriptWrong("check-entry needs CONTROL I \"TEXT\"");
    ui::ListBox& l = list(w[0]);
    int i = std::stoi(w[1]);
    std::string actual = i >= 0 && i < l.listCount() ? l.list(i) : "<none>";
    check(actual == q, line, "entry is \"" + actual + "\"");
  } else if (s == "check-count") {
    if (w.size() != 2) throw ScriptWrong("check-count needs CONTROL N");
    int n = list(w[0]).listCount();
    check(n == std::stoi(w[1]), line, "the list has " + std::to_string(n));
  } else if (s == "check-caption") {
    if (w.empty() || !quoted(line.rest, q)) throw ScriptWrong("check-caption needs CONTROL \"TEXT\"");
    std::string actual = caption(target(w[0]));
    check(actual == q, line, "caption is \"" + actual + "\"");
  } else if (s == "check-color") {
    if (w.size() != 2) throw ScriptWrong("check-color needs CONTROL HEX");
    ui::Control* c = target(w[0]).control;
    if (c == nullptr) throw ScriptWrong("check-color needs a control");
    ui::Colour colour = c->kind() == ui::ControlKind::Picture ? c->backColor() : c->foreColor();
    check(text::UCase(w[1]) == hex6(colour), line, "colour is " + hex6(colour));
  } else if (s == "check-visible" || s == "check-enabled") {
    if (w.size() != 2) throw ScriptWrong(s + " needs CONTROL yes|no");
    Target t = target(w[0]);
    bool actual = s == "check-visible" ? (t.control ? t.control->visible() : t.form->visible())
                                       : (t.control ? t.control->enabled() : true);
    check(actual == (w[1] == "yes"), line, actual ? "it is" : "it is not");
  } else if (s == "check-messages") {
    auto expected = splitLf(expandVars(readWhole(file(line.rest)), m_vars));
    const auto& messages = m_services.messages();
    std::string why;
    for (std::size_t i = 0; i < std::max(messages.size(), expected.size()) && why.empty(); ++i) {
      std::string a = i < messages.size() ? messages[i].title + "|" + ui::oneLine(messages[i].text) : "<none>";
      std::string e = i < expected.size() ? expected[i] : "<none>";
      if (!matchesLine(a, e))
        why = "message " + std::to_string(i + 1) + " is \"" + a + "\", expected \"" + e + "\"";
    }
    check(why.empty(), line, why);
  } else if (s == "check-picture" || s == "save-picture") {
    if (w.size() != 2) throw ScriptWrong(s + " needs CONTROL FILE");
    auto* picture = dynamic_cast<ui::DrawnPicture*>(target(w[0]).control);
    if (picture == nullptr) throw ScriptWrong(w[0] + " is not a picture the program draws");
    std::string why;
    if (s == "save-picture") {
      if (!writePng(file(w[1]), picture->raster(), why)) throw ScriptWrong("cannot write " + w[1] + ": " + why);
      return;
    }
    auto expected = readPng(file(w[1]), why);
    if (expected) why = pictureDifference(picture->raster(), *expected);
    check(why.empty(), line, why);
  } else {
    act(line);
  }
}

void Runner::run(const ScriptLine& line) {
  static const char* const answers[] = {"msg", "msg-any", "dialog", "input", "color", "print"};
  for (const char* a : answers)
    if (line.step == a) return answer(line);
  verify(line);
}

}  // namespace

int runScript(const std::filesystem::path& script, const RunnerOptions& options, std::ostream& out,
              std::ostream& err) {
  std::ifstream in(script, std::ios::binary);
  if (!in) {
    err << "tolvane-script: cannot read " << script.string() << '\n';
    return kScriptWrong;
  }
  Runner runner(options, out);
  std::string raw;
  int number = 0;
  while (std::getline(in, raw)) {
    ++number;
    ScriptLine line = parseLine(number, raw, runner.vars());
    if (line.step.empty()) continue;
    try {
      runner.run(line);
    } catch (const ScriptWrong& e) {
      err << "line " << number << ": " << e.what() << '\n';
      return kScriptWrong;
    } catch (const ui::UnexpectedPrompt& e) {
      err << "line " << number << ": " << e.what() << '\n';
      out << runner.passed() << " passed, " << runner.failed() + 1 << " failed\n";
      return kPromptFailed;
    } catch (const std::exception& e) {
      err << "line " << number << ": " << e.what() << '\n';
      return kScriptWrong;
    }
  }
  if (runner.pendingAnswers() > 0) {
    err << "end of script: " << runner.pendingAnswers() << " answer(s) met no prompt\n";
    out << runner.passed() << " passed, " << runner.failed() + 1 << " failed\n";
    return kPromptFailed;
  }
  out << runner.passed() << " passed, " << runner.failed() << " failed\n";
  return runner.failed() > 0 ? kCheckFailed : kPassed;
}

namespace {
std::filesystem::path freshWorkFolder() {
  std::random_device rd;
  auto base = std::filesystem::temp_directory_path();
  for (;;) {
    auto p = base / ("tolvane-script-" + std::to_string(rd()));
    if (std::filesystem::create_directory(p)) return p;
  }
}
}  // namespace

namespace {
const char* const kUsage =
    "usage: tolvane-script [--work DIR] [--settings FILE] [--cwd DIR] [--var NAME=VALUE]... SCRIPT\n";
const char* const kHelp =
    "Runs a Tolvane session script without a window: the same event handlers the desktop\n"
    "program uses, played by the script's steps, with its checks counted.\n"
    "\n"
    "Options:\n"
    "  -h, --help             Show this help and exit.\n"
    "  -v, --version          Show the version and exit.\n"
    "  --work DIR             The work folder for scratch files (default: a fresh one).\n"
    "  --settings FILE        An INI file for the settings (default: an empty store).\n"
    "  --cwd DIR              The starting current directory (default: the script's folder).\n"
    "  --var NAME=VALUE       Defines $NAME in the script; $SAMPLES names the bundled\n"
    "                         samples unless given.\n"
    "\n"
    "Exit status: 0 all checks passed, 1 a check failed, 2 an unanswered or mismatched\n"
    "prompt, 3 the script or the command line is wrong.\n";

// The options as the desktop program reads them: a long option with its value in the
// next argument or after "=", "--" ending the options, one script.
std::optional<int> readArguments(const std::vector<std::string>& given, RunnerOptions& options,
                                 std::filesystem::path& script, std::ostream& out, std::ostream& err) {
  std::vector<std::string> args;
  for (const std::string& a : given) {
    auto eq = a.find('=');
    if (a.rfind("--", 0) == 0 && a.size() > 2 && eq != std::string::npos) {
      args.push_back(a.substr(0, eq));
      args.push_back(a.substr(eq + 1));
    } else {
      args.push_back(a);
    }
  }
  bool optionsEnded = false;
  for (std::size_t i = 0; i < args.size(); ++i) {
    const std::string& a = args[i];
    bool hasValue = i + 1 < args.size();
    if (optionsEnded || a.empty() || a[0] != '-' || a == "-") {
      if (!script.empty()) {
        err << "tolvane-script: one script at a time: " << a << "\n" << kUsage;
        return kScriptWrong;
      }
      script = a;
    } else if (a == "--") {
      optionsEnded = true;
    } else if (a == "-h" || a == "--help") {
      out << kUsage << "\n" << kHelp;
      return 0;
    } else if (a == "-v" || a == "--version") {
      out << "tolvane-script " << TOLVANE_VERSION << "\n";
      return 0;
    } else if ((a == "--work" || a == "--settings" || a == "--cwd" || a == "--var") && !hasValue) {
      err << "tolvane-script: " << a << " needs a value\n" << kUsage;
      return kScriptWrong;
    } else if (a == "--work") {
      options.workDir = args[++i];
    } else if (a == "--settings") {
      options.settingsFile = args[++i];
    } else if (a == "--cwd") {
      options.currentDir = args[++i];
    } else if (a == "--var") {
      const std::string& v = args[++i];
      auto eq = v.find('=');
      if (eq == std::string::npos) {
        err << "tolvane-script: --var takes NAME=VALUE\n";
        return kScriptWrong;
      }
      options.vars[v.substr(0, eq)] = v.substr(eq + 1);
    } else {
      err << "tolvane-script: unknown option " << a << "\n" << kUsage;
      return kScriptWrong;
    }
  }
  if (script.empty()) {
    err << kUsage;
    return kScriptWrong;
  }
  if (!options.vars.count("SAMPLES")) options.vars["SAMPLES"] = samplesFolder(runningProgramFolder()).string();
  return std::nullopt;
}
}  // namespace

int runnerMain(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
  RunnerOptions options;
  std::filesystem::path script;
  if (auto code = readArguments(args, options, script, out, err)) return *code;
  bool ownWork = options.workDir.empty();
  if (ownWork) options.workDir = freshWorkFolder();
  if (options.currentDir.empty()) options.currentDir = std::filesystem::absolute(script).parent_path();
  int code = runScript(script, options, out, err);
  if (ownWork) {
    std::error_code ec;
    std::filesystem::remove_all(options.workDir, ec);
  }
  return code;
}

}  // namespace tolvane::script
