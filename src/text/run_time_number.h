// The run-time number text every tool writes numbers with, and Val for reading them.
// Str form: a leading blank for values that are not negative, no zero before the point,
// 7 significant digits for single precision and 15 for double, and the "E" form below
// 1E-04 in magnitude and from 1E+07 (single) or 1E+15 (double) up.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tolvane::text {

std::string StrSingle(double value);  // narrowed to single precision first
std::string StrDouble(double value);
std::string StrInteger(long long value);  // " 12", "-3"

// Narrowing to single precision, as a Single variable holds the value.
double toSingle(double value);
// The same narrowing where a value beyond the single range is run-time error 6
// (Overflow), as an assignment to a Single raises it.
float CSng(double value);
// Rounding to a 32-bit integer as an assignment to a Long does it: halves go to the
// even neighbour; a value outside the range is run-time error 6.
std::int32_t CLng(double value);

// Longest numeric prefix after leading blanks and tabs; 0 when there is none.
double Val(std::string_view text);

// Text with leading (LTrim), trailing (RTrim) or both blanks removed; tabs stay, as
// the run-time's trimming only removes blanks.
std::string LTrim(std::string_view text);
std::string RTrim(std::string_view text);
std::string Trim(std::string_view text);
// The length of `text` without its trailing blanks. Padded records end in hundreds of
// blanks, so they are skipped a word at a time.
std::size_t lengthWithoutTrailingBlanks(std::string_view text);

}  // namespace tolvane::text
