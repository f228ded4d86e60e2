#include "script/script_line.h"

#include <algorithm>
#include <sstream>

namespace tolvane::script {

std::string expandVars(const std::string& text, const std::map<std::string, std::string>& vars) {
  std::vector<std::pair<std::string, std::string>> ordered(vars.begin(), vars.end());
  std::sort(ordered.begin(), ordered.end(),
            [](const auto& a, const auto& b) { return a.first.size() > b.first.size(); });
  std::string out;
  for (std::size_t i = 0; i < text.size();) {
    bool replaced = false;
    // ${NAME}: the braces end the name, so that text may follow it directly.
    if (text.compare(i, 2, "${") == 0) {
      std::size_t close = text.find('}', i + 2);
      auto known = close == std::string::npos ? vars.end() : vars.find(text.substr(i + 2, close - i - 2));
      if (known != vars.end()) {
        out += known->second;
        i = close + 1;
        continue;
      }
    }
    if (text[i] == '$') {
      for (const auto& [name, value] : ordered) {
        if (text.compare(i + 1, name.size(), name) == 0) {
          out += value;
          i += 1 + name.size();
          replaced = true;
          break;
        }
      }
    }
    if (!replaced) out += text[i++];
  }
  return out;
}

std::string unescape(const std::string& text) {
  std::string out;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text.compare(i, 5, "{TAB}") == 0) {
      out += '\t';
      i += 4;
    } else if (text.compare(i, 4, "{CR}") == 0) {
      out += '\r';
      i += 3;
    } else if (text.compare(i, 4, "{LF}") == 0) {
      out += '\n';
      i += 3;
    } else {
      out += text[i];
    }
  }
  return out;
}

bool quoted(const std::string& text, std::string& out) {
  std::size_t first = text.find('"');
  std::size_t last = text.rfind('"');
  if (first == std::string::npos || last == first) return false;
  out = unescape(text.substr(first + 1, last - first - 1));
  return true;
}

bool twoQuoted(const std::string& text, std::string& first, std::string& second) {
  std::size_t open = text.find('"');
  std::size_t middle = text.find("\" \"", open == std::string::npos ? 0 : open + 1);
  std::size_t close = text.rfind('"');
  if (open == std::string::npos || middle == std::string::npos || close <= middle + 2) return false;
  first = unescape(text.substr(open + 1, middle - open - 1));
  second = unescape(text.substr(middle + 3, close - middle - 3));
  return true;
}

bool arrow(const std::string& text, std::string& before, std::string& answer) {
  std::size_t at = text.rfind(" -> ");
  if (at == std::string::npos) return false;
  before = text.substr(0, at);
  answer = text.substr(at + 4);
  while (!answer.empty() && (answer.back() == ' ' || answer.back() == '\r')) answer.pop_back();
  return true;
}

ScriptLine parseLine(int number, const std::string& raw, const std::map<std::string, std::string>& vars) {
  ScriptLine line;
  line.number = number;
  std::string text = raw;
  while (!text.empty() && (text.back() == '\r' || text.back() == ' ' || text.back() == '\t')) text.pop_back();
  std::size_t start = text.find_first_not_of(" \t");
  if (start == std::string::npos || text[start] == '#') return line;
  text = text.substr(start);
  std::size_t blank = text.find(' ');
  line.step = text.substr(0, blank);
  line.rest = blank == std::string::npos ? "" : expandVars(text.substr(blank + 1), vars);
  std::istringstream words(line.rest);
  for (std::string w; words >> w;) line.words.push_back(w);
  return line;
}

}  // namespace tolvane::script
