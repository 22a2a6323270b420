#include "base/NumberFormat.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "base/Conversions.h"

namespace dravik {
namespace {

// A non-negative decimal: `digits` without point, of which the first `whole` stand before it (negative: zeros follow
// the point first).
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

}  // namespace

std::string formatNumber(double value, std::string_view picture) {
    if (!std::isfinite(value)) return numberText(value);
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
