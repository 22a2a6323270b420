// Checked conversions between numbers and texts with the classic run-time's rules.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace dravik {

// Nearest whole number, halves to even. Raise Overflow (6) outside the type's range and for NaN.
std::int16_t toInt16(double value);
std::int32_t toInt32(double value);

// The number that `text` starts with after leading blanks ("3 minutes" is 3), 0 when there is none.
double leadingNumber(std::string_view text);

// True when the whole text, surrounding blanks aside, is one decimal number.
bool isNumeric(std::string_view text);

// The shortest decimal text of a number with up to 15 significant digits; infinite and undefined numbers read
// "1.#INF", "-1.#INF" and "-1.#IND".
std::string numberText(double value);

}  // namespace dravik
