#include "erc/erc_common.h"

#include "program/program.h"
#include "text/figure_text.h"

namespace tolvane::erc {

Pacer::Pacer(Program& program) : m_program(program), m_last(std::chrono::steady_clock::now()) {}

void Pacer::check() {
  auto now = std::chrono::steady_clock::now();
  if (now - m_last < std::chrono::milliseconds(100)) return;
  m_last = now;
  m_program.services.yield();
}

void copyLines(text::LineReader& in, text::LineWriter& out, long long count, Pacer& pacer) {
  std::string line;
  for (long long i = 0; i < count; ++i) {
    if (!in.readRawLine(line)) in.ReadRawLine();  // raises the end-of-file error
    out.WriteLine(line);
    pacer.tick();
  }
}

std::string copyThroughContains(text::LineReader& in, text::LineWriter& out, std::string_view word,
                                Pacer& pacer) {
  std::string line;
  for (;;) {
    if (!in.readRawLine(line)) in.ReadRawLine();
    out.WriteLine(line);
    pacer.tick();
    if (text::contains(line, word)) return line;
  }
}

void copyRest(text::LineReader& in, text::LineWriter& out, Pacer& pacer) {
  std::string line;
  while (in.readRawLine(line)) {
    out.WriteLine(line);
    pacer.tick();
  }
}

}  // namespace tolvane::erc
