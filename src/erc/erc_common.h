// Pieces the remote-control tools share: the copy loops of their stream rewrites, and
// the elapsed-time yield that keeps the window alive during a long copy.
#pragma once

#include <chrono>
#include <string>
#include <string_view>

#include "text/figure_scan.h"
#include "text/line_writer.h"

namespace tolvane {
class Program;
}

namespace tolvane::erc {

inline constexpr const char* kThreeTabs = "\t\t\t";

// Yields to the event loop about every 100 ms of work, whatever the number of lines.
class Pacer {
 public:
  explicit Pacer(Program& program);
  void tick() {
    if ((++m_count & 0x3FFF) == 0) check();
  }

 private:
  void check();
  Program& m_program;
  unsigned m_count = 0;
};

// The copy loops read through the figure scanner, whose lines are views into its
// window: a line is written without being copied first.

// Copies `count` lines; reading past the end is run-time error 62.
void copyLines(text::FigureScanner& in, text::LineWriter& out, long long count, Pacer& pacer);
// Copies lines up to and including the first that contains `word`.
void copyThroughContains(text::FigureScanner& in, text::LineWriter& out, std::string_view word, Pacer& pacer);
// Copies the rest of the file.
void copyRest(text::FigureScanner& in, text::LineWriter& out, Pacer& pacer);

}  // namespace tolvane::erc
