// Small text helpers of the generator: numbers written from integer micro-units (so
// the output is the same on every machine), a seeded random sequence, and lines
// indented with tabs, the way Poser writes figure text.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

#include "text/line_writer.h"

namespace tolvane::gen {

// A deterministic random sequence (xorshift64*); the same seed gives the same numbers.
class Random {
 public:
  explicit Random(std::uint64_t seed) : m_state(seed * 0x9E3779B97F4A7C15ull + 0x2545F4914F6CDD1Dull) {}
  std::uint64_t next();
  // A whole number in [low, high].
  std::int64_t between(std::int64_t low, std::int64_t high);

 private:
  std::uint64_t m_state;
};

// A number given in millionths, written as Poser writes it: "0.0125", "-0.5", "1", "0".
// Trailing zeros are dropped; a value below one keeps its leading "0".
std::string micro(std::int64_t millionths);
// Appends the same text to `out` without allocating; returns the number of bytes added.
std::size_t appendMicro(char* out, std::int64_t millionths);
// A delta component: tiny values are written in the exponent form Poser uses
// ("2.3e-005"), others as micro().
std::size_t appendDelta(char* out, std::int64_t millionths);
std::size_t appendInteger(char* out, std::uint64_t value);

// Three numbers in millionths joined by blanks.
std::string triple(std::int64_t x, std::int64_t y, std::int64_t z);

// A name with its figure suffix: ("hip", 1) gives "hip:1".
std::string suffix(std::string_view name, int figureNumber);

// The output of every text file of the generator: a LineWriter that also counts the
// bytes, so the large-figure writer can size its morphs as it goes.
class Sink {
 public:
  explicit Sink(const std::filesystem::path& path);
  // `depth` tabs, the text and CR LF.
  void line(int depth, std::string_view text);
  void empty() { line(0, ""); }
  std::uint64_t bytes() const { return m_bytes; }
  void close() { m_out.close(); }

 private:
  text::LineWriter m_out;
  std::uint64_t m_bytes = 0;
};

}  // namespace tolvane::gen
