// tolvane-script: runs a Tolvane session script without a window.
#include <iostream>
#include <string>
#include <vector>

#include "script/script_runner.h"

int main(int argc, char** argv) {
  std::vector<std::string> args(argv + 1, argv + argc);
  return tolvane::script::runnerMain(args, std::cout, std::cerr);
}
