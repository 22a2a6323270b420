#include "engine/scene/UprightLine.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <utility>

namespace dravik::engine {
namespace {

// Of the picture above and below a line, in parts of the print's height.
constexpr float kAbove = 0.4f, kBelow = 0.45f;
// Lines of the same print, whose heights are alike by this part: a part of a code is none.
constexpr float kAlike = 0.6f;

// The background beyond a row or a column of pixels: what is least like print nearby.
std::vector<float> background(std::span<const float> edge, int reach, bool dark) {
    std::vector<float> result(edge.size());
    const int count = static_cast<int>(edge.size());
    for (int i = 0; i < count; ++i) {
        float best = edge[static_cast<std::size_t>(i)];
        for (int k = std::max(0, i - reach); k <= std::min(count - 1, i + reach); ++k) {
            const float level = edge[static_cast<std::size_t>(k)];
            best = dark ? std::max(best, level) : std::min(best, level);
        }
        result[static_cast<std::size_t>(i)] = best;
    }
    return result;
}

}  // namespace

ScenePart uprightLine(const GreyImage& image, const TextLine& line, float height,
                      std::span<const TextLine> others) {
    // Up to halfway to the next line.
    float above = kAbove * height, below = kBelow * height;
    for (const TextLine& other : others) {
        if (!isOverOrUnder(line, other) || other.height() < kAlike * height ||
            height < kAlike * other.height())
            continue;
        if (other.bottom <= line.top) above = std::min(above, 0.5f * (line.top - other.bottom));
        if (other.top >= line.bottom) below = std::min(below, 0.5f * (other.top - line.bottom));
    }
    const int room = static_cast<int>(std::lround(kRoomAroundLine * height));
    const int inWidth = static_cast<int>(std::lround(line.right - line.left + 2 * kBesideLine * height));
    const int inHeight = static_cast<int>(std::lround(line.height() + above + below));
    const float c = std::cos(line.angle), s = std::sin(line.angle);
    const float along = line.left - kBesideLine * height, across = line.top - above;
    auto picture = std::make_shared<GreyImage>(inWidth + 2 * room, inHeight + 2 * room);
    std::vector<float> first(static_cast<std::size_t>(inWidth)), last(first.size());
    for (int y = 0; y < inHeight; ++y) {
        const std::span<std::uint8_t> row = picture->row(y + room);
        for (int x = 0; x < inWidth; ++x) {
            const float a = along + static_cast<float>(x) + 0.5f, b = across + static_cast<float>(y) + 0.5f;
            const float level = image.levelAt(a * c - b * s, a * s + b * c);
            row[static_cast<std::size_t>(x + room)] = static_cast<std::uint8_t>(level + 0.5f);
            if (y == 0) first[static_cast<std::size_t>(x)] = level;
            if (y == inHeight - 1) last[static_cast<std::size_t>(x)] = level;
        }
    }
    const int reach = static_cast<int>(height);
    const std::vector<float> overIt = background(first, reach, line.dark),
                             underIt = background(last, reach, line.dark);
    for (int y = 0; y < room; ++y)
        for (int x = 0; x < inWidth; ++x) {
            const std::size_t column = static_cast<std::size_t>(x);
            picture->row(y)[column + static_cast<std::size_t>(room)] =
                static_cast<std::uint8_t>(overIt[column]);
            picture->row(room + inHeight + y)[column + static_cast<std::size_t>(room)] =
                static_cast<std::uint8_t>(underIt[column]);
        }
    std::vector<float> left, right;
    for (int y = 0; y < picture->height(); ++y) {
        left.push_back((*picture)(room, y));
        right.push_back((*picture)(room + inWidth - 1, y));
    }
    const std::vector<float> before = background(left, reach, line.dark),
                             behind = background(right, reach, line.dark);
    for (int y = 0; y < picture->height(); ++y)
        for (int x = 0; x < room; ++x) {
            (*picture)(x, y) = static_cast<std::uint8_t>(before[static_cast<std::size_t>(y)]);
            (*picture)(room + inWidth + x, y) =
                static_cast<std::uint8_t>(behind[static_cast<std::size_t>(y)]);
        }
    ScenePart part;
    part.whole = {0, 0, image.width(), image.height()};
    part.angle = line.angle;
    const float a = along - static_cast<float>(room), b = across - static_cast<float>(room);
    part.left = a * c - b * s;
    part.top = a * s + b * c;
    part.picture = std::move(picture);
    return part;
}

}  // namespace dravik::engine
