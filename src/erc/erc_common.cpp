#include "erc/erc_common.h"

#include "program/program.h"
#include "text/figure_text.h"

namespace tolvane::erc {

Pacer::Pacer(Program& program) : m_program(program) {}

// The program's one clock, shared with the scanner's own reports.
void Pacer::check() { m_program.keepPace(); }

void copyLines(text::FigureScanner& in, text::LineWriter& out, long long count, Pacer& pacer) {
  for (long long i = 0; i < count; ++i) {
    out.WriteLine(in.ReadRawLine());
    pacer.tick();
  }
}

void copyThroughContains(text::FigureScanner& in, text::LineWriter& out, std::string_view word,
                         Pacer& pacer) {
  for (;;) {
    std::string_view line = in.ReadRawLine();
    out.WriteLine(line);
    pacer.tick();
    if (text::contains(line, word)) return;
  }
}

void copyRest(text::FigureScanner& in, text::LineWriter& out, Pacer& pacer) {
  std::string_view line;
  while (in.rawLine(line)) {
    out.WriteLine(line);
    pacer.tick();
  }
}

}  // namespace tolvane::erc
