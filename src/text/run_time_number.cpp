#include "text/run_time_number.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <vector>

#include "text/runtime_error.h"

namespace tolvane::text {

namespace {

// 10 to the power `n`, from a table over the range of doubles.
double powerOfTen(int n) {
  static const std::vector<double> table = [] {
    std::vector<double> t;
    for (int k = -340; k <= 320; ++k) t.push_back(std::pow(10.0, k));
    return t;
  }();
  return table[static_cast<std::size_t>(std::clamp(n, -340, 320) + 340)];
}

int exponentOf(const char* from, const char* to) {
  bool negative = *from == '-';
  int n = 0;
  for (const char* p = from + (*from == '-' || *from == '+'); p < to; ++p) n = n * 10 + (*p - '0');
  return negative ? -n : n;
}

// The significant digits of |value| rounded to `digits` (trailing zeros dropped) and its
// decimal exponent. The shortest text that reads back as the same number is that
// rounding when it has no more digits and lies well within half a step of the rounding
// from the number, and it is much quicker to find; anything else is rounded by to_chars,
// correctly, as printf rounds.
int roundedDigits(double magnitude, int digits, char* mantissa, int& exponent) {
  char buf[64];
  std::to_chars_result written =
      digits <= 7
          ? std::to_chars(buf, buf + sizeof buf, static_cast<float>(magnitude), std::chars_format::scientific)
          : std::to_chars(buf, buf + sizeof buf, magnitude, std::chars_format::scientific);
  const char* e = std::find(buf, written.ptr, 'e');
  bool shortestWillDo = e - buf - (e - buf > 1 ? 1 : 0) <= digits;
  // A normal double's shortest text is far closer to it than half a step of 15 digits;
  // a single's may not be, and is checked.
  if (shortestWillDo && (digits <= 7 || magnitude < std::numeric_limits<double>::min())) {
    double shortest = 0;
    std::from_chars(buf, written.ptr, shortest);
    shortestWillDo =
        std::fabs(magnitude - shortest) < 0.45 * powerOfTen(exponentOf(e + 1, written.ptr) - digits + 1);
  }
  if (!shortestWillDo)
    written = std::to_chars(buf, buf + sizeof buf, magnitude, std::chars_format::scientific, digits - 1);
  // buf: d.dddde±XX
  int m = 0;
  const char* p = buf;
  for (; p < written.ptr && *p != 'e'; ++p)
    if (*p != '.') mantissa[m++] = *p;
  exponent = exponentOf(p + 1, written.ptr);
  while (m > 1 && mantissa[m - 1] == '0') --m;
  return m;
}

// Formats with `digits` significant digits in the run-time's form, put together in
// place: the tools write millions of numbers.
std::string formatNumber(double value, int digits, int upperExponent) {
  if (value == 0 || std::isnan(value)) return " 0";
  if (std::isinf(value)) return value > 0 ? " 1.#INF" : "-1.#INF";
  char mantissa[32];
  int exponent = 0;
  int m = roundedDigits(std::fabs(value), digits, mantissa, exponent);

  char text[96];
  int n = 0;
  text[n++] = value < 0 ? '-' : ' ';
  auto put = [&](const char* from, int count) {
    for (int i = 0; i < count; ++i) text[n++] = from[i];
  };
  if (exponent < -4 || exponent >= upperExponent) {
    put(mantissa, 1);
    if (m > 1) {
      text[n++] = '.';
      put(mantissa + 1, m - 1);
    }
    n += std::snprintf(text + n, sizeof text - n, "E%c%02d", exponent < 0 ? '-' : '+', std::abs(exponent));
  } else if (exponent < 0) {
    text[n++] = '.';
    for (int i = 0; i < -exponent - 1; ++i) text[n++] = '0';
    put(mantissa, m);
  } else {
    int intDigits = exponent + 1;
    if (m <= intDigits) {
      put(mantissa, m);
      for (int i = m; i < intDigits; ++i) text[n++] = '0';
    } else {
      put(mantissa, intDigits);
      text[n++] = '.';
      put(mantissa + intDigits, m - intDigits);
    }
  }
  return std::string(text, static_cast<std::size_t>(n));
}

bool isBlank(char c) { return c == ' '; }

}  // namespace

double toSingle(double value) { return static_cast<double>(static_cast<float>(value)); }

float CSng(double value) {
  float narrowed = static_cast<float>(value);
  if (std::isinf(narrowed) && !std::isinf(value)) raiseError(kOverflow);
  return narrowed;
}

std::int32_t CLng(double value) {
  double rounded = std::nearbyint(value);
  if (!(rounded >= std::numeric_limits<std::int32_t>::min() &&
        rounded <= std::numeric_limits<std::int32_t>::max()))
    raiseError(kOverflow);
  return static_cast<std::int32_t>(rounded);
}

std::string StrSingle(double value) { return formatNumber(toSingle(value), 7, 7); }

std::string StrDouble(double value) { return formatNumber(value, 15, 15); }

std::string StrInteger(long long value) { return (value < 0 ? "" : " ") + std::to_string(value); }

double Val(std::string_view text) {
  std::size_t i = 0;
  while (i < text.size() && (text[i] == ' ' || text[i] == '\t' || text[i] == '\n')) ++i;
  std::size_t start = i;
  if (i < text.size() && (text[i] == '+' || text[i] == '-')) ++i;
  std::size_t digitsStart = i;
  while (i < text.size() && std::isdigit(static_cast<unsigned char>(text[i]))) ++i;
  if (i < text.size() && text[i] == '.') {
    ++i;
    while (i < text.size() && std::isdigit(static_cast<unsigned char>(text[i]))) ++i;
  }
  if (i == digitsStart || (i == digitsStart + 1 && text[digitsStart] == '.')) return 0;
  std::size_t mantissaEnd = i;
  bool dExponent = false;
  if (i < text.size() && (text[i] == 'E' || text[i] == 'e' || text[i] == 'D' || text[i] == 'd')) {
    std::size_t j = i + 1;
    if (j < text.size() && (text[j] == '+' || text[j] == '-')) ++j;
    if (j < text.size() && std::isdigit(static_cast<unsigned char>(text[j]))) {
      while (j < text.size() && std::isdigit(static_cast<unsigned char>(text[j]))) ++j;
      mantissaEnd = j;
      dExponent = text[i] == 'D' || text[i] == 'd';
    }
  }
  // The digits convert in place; only the "D" exponent form needs a copy first.
  std::string_view number = text.substr(start, mantissaEnd - start);
  bool negative = number.front() == '-';
  if (number.front() == '+' || negative) number.remove_prefix(1);
  double value = 0;
  if (!dExponent) {
    auto result = std::from_chars(number.data(), number.data() + number.size(), value);
    if (result.ec == std::errc::result_out_of_range)
      value = std::strtod(std::string(number).c_str(), nullptr);
  } else {
    std::string copy(number);
    for (char& c : copy)
      if (c == 'D' || c == 'd') c = 'E';
    value = std::strtod(copy.c_str(), nullptr);
  }
  return negative ? -value : value;
}

std::string LTrim(std::string_view text) {
  std::size_t i = 0;
  while (i < text.size() && isBlank(text[i])) ++i;
  return std::string(text.substr(i));
}

std::size_t lengthWithoutTrailingBlanks(std::string_view text) {
  constexpr std::uint64_t kBlanks = 0x2020202020202020ULL;
  const char* s = text.data();
  std::size_t n = text.size();
  auto word = [s](std::size_t at) {
    std::uint64_t w;
    std::memcpy(&w, s + at, sizeof w);
    return w ^ kBlanks;
  };
  while (n >= 32 && (word(n - 8) | word(n - 16) | word(n - 24) | word(n - 32)) == 0) n -= 32;
  while (n >= 8 && word(n - 8) == 0) n -= 8;
  while (n > 0 && isBlank(s[n - 1])) --n;
  return n;
}

std::string RTrim(std::string_view text) { return std::string(text.substr(0, lengthWithoutTrailingBlanks(text))); }

std::string Trim(std::string_view text) { return LTrim(RTrim(text)); }

}  // namespace tolvane::text
