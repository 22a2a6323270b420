#include "base/NumberFormat.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "base/Conversions.h"

namespace dravik {
namespace {

// A non-negative decimal: `digits` without point, of which the first `whole` stand before it (negative: zeros
// follow the point first).
struct Decimal {
    std::string digits;
    int whole = 0;
};

Decimal decimalOf(double magnitude) {
    char buffer[40];
    std::snprintf(buffer, sizeof buffer, "%.14e", magnitude);
    const std::string text(buffer);
    const auto e = text.find('e');
    Decimal decimal;
    decimal.digits = text.substr(0, 1) + text.substr(2, e - 2);
    decimal.whole = std::atoi(text.c_str() + e + 1) + 1;
    if (magnitude == 0) decimal.whole = 1;
    return decimal;
}

// Cuts the decimal after `places` digits behind the point, half away from zero.
void roundTo(Decimal& decimal, int places) {
    if (decimal.whole < 0) {
        decimal.digits.insert(0, static_cast<std::size_t>(-decimal.whole), '0');
        decimal.whole = 0;
    }
    const auto keep = static_cast<std::size_t>(decimal.whole + places);
    if (decimal.digits.size() <= keep) {
        decimal.digits.append(keep - decimal.digits.size(), '0');
        return;
    }
    const bool up = decimal.digits[keep] >= '5';
    decimal.digits.resize(keep);
    if (!up) return;
    auto position = keep;
    while (position > 0 && decimal.digits[position - 1] == '9') decimal.digits[--position] = '0';
    if (position > 0) {
        ++decimal.digits[position - 1];
    } else {
        decimal.digits.insert(0, 1, '1');
        ++decimal.whole;
    }
}

// The nearest number of thousandths to one that is small enough for its 15 digits to reach far behind them
// and not so near the middle between two that those digits decide; -1 for any other.
std::int64_t thousandths(double magnitude) {
    constexpr double kMostSteps = 1e7;
    constexpr double kNearMiddle = 1e-6;
    const double steps = magnitude * 1000;
    if (!(steps < kMostSteps)) return -1;
    const auto below = static_cast<std::int64_t>(steps);
    const double beyondMiddle = steps - static_cast<double>(below) - 0.5;
    if (std::abs(beyondMiddle) < kNearMiddle) return -1;
    return beyondMiddle > 0 ? below + 1 : below;
}

// The text for the picture "0.000", which a grid asks for by the thousand; "" when it takes the longer way.
std::string threePlaces(double value) {
    const std::int64_t steps = thousandths(std::abs(value));
    if (steps < 0) return {};
    std::array<char, 24> buffer;
    char* at = buffer.data();
    if (value < 0 && steps > 0) *at++ = '-';
    at = std::to_chars(at, buffer.data() + buffer.size(), steps / 1000).ptr;
    const auto behind = static_cast<int>(steps % 1000);
    *at++ = '.';
    *at++ = static_cast<char>('0' + behind / 100);
    *at++ = static_cast<char>('0' + behind / 10 % 10);
    *at++ = static_cast<char>('0' + behind % 10);
    return std::string(buffer.data(), at);
}

}  // namespace

std::string formatNumber(double value, std::string_view picture) {
    if (!std::isfinite(value)) return numberText(value);
    if (picture == "0.000")
        if (std::string text = threePlaces(value); !text.empty()) return text;
    const auto point = picture.find('.');
    const auto before = picture.substr(0, point);
    const auto after = point == std::string_view::npos ? std::string_view() : picture.substr(point + 1);
    const auto minimumWhole = static_cast<std::size_t>(std::count(before.begin(), before.end(), '0'));
    const auto minimumPlaces = static_cast<std::size_t>(std::count(after.begin(), after.end(), '0'));

    Decimal decimal = decimalOf(std::abs(value));
    roundTo(decimal, static_cast<int>(after.size()));
    std::string whole = decimal.digits.substr(0, static_cast<std::size_t>(decimal.whole));
    std::string places = decimal.digits.substr(static_cast<std::size_t>(decimal.whole));
    whole.erase(0, std::min(whole.find_first_not_of('0'), whole.size()));
    if (whole.size() < minimumWhole) whole.insert(0, minimumWhole - whole.size(), '0');
    while (places.size() > minimumPlaces && places.back() == '0') places.pop_back();

    const bool zero = (whole + places).find_first_not_of('0') == std::string::npos;
    std::string text = value < 0 && !zero ? "-" : "";
    text += whole;
    if (!after.empty()) text += "." + places;
    return text;
}

}  // namespace dravik
