#include "phi/phi_creator.h"

#include <map>
#include <memory>

#include "phi/phi_viewer.h"
#include "program/program.h"
#include "text/figure_text.h"
#include "text/line_reader.h"
#include "text/line_writer.h"
#include "text/phi_file.h"
#include "text/run_time_number.h"
#include "text/runtime_error.h"
#include "text/scratch_file.h"
#include "text/scratch_move.h"
#include "ui/services.h"
#include "workspace/line_ending_repair.h"

namespace tolvane::phi {

using text::Left;
using text::Mid;
using text::Right;
using text::PlainKind;

namespace {

constexpr int kMostFigures = 9;

// The user cancelled at a rotation question.
struct Cancelled {};

std::string rotationMessage(const std::string& what, const std::string& found, const char* should) {
  return "There is an error in the rotation order for " + what + " in the CR2 file.  It says '" + found +
         "' and it should say '" + should + "'.  This will be repaired in the phi file and noted.";
}

// Field reads over the CR2 with the field in hand kept; a read past the end is error 62.
class Fields {
 public:
  explicit Fields(const std::filesystem::path& path) : m_in(std::make_unique<text::LineReader>(path)) {}
  const std::string& read() {
    m_field = m_in->ReadField();
    return m_field;
  }
  const std::string& field() const { return m_field; }
  bool atEnd() { return m_in->atEnd(); }
  std::uint64_t position() const { return m_in->position(); }
  void seek(std::uint64_t at, std::string inHand) {
    m_in->seek(at);
    m_field = std::move(inHand);
  }
  template <class Test>
  void readUntil(Test test) {
    do read();
    while (!test(m_field));
  }

 private:
  std::unique_ptr<text::LineReader> m_in;
  std::string m_field;
};

class Creator {
 public:
  Creator(Program& program, std::string cr2, text::LineWriter& out)
      : m_program(program), m_cr2(std::move(cr2)), m_path(text::nativePath(m_cr2)), m_out(out) {}

  // Steps up to the figures' lines; a run-time failure escapes to the caller's trap.
  void writeFigures();
  // The chains, from the top of the file; the end of the file ends them.
  void writeChains();

 private:
  void firstPass();
  void indexParts();
  void writeFigure(std::size_t index, Fields& in);
  std::string collectOrder(Fields& in);
  void ask(std::string& order, const std::string& key, char number);

  Program& m_program;
  std::string m_cr2;
  std::filesystem::path m_path;
  text::LineWriter& m_out;
  std::string m_objReference;
  long long m_start = -1;
  std::string m_numbers;  // one character per figure
  // Where the first field equal to each search key ends, and the file's last field.
  std::map<std::string, std::uint64_t> m_partAt;
  std::string m_lastField;
  bool m_asked = false;
  bool m_ignore = false;
};

void Creator::firstPass() {
  Fields in(m_path);
  long long line = 0;
  while (!in.atEnd()) {
    const std::string& field = in.read();
    ++line;
    if (!text::contains(field, "figureResFile")) continue;
    m_objReference = Mid(field, 15);
    std::string name = in.read();
    in.read();
    std::string last = in.read();
    if (last.empty()) {
      last = in.read();
      line += 3;
    }
    line += 3;
    if (last != "}") continue;
    if (m_start < 0) m_start = line;
    if (static_cast<int>(m_numbers.size()) == kMostFigures) text::raiseError(text::kSubscriptOutOfRange);
    m_numbers += name.empty() ? ' ' : name.back();
  }
  if (m_start < 0) m_start = 0;
}

// One pass in place of a search from the top for every part of the table: the search
// stops at a part's first entry, so the first place of each key is all it needs.
void Creator::indexParts() {
  std::map<std::string, std::uint64_t> wanted;
  for (char number : m_numbers)
    for (const text::phi::BodyPart& part : text::phi::bodyParts())
      wanted.emplace("actor " + std::string(part.name) + ":" + number, 0);
  text::LineReader in(m_path);
  for (std::string field; in.readField(field);) {
    auto it = wanted.find(field);
    if (it != wanted.end() && m_partAt.count(field) == 0) m_partAt.emplace(field, in.position());
    m_lastField = field;
  }
}

std::string Creator::collectOrder(Fields& in) {
  std::string order;
  for (int counted = 0; counted < 3;) {
    in.readUntil([](const std::string& f) { return Right(f, 3) == "rot"; });
    if (Left(in.field(), 6) == "rotate") {
      order += text::LCase(Mid(in.field(), 7, 1));
      ++counted;
    }
    in.read();
  }
  return order;
}

void Creator::ask(std::string& order, const std::string& key, char number) {
  ui::Services& s = m_program.services;
  if (!m_asked) {
    m_asked = true;
    m_ignore = ui::msgBox(s, "Ignore errors in rotation order?", "Error Found!", ui::Buttons::YesNo,
                          ui::Icon::Question) == ui::Answer::Yes;
  }
  if (m_ignore) return;
  std::string what = key.substr(0, key.size() - 1) + number;
  if (ui::msgBox(s, rotationMessage(what, order, "xyz"), "Rotation Error!", ui::Buttons::OKCancel,
                 ui::Icon::Exclamation) != ui::Answer::OK)
    throw Cancelled{};
  order = text::phi::kLimbRepair;
}

void Creator::writeFigure(std::size_t index, Fields& in) {
  namespace phi = text::phi;
  ui::Services& s = m_program.services;
  char number = m_numbers[index];
  m_out.WriteLine(phi::kBlankLine);
  m_out.WriteLine(phi::figureLine(number));
  std::string hip = std::string("actor hip:") + number;
  in.readUntil([](const std::string& f) { return text::contains(f, "actor hip:"); });
  while (!text::contains(in.field(), hip)) in.read();
  in.read();
  if (m_numbers.size() > 1) in.readUntil([&hip](const std::string& f) { return text::contains(f, hip); });
  std::string order = collectOrder(in);
  if (Right(order, 3) != "yzx") {
    ui::msgBox(s, rotationMessage("the hip", order, "yzx"), "Rotation Error!", ui::Buttons::OK,
               ui::Icon::Exclamation);
    order = "yzx";
  }
  m_out.WriteLine(phi::hipLine(order));
  int depth = 1;
  for (const char* spine : {"the abdomen", "the chest"}) {
    in.readUntil([](const std::string& f) { return Left(f, 5) == "actor"; });
    const std::string& field = in.field();
    std::string name = Mid(field, 7, static_cast<long long>(text::InStr(field, ":")) - 7);
    ++depth;
    std::string head = phi::bodyHead(depth, name);
    order = collectOrder(in);
    if (Right(order, 3) != "yzx") {
      ui::msgBox(s, rotationMessage(spine, order, "yzx"), "Rotation Error!", ui::Buttons::OK,
                 ui::Icon::Exclamation);
      order = phi::kSpineRepair;
    }
    m_out.WriteLine(head + order);
  }
  for (const phi::BodyPart& part : phi::bodyParts()) {
    if (part.reset != 0) depth = part.reset;
    std::string key = "actor " + std::string(part.name) + ":" + number;
    Fields at(m_path);
    auto found = m_partAt.find(key);
    if (found != m_partAt.end()) {
      at.seek(found->second, key);
    } else {
      at.seek(text::fileLength(m_path), m_lastField);
      if (m_lastField == "}") continue;
    }
    ++depth;
    std::string head = phi::bodyHead(depth, part.name);
    order = collectOrder(at);
    if (Right(order, 3) != "xyz") ask(order, key, number);
    m_out.WriteLine(head + order);
  }
}

void Creator::writeFigures() {
  namespace phi = text::phi;
  firstPass();
  indexParts();
  Fields in(m_path);
  for (long long i = 0; i < m_start; ++i) in.read();
  m_out.WriteLine(phi::headLine(m_cr2));
  m_out.WriteLine(phi::objLine(m_objReference));
  m_out.WriteLine(phi::kBlankLine);
  for (std::size_t f = 0; f < m_numbers.size(); ++f) {
    if (f == 0) {
      writeFigure(f, in);
    } else {
      Fields again(m_path);
      writeFigure(f, again);
    }
  }
  m_out.WriteLine(phi::kBlankLine);
}

void Creator::writeChains() {
  Fields in(m_path);
  try {
    for (int chain = 0; chain < 4; ++chain) {
      in.readUntil([](const std::string& f) { return Left(f, 9) == "inkyChain"; });
      in.read();
      in.read();
      std::string name = Mid(in.read(), 6);
      std::vector<std::string> links;
      while (!text::contains(in.field(), "goal")) {
        const std::string& f = in.read();
        if (text::contains(f, "addLink")) links.push_back(Mid(f.substr(0, f.find(':')), 9));
      }
      const std::string& goal = in.field();
      m_out.WriteLine(text::phi::chainLine(name, links, Mid(goal.substr(0, goal.find(':')), 6)));
    }
  } catch (const text::RuntimeError& e) {
    if (e.number() != text::kInputPastEndOfFile) throw;
  }
}

}  // namespace

void MenuPhiClick(Program& program) {
  ui::Services& s = program.services;
  auto chosen = ui::openDialog(s, program.currentDir);
  if (!chosen || chosen->empty()) return;
  program.setCurrentDirFromFile(*chosen);
  std::string path = *chosen;
  if (PlainKind(path) != "cr2") {
    ui::msgBox(s, "Wrong file type!", "Error!", ui::Buttons::OK, ui::Icon::Critical);
    return;
  }
  RepairLineEndings(program, path);
  program.setBusy(true);
  std::filesystem::path scratch = program.workFile("\\Phi.txt");
  text::deleteIgnoringErrors(scratch);
  text::LineWriter out(scratch, text::LineWriter::Mode::Append);
  Creator creator(program, path, out);
  try {
    creator.writeFigures();
  } catch (const Cancelled&) {
    text::ignoreErrors([&out] { out.close(); });
    program.setBusy(false);
    ui::msgBox(s, "Phi file creation canceled.", "Note!");
    return;
  } catch (const std::exception&) {
    text::ignoreErrors([&out] { out.close(); });
    program.setBusy(false);
    ui::msgBox(s, std::string("Unconventional CR2, you can notify me at ") + kContactAddress, "Error!",
               ui::Buttons::OK, ui::Icon::Critical);
    return;
  }
  try {
    creator.writeChains();
    out.close();
  } catch (...) {
    program.setBusy(false);
    throw;
  }
  std::size_t dot = path.find('.');
  std::string target = path.substr(0, dot == std::string::npos ? 0 : dot + 1) + "phi";
  try {
    // An existing file is never overwritten.
    text::moveScratchInto(scratch, text::nativePath(target), false);
  } catch (const text::RuntimeError&) {
    program.setBusy(false);
    ui::msgBox(s, "File already exists, move or delete the first.", "Error!", ui::Buttons::OK,
               ui::Icon::Critical);
    return;
  }
  program.setBusy(false);
  ui::msgBox(s, "Phi file saved as " + target, "Phi File Creator");
  ShowPhiFile(program, target);
}

}  // namespace tolvane::phi
