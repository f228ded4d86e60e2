#include "text/run_time_number.h"

#include <cctype>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>

#include "text/runtime_error.h"

namespace tolvane::text {

namespace {

// Formats with `digits` significant digits in the run-time's form.
std::string formatNumber(double value, int digits, int upperExponent) {
  if (value == 0 || std::isnan(value)) return " 0";
  if (std::isinf(value)) return value > 0 ? " 1.#INF" : "-1.#INF";
  char buf[64];
  std::snprintf(buf, sizeof buf, "%.*e", digits - 1, std::fabs(value));
  // buf: d.ddddde±XX
  std::string mantissa;
  const char* p = buf;
  for (; *p && *p != 'e'; ++p)
    if (*p != '.') mantissa.push_back(*p);
  int exponent = std::atoi(p + 1);
  while (mantissa.size() > 1 && mantissa.back() == '0') mantissa.pop_back();

  std::string text = value < 0 ? "-" : " ";
  if (exponent < -4 || exponent >= upperExponent) {
    text += mantissa.substr(0, 1);
    if (mantissa.size() > 1) text += "." + mantissa.substr(1);
    std::snprintf(buf, sizeof buf, "E%c%02d", exponent < 0 ? '-' : '+', std::abs(exponent));
    text += buf;
  } else if (exponent < 0) {
    text += "." + std::string(static_cast<std::size_t>(-exponent - 1), '0') + mantissa;
  } else {
    std::size_t intDigits = static_cast<std::size_t>(exponent) + 1;
    if (mantissa.size() <= intDigits) {
      text += mantissa + std::string(intDigits - mantissa.size(), '0');
    } else {
      text += mantissa.substr(0, intDigits) + "." + mantissa.substr(intDigits);
    }
  }
  return text;
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

std::string StrInteger(long long value) {
  return (value < 0 ? "" : " ") + std::to_string(value);
}

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
  if (i < text.size() && (text[i] == 'E' || text[i] == 'e' || text[i] == 'D' || text[i] == 'd')) {
    std::size_t j = i + 1;
    if (j < text.size() && (text[j] == '+' || text[j] == '-')) ++j;
    if (j < text.size() && std::isdigit(static_cast<unsigned char>(text[j]))) {
      while (j < text.size() && std::isdigit(static_cast<unsigned char>(text[j]))) ++j;
      mantissaEnd = j;
    }
  }
  // The digits convert in place; only the "D" exponent form needs a copy first.
  std::string_view number = text.substr(start, mantissaEnd - start);
  bool negative = number.front() == '-';
  if (number.front() == '+' || negative) number.remove_prefix(1);
  double value = 0;
  if (number.find_first_of("Dd") == std::string_view::npos) {
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

std::string RTrim(std::string_view text) {
  std::size_t n = text.size();
  while (n > 0 && isBlank(text[n - 1])) --n;
  return std::string(text.substr(0, n));
}

std::string Trim(std::string_view text) { return LTrim(RTrim(text)); }

}  // namespace tolvane::text
