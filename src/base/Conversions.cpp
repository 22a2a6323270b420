#include "base/Conversions.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>

#include "base/Failure.h"

namespace dravik {
namespace {

template <class Integer>
Integer toInteger(double value) {
    const double rounded = std::nearbyint(value);
    if (!(rounded >= std::numeric_limits<Integer>::min() && rounded <= std::numeric_limits<Integer>::max()))
        throw Failure(RuntimeError::Overflow);
    return static_cast<Integer>(rounded);
}

constexpr bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

// Length of the decimal number (sign, digits, point, exponent) at the start of `text`; 0 when there is none.
std::size_t numberLength(std::string_view text) {
    std::size_t i = 0;
    if (i < text.size() && (text[i] == '+' || text[i] == '-')) ++i;
    std::size_t digits = 0;
    while (i < text.size() && isDigit(text[i])) ++i, ++digits;
    if (i < text.size() && text[i] == '.') {
        ++i;
        while (i < text.size() && isDigit(text[i])) ++i, ++digits;
    }
    if (digits == 0) return 0;
    if (i < text.size() && (text[i] == 'e' || text[i] == 'E')) {
        std::size_t j = i + 1;
        if (j < text.size() && (text[j] == '+' || text[j] == '-')) ++j;
        if (j < text.size() && isDigit(text[j])) {
            while (j < text.size() && isDigit(text[j])) ++j;
            i = j;
        }
    }
    return i;
}

std::string_view withoutLeadingBlanks(std::string_view text) {
    const auto first = text.find_first_not_of(" \t");
    return first == std::string_view::npos ? std::string_view() : text.substr(first);
}

}  // namespace

std::int16_t toInt16(double value) {
    return toInteger<std::int16_t>(value);
}

std::int32_t toInt32(double value) {
    return toInteger<std::int32_t>(value);
}

double leadingNumber(std::string_view text) {
    text = withoutLeadingBlanks(text);
    const std::string number(text.substr(0, numberLength(text)));
    return number.empty() ? 0.0 : std::strtod(number.c_str(), nullptr);
}

bool isNumeric(std::string_view text) {
    text = withoutLeadingBlanks(text);
    const auto last = text.find_last_not_of(" \t");
    if (last == std::string_view::npos) return false;
    text = text.substr(0, last + 1);
    return numberLength(text) == text.size();
}

std::string numberText(double value) {
    if (std::isnan(value)) return "-1.#IND";
    if (std::isinf(value)) return value > 0 ? "1.#INF" : "-1.#INF";
    char buffer[40];
    std::snprintf(buffer, sizeof buffer, "%.15g", value == 0 ? 0.0 : value);
    return buffer;
}

}  // namespace dravik
