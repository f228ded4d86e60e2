// The Bracket Checker: counts the braces of the open file, names the first body part
// that is one brace out, and shows one of three result pictures. The File and CR2
// Tools menus stay disabled until the user clicks the picture.
#pragma once

#include <string>

namespace tolvane {
class Program;

void CheckBrackets(Program& program);
// A click on a result picture (or opening a source): the picture and the pushpin go,
// the menus come back.
void DismissBracketResult(Program& program, const std::string& picture);
void TimerPushpinTick(Program& program);
}  // namespace tolvane
