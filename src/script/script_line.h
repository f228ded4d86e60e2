// One line of a runner script split into its step word and arguments: bare words,
// and quoted texts that run from the first to the last double quote of the argument.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace tolvane::script {

struct ScriptLine {
  int number = 0;
  std::string step;
  std::string rest;  // everything after the step word, variables expanded
  std::vector<std::string> words;  // `rest` split at blanks
};

// Replaces ${NAME} and $NAME by the value, longest names first; unknown names stay.
std::string expandVars(const std::string& text, const std::map<std::string, std::string>& vars);
// {TAB}, {CR}, {LF} to their characters.
std::string unescape(const std::string& text);
// The text between the first and the last double quote of `text`, unescaped; false when
// there are not two quotes.
bool quoted(const std::string& text, std::string& out);
// `"A" "B"`: two quoted texts; the first ends at the first `" "` between them.
bool twoQuoted(const std::string& text, std::string& first, std::string& second);
// Splits `text` at the last " -> " into what stands before and the answer after it.
bool arrow(const std::string& text, std::string& before, std::string& answer);

ScriptLine parseLine(int number, const std::string& raw, const std::map<std::string, std::string>& vars);

}  // namespace tolvane::script
