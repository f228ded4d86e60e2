#include "erc/ecm_builder.h"

#include <functional>
#include <memory>

#include "erc/erc_common.h"
#include "program/file_save_step.h"
#include "program/program.h"
#include "text/figure_text.h"
#include "text/run_time_number.h"
#include "text/runtime_error.h"
#include "text/scratch_file.h"
#include "ui/services.h"

namespace tolvane::erc {

using text::contains;
using text::hasPrefix;
using text::InStr;
using text::Left;
using text::Mid;
using text::Right;
using ui::ErcKind;

namespace {

constexpr const char* kScratch = "\\EMC.tmp";

// The text before the first ":" (all of it when there is none).
std::string beforeColon(const std::string& s) {
  std::size_t at = InStr(s, ":");
  return at == 0 ? s : Left(s, static_cast<long long>(at) - 1);
}

// Mid with a length that must not be negative, as the run-time demands.
std::string midChecked(const std::string& s, long long start, long long length) {
  if (length < 0) text::raiseError(text::kInvalidProcedureCall);
  return Mid(s, start, length);
}

const char* question(Family family) {
  switch (family) {
    case Family::PBM:
      return "There is already a PBM here, do you want to add another?";
    case Family::Conforming:
      return "There is already a CM here, do you want to add another?";
    case Family::MorphKeep:
      return "There is already a JCM here, do you want to add another?";
    case Family::Joint:
      return "There is already a JCJ or MCJ here, do you want to add another?";
    case Family::Translation:
      return "There is already a JCT or MCT here, do you want to add another?";
  }
  return "";
}

// One line test after another: the line the copy stops at is the last test's match.
using LineTest = std::function<bool(std::string_view)>;

std::vector<LineTest> targetTests(const ui::FormECM& f, ErcKind kind) {
  const std::string slave = f.TextPBM1.text();
  auto containing = [](std::string word) {
    return LineTest([word](std::string_view l) { return contains(l, word); });
  };
  switch (familyOf(kind)) {
    case Family::PBM:
    case Family::MorphKeep:
      return {containing("targetGeom " + beforeColon(slave))};
    case Family::Conforming: {
      std::size_t at = InStr(slave, ":");
      std::string name = at == 0 ? slave : Left(slave, static_cast<long long>(at) - 1);
      std::string number = at == 0 ? std::string() : Mid(slave, static_cast<long long>(at) + 1);
      auto inFigure = std::make_shared<bool>(false);
      return {[name, number, inFigure](std::string_view l) {
        if (hasPrefix(l, "actor ") && !number.empty() && Right(l, 1) == number) *inFigure = true;
        return *inFigure && l.size() >= name.size() &&
               l.compare(l.size() - name.size(), name.size(), name) == 0;
      }};
    }
    case Family::Joint:
    case Family::Translation:
      break;
  }
  if (kind == ErcKind::TCM)
    return {containing("targetGeom " + beforeColon(slave)), containing(Left(f.ControllingKey, 4))};
  std::string actor;
  if (kind == ErcKind::MCJ) {
    long long blank = static_cast<long long>(InStr(slave, " "));
    actor = midChecked(slave, blank + 1, static_cast<long long>(slave.size()) - blank - 3);
  } else {
    actor = midChecked(slave, 6, static_cast<long long>(InStr(slave, ":")) - 6);
  }
  std::string key = Left(f.ControlledKey, 4);
  std::string header = familyOf(kind) == Family::Joint ? "actor " + actor : "actor" + actor;
  return {containing(header), containing(header), containing(key)};
}

// Copies the destination up to and including its target line and the controlled
// channel's interpStyleLocked line; any line not found ends in error 62.
void copyToChannel(Program& program, text::FigureScanner& in, text::LineWriter& out,
                   const std::vector<LineTest>& tests) {
  Pacer pacer(program);
  std::string_view line;
  for (const LineTest& test : tests) {
    do {
      line = in.ReadRawLine();
      out.WriteLine(line);
      pacer.tick();
    } while (!test(line));
  }
  copyThroughContains(in, out, "interpStyleLocked", pacer);
}

void endWork(Program& program) {
  program.setBusy(false);
  program.formECM.LabelWait.setVisible(false);
}

// Writes the scratch copy; false when the user keeps the existing block alone.
bool writeScratch(Program& program, ErcKind kind, text::StreamRewrite& scratch) {
  auto& f = program.formECM;
  const Family family = familyOf(kind);
  text::FigureScanner in(text::nativePath(program.opening.LabelFileNameForEditor.caption()));
  copyToChannel(program, in, scratch.out(), targetTests(f, kind));
  std::string next(in.ReadRawLine());
  bool existing = contains(next, "valueOpDeltaAdd");
  if (existing) {
    auto answer =
        ui::msgBox(program.services, question(family), "Question", ui::Buttons::YesNo, ui::Icon::Exclamation);
    if (answer != ui::Answer::Yes) return false;
    bool keep = family != Family::PBM && family != Family::Conforming;
    if (keep) scratch.WriteLine(next);
    for (int i = 0; i < 4; ++i) {
      std::string_view old = in.ReadRawLine();
      if (keep) scratch.WriteLine(old);
    }
  }
  for (const std::string& line : controlBlock(f, kind)) scratch.WriteLine(line);
  if (!existing) scratch.WriteLine(next);
  Pacer pacer(program);
  copyRest(in, scratch.out(), pacer);
  scratch.close();
  return true;
}

}  // namespace

Family familyOf(ErcKind kind) {
  switch (kind) {
    case ErcKind::PBM:
      return Family::PBM;
    case ErcKind::CM:
      return Family::Conforming;
    case ErcKind::JCM:
    case ErcKind::MCM:
      return Family::MorphKeep;
    case ErcKind::JCJ:
    case ErcKind::MCJ:
      return Family::Joint;
    default:
      return Family::Translation;
  }
}

std::vector<std::string> controlBlock(const ui::FormECM& f, ErcKind kind) {
  const std::string& master = f.TextPBM3.text();
  std::string dial = master;
  if (kind == ErcKind::JCM || kind == ErcKind::MCM || kind == ErcKind::JCJ || kind == ErcKind::JCT)
    dial = Left(master, 4);
  else if (kind == ErcKind::TCM || kind == ErcKind::TCJ)
    dial = Left(master, 5);
  Family family = familyOf(kind);
  bool trimmed = family == Family::Joint || family == Family::Translation;
  std::string figure = trimmed ? text::Trim(f.TextPBM2.text()) : f.TextPBM2.text();
  std::string part = trimmed ? text::Trim(f.TextPBM4.text()) : f.TextPBM4.text();
  const std::string tabs = kThreeTabs;
  return {tabs + "valueOpDeltaAdd", tabs + figure, tabs + part, tabs + dial,
          tabs + "deltaAddDelta " + f.TextPBMRatio.text()};
}

void RunBuilder(Program& program) {
  auto& f = program.formECM;
  const ErcKind kind = f.visibleKind();
  program.setBusy(true);
  text::StreamRewrite scratch(program.workFile(kScratch), true);
  bool written = false;
  try {
    written = writeScratch(program, kind, scratch);
  } catch (const text::RuntimeError& e) {
    scratch.discard();
    endWork(program);
    // A disk that fails is no wrong entry: its report names the real cause.
    if (e.number() != text::kInputPastEndOfFile && e.number() != text::kInvalidProcedureCall &&
        e.number() != text::kFileNotFound)
      throw;
    ui::msgBox(program.services, "Something you entered was not found.", "Error!");
    return;
  }
  if (!written) {
    scratch.discard();
    endWork(program);
    return;
  }
  endWork(program);
  const std::string current = program.opening.LabelFileNameForEditor.caption();
  if (current.empty()) return;
  if (FileSaveStep(program, program.workFile(kScratch), current, current)) f.WorkDone = true;
}

}  // namespace tolvane::erc
