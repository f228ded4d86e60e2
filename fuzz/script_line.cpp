// Fuzzes the script runner's line parser: every line of the fuzzed script is split into
// its step and words with variables expanded, and its arguments are cut as the steps
// cut them (quoted texts, two quoted texts, the answer behind " -> "). The first line
// names one more variable as NAME=VALUE, so that names are fuzzed too.
#include "script/script_line.h"

#include <cstdint>
#include <map>
#include <string>

#include "fuzz_files.h"

namespace tolvane::fuzz {
namespace {

void run(std::string_view input) {
  std::map<std::string, std::string> vars{{"SAMPLES", "/samples"}, {"DATA", "/data"}, {"CASE", "$DATA/case"}};
  std::size_t eol = input.find('\n');
  std::string first(input.substr(0, eol));
  std::size_t equals = first.find('=');
  if (equals != std::string::npos) vars[first.substr(0, equals)] = first.substr(equals + 1);

  int number = 0;
  for (std::size_t at = 0; at <= input.size(); ++number) {
    std::size_t end = input.find('\n', at);
    if (end == std::string_view::npos) end = input.size();
    std::string raw(input.substr(at, end - at));
    at = end + 1;
    script::ScriptLine line = script::parseLine(number, raw, vars);
    std::string a, b;
    script::quoted(line.rest, a);
    script::twoQuoted(line.rest, a, b);
    script::arrow(" " + line.rest, a, b);
  }
}

}  // namespace
}  // namespace tolvane::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  tolvane::fuzz::run(tolvane::fuzz::asText(data, size));
  return 0;
}
