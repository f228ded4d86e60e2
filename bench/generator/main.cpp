// tolvane-generate: writes the demo set ("samples DIR") or one large figure
// ("large FILE [MB]") or scene ("scene FILE [MB]") for the tests and the benchmarks.
#include <cstdlib>
#include <exception>
#include <iostream>
#include <string>

#include "generator.h"

namespace {

int usage() {
  std::cerr << "usage: tolvane-generate samples DIR\n"
               "       tolvane-generate large FILE [MB]\n"
               "       tolvane-generate scene FILE [MB]\n";
  return 2;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) return usage();
  const std::string command = argv[1];
  try {
    if (command == "samples" && argc == 3) {
      tolvane::gen::writeSampleSet(argv[2]);
      return 0;
    }
    if ((command == "large" || command == "scene") && argc <= 4) {
      tolvane::gen::LargeFigureOptions options;
      if (argc == 4) options.targetBytes = std::stoull(argv[3]) << 20;
      std::uint64_t bytes = command == "large" ? tolvane::gen::writeLargeFigure(argv[2], options)
                                               : tolvane::gen::writeLargeScene(argv[2], options);
      std::cout << argv[2] << ": " << bytes << " bytes\n";
      return 0;
    }
  } catch (const std::exception& e) {
    std::cerr << "tolvane-generate: " << e.what() << "\n";
    return 1;
  }
  return usage();
}
