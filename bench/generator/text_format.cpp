#include "text_format.h"

#include <cstring>

namespace tolvane::gen {

std::uint64_t Random::next() {
  m_state ^= m_state >> 12;
  m_state ^= m_state << 25;
  m_state ^= m_state >> 27;
  return m_state * 0x2545F4914F6CDD1Dull;
}

std::int64_t Random::between(std::int64_t low, std::int64_t high) {
  auto span = static_cast<std::uint64_t>(high - low + 1);
  return low + static_cast<std::int64_t>((next() >> 11) % span);
}

std::size_t appendInteger(char* out, std::uint64_t value) {
  char digits[24];
  std::size_t n = 0;
  do {
    digits[n++] = static_cast<char>('0' + value % 10);
    value /= 10;
  } while (value != 0);
  for (std::size_t i = 0; i < n; ++i) out[i] = digits[n - 1 - i];
  return n;
}

std::size_t appendMicro(char* out, std::int64_t millionths) {
  std::size_t n = 0;
  if (millionths < 0) out[n++] = '-';
  std::uint64_t v =
      millionths < 0 ? static_cast<std::uint64_t>(-millionths) : static_cast<std::uint64_t>(millionths);
  n += appendInteger(out + n, v / 1000000);
  std::uint64_t fraction = v % 1000000;
  if (fraction == 0) return n;
  out[n++] = '.';
  std::uint64_t scale = 100000;
  while (fraction != 0) {
    out[n++] = static_cast<char>('0' + fraction / scale);
    fraction %= scale;
    scale /= 10;
  }
  return n;
}

std::size_t appendDelta(char* out, std::int64_t millionths) {
  std::int64_t magnitude = millionths < 0 ? -millionths : millionths;
  if (magnitude == 0 || magnitude >= 100) return appendMicro(out, millionths);
  // 10 to 99 millionths: one digit, a point, one digit and the three-digit exponent.
  std::size_t n = 0;
  if (magnitude < 10) return appendMicro(out, 0);
  if (millionths < 0) out[n++] = '-';
  out[n++] = static_cast<char>('0' + magnitude / 10);
  if (magnitude % 10 != 0) {
    out[n++] = '.';
    out[n++] = static_cast<char>('0' + magnitude % 10);
  }
  std::memcpy(out + n, "e-005", 5);
  return n + 5;
}

std::string micro(std::int64_t millionths) {
  char buffer[32];
  return std::string(buffer, appendMicro(buffer, millionths));
}

std::string triple(std::int64_t x, std::int64_t y, std::int64_t z) {
  return micro(x) + " " + micro(y) + " " + micro(z);
}

Sink::Sink(const std::filesystem::path& path) : m_out(path, text::LineWriter::Mode::Output) {}

void Sink::line(int depth, std::string_view text) {
  static constexpr std::string_view kTabs = "\t\t\t\t\t\t\t\t";
  auto tabs = kTabs.substr(0, static_cast<std::size_t>(depth));
  m_out.write(tabs);
  m_out.WriteLine(text);
  m_bytes += tabs.size() + text.size() + 2;
}

std::string suffix(std::string_view name, int figureNumber) {
  return std::string(name) + ":" + std::to_string(figureNumber);
}

}  // namespace tolvane::gen
