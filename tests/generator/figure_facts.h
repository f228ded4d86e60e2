// Structural facts of a figure text file, gathered in one pass with the line reader,
// for the generator tests: header counts, brace depth, line endings, the lines that
// follow the opening brace of each actor block, and delta and control-block shape.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace tolvane::test {

struct FigureFacts {
  std::map<std::string, int> actorHeaders;  // "actor hip:1" -> occurrences
  std::map<std::string, int> propHeaders;
  int figureResFiles = 0;
  int lowestDepth = 0;  // brace depth never below this
  int finalDepth = 0;
  int targetGeoms = 0;
  int controlBlocks = 0;
  int deltaLines = 0;
  // Line after "{" of each actor block, in file order, per header.
  std::map<std::string, std::vector<std::string>> afterBrace;
  std::vector<std::string> problems;  // shapes a broken writer would produce
};

FigureFacts gatherFacts(const std::filesystem::path& file);

// True when every line feed has a carriage return before it and every carriage
// return a line feed after it, and the file ends with a line ending.
bool crlfEverywhere(const std::string& bytes);

}  // namespace tolvane::test
