#include "figure_facts.h"

#include "core/figure_text.h"
#include "core/line_reader.h"

namespace tolvane::test {

namespace {

std::string trimmed(const std::string& line) {
  std::size_t start = line.find_first_not_of("\t ");
  return start == std::string::npos ? std::string() : line.substr(start);
}

// The five lines behind interpStyleLocked when the first is valueOpDeltaAdd.
void checkControl(core::LineReader& in, FigureFacts& facts) {
  std::string line;
  std::vector<std::string> block;
  for (int i = 0; i < 4 && in.readRawLine(line); ++i) block.push_back(line);
  if (block.size() != 4 || !core::hasPrefix(block[3], "\t\t\tdeltaAddDelta "))
    facts.problems.push_back("control block without its deltaAddDelta line");
  for (const auto& l : block)
    if (!core::hasPrefix(l, "\t\t\t") || l[3] == '\t')
      facts.problems.push_back("control line not at three tabs: " + l);
  ++facts.controlBlocks;
}

}  // namespace

FigureFacts gatherFacts(const std::filesystem::path& file) {
  FigureFacts facts;
  core::LineReader in(file);
  std::string line, next;
  int depth = 0;
  while (in.readRawLine(line)) {
    std::string text = trimmed(line);
    if (text == "{") ++depth;
    if (text == "}") --depth;
    facts.lowestDepth = std::min(facts.lowestDepth, depth);
    if (core::hasPrefix(line, "figureResFile ")) ++facts.figureResFiles;
    if (core::hasPrefix(line, "\t\ttargetGeom ")) ++facts.targetGeoms;
    if (core::contains(line, "valueOpDeltaAdd")) checkControl(in, facts);
    if (text.rfind("d ", 0) == 0) {
      ++facts.deltaLines;
      if (core::charAt(line, 5) != 'd' || line.rfind("\t\t\t\td ", 0) != 0)
        facts.problems.push_back("delta line not at four tabs: " + line);
    }
    if (core::hasPrefix(line, "prop ")) ++facts.propHeaders[line];
    if (!core::hasPrefix(line, "actor ")) continue;
    ++facts.actorHeaders[line];
    if (!in.readRawLine(next) || next != "\t{") facts.problems.push_back("no brace behind " + line);
    ++depth;
    if (in.readRawLine(next)) facts.afterBrace[line].push_back(next);
    if (trimmed(next) == "}") --depth;
  }
  facts.finalDepth = depth;
  return facts;
}

bool crlfEverywhere(const std::string& bytes) {
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    if (bytes[i] == '\n' && (i == 0 || bytes[i - 1] != '\r')) return false;
    if (bytes[i] == '\r' && (i + 1 == bytes.size() || bytes[i + 1] != '\n')) return false;
  }
  return bytes.size() >= 2 && bytes.compare(bytes.size() - 2, 2, "\r\n") == 0;
}

}  // namespace tolvane::test
