#include "engine/segmentation/SegmentationSettings.h"

#include <array>
#include <charconv>
#include <cmath>

namespace dravik::engine {

bool isRegion(const RotatedBox& box) noexcept {
    const auto isSide = [](float side) { return side >= kLeastRegionSide && side <= kMostRegionSide; };
    return isSide(box.width) && isSide(box.height) &&
           box.width * box.height <= static_cast<float>(kMostPixels) &&
           std::abs(box.centreX) <= kMostRegionSide && std::abs(box.centreY) <= kMostRegionSide &&
           std::abs(box.angle) <= 360;
}

std::optional<Polarity> polarityNamed(std::string_view word) {
    if (word == "auto") return Polarity::Automatic;
    if (word == "dark") return Polarity::DarkOnLight;
    if (word == "light") return Polarity::LightOnDark;
    return std::nullopt;
}

std::optional<PrintKind> printKindNamed(std::string_view word) {
    if (word == "auto") return PrintKind::Automatic;
    if (word == "solid") return PrintKind::Solid;
    if (word == "dots") return PrintKind::DotMatrix;
    return std::nullopt;
}

std::optional<RotatedBox> regionNamed(std::string_view text) {
    std::array<float, 5> values{};
    std::size_t count = 0;
    const char* next = text.data();
    const char* const end = next + text.size();
    while (count < values.size()) {
        const auto parsed = std::from_chars(next, end, values[count]);
        if (parsed.ec != std::errc{} || !std::isfinite(values[count])) return std::nullopt;
        ++count;
        next = parsed.ptr;
        if (next == end) break;
        if (count == values.size() || *next++ != ',') return std::nullopt;
    }
    const auto [x, y, width, height, angle] = values;
    const RotatedBox region{x + 0.5f * width, y + 0.5f * height, width, height, angle};
    return next == end && count >= 4 && isRegion(region) ? std::optional(region) : std::nullopt;
}

}  // namespace dravik::engine
