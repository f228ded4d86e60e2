// Fuzzes Val and the run-time number text. The input is read as text by Val and the
// trimming, and its first bytes as a double (and the integer of the same bits) for the
// Str forms, which must keep their shape: a blank or a minus first, no zero before the
// point, and double-precision text that reads back through Val to the same text.
#include "text/run_time_number.h"

#include <cmath>
#include <cstdint>
#include <cstring>
#include <string>

#include "fuzz_files.h"

namespace tolvane::fuzz {
namespace {

void checkShape(const std::string& s, double value, std::size_t digits) {
  check(s.size() >= 2, "number text shorter than two characters");
  check(s[0] == (value < 0 && !std::isnan(value) ? '-' : ' '), "number text without its sign place");
  if (std::isinf(value)) return;
  check(s.compare(1, 2, "0.") != 0, "number text with a zero before the point");
  std::size_t count = 0;
  for (std::size_t i = 1; i < s.size() && s[i] != 'E'; ++i) count += s[i] >= '0' && s[i] <= '9';
  bool exponent = s.find('E') != std::string::npos;
  // The point form may have zeros after the point before the digits (".0001234").
  if (exponent) check(count <= digits, "more significant digits than the precision");
}

void numberText(double value) {
  std::string d = text::StrDouble(value);
  checkShape(d, value, 15);
  std::string single = text::StrSingle(value);
  checkShape(single, text::toSingle(value), 7);
  // Fifteen digits read back to the double nearest them, which prints as the same text;
  // only the largest doubles round up past the largest one and read back as infinite.
  double back = text::Val(d);
  if (std::isfinite(value) && std::isfinite(back)) {
    check(text::StrDouble(back) == d, "StrDouble does not read back through Val");
    check(back == text::Val(text::Trim(d)), "Val depends on the leading blank");
  }
}

void valOf(std::string_view input) {
  double v = text::Val(input);
  check(!std::isnan(v), "Val gave NaN");
  // Val reads a prefix: text behind what it took changes nothing.
  std::string more(input);
  more += "x1";
  check(text::Val(more) == v || std::isnan(v), "Val changed by text behind the number");
  std::string l = text::LTrim(input), r = text::RTrim(input), t = text::Trim(input);
  check(l.empty() || l[0] != ' ', "LTrim left a blank");
  check(r.empty() || r.back() != ' ', "RTrim left a blank");
  check(t == text::RTrim(l), "Trim is not both trims");
  numberText(v);
}

}  // namespace
}  // namespace tolvane::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tolvane::fuzz;
  std::string_view input = asText(data, size);
  valOf(input);
  if (size >= 8) {
    double value;
    std::memcpy(&value, data, sizeof value);
    numberText(value);
    long long whole;
    std::memcpy(&whole, data, sizeof whole);
    std::string s = tolvane::text::StrInteger(whole);
    check(tolvane::text::Val(s) == static_cast<double>(whole), "StrInteger does not read back through Val");
  }
  return 0;
}
