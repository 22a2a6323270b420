#include "engine/recogniser/LineStrip.h"

#include <algorithm>
#include <cmath>

namespace dravik::engine {
namespace {

// Points looked at across a column, at most.
constexpr int kMostPoints = 3;
constexpr float kMostColumns = 2400;

// The ink at a point between four pixels, 0 to 255; beyond the image there is paper.
float inkBetween(const InkImage& ink, float x, float y) {
    const int left = static_cast<int>(std::floor(x)), top = static_cast<int>(std::floor(y));
    if (left < -1 || top < -1 || left >= ink.width || top >= ink.height) return 0;
    const auto at = [&](int column, int row) {
        const bool isInside = column >= 0 && row >= 0 && column < ink.width && row < ink.height;
        return isInside ? static_cast<float>(ink.at(column, row)) : 0;
    };
    const float across = x - static_cast<float>(left), down = y - static_cast<float>(top);
    const float upper = at(left, top) + across * (at(left + 1, top) - at(left, top));
    const float lower = at(left, top + 1) + across * (at(left + 1, top + 1) - at(left, top + 1));
    return upper + down * (lower - upper);
}

}  // namespace

LineStrip lineStrip(const InkImage& ink, const Frame& frame, const LineMetrics& line, float from, float to,
                    float stretch) {
    LineStrip strip;
    const float cell = std::max(line.capHeight, 1.0f) / kPatchCapHeight;
    strip.column = cell * stretch;
    strip.left = from - kStripRoom * strip.column;
    const float columns = (to - from) / strip.column + 2 * kStripRoom;
    if (!(columns > 0 && columns < kMostColumns)) return strip;
    strip.columns = static_cast<int>(std::ceil(columns));
    strip.ink.resize(static_cast<std::size_t>(strip.columns) * kStripHeight);
    const int points = std::clamp(static_cast<int>(std::lround(cell)), 1, kMostPoints);
    const float share = 1 / static_cast<float>(points), count = static_cast<float>(points * points);
    const float top = line.baseline - kPatchBaseline * cell;
    auto to8 = strip.ink.begin();
    for (int row = 0; row < kStripHeight; ++row)
        for (int place = 0; place < strip.columns; ++place) {
            float sum = 0;
            for (int j = 0; j < points; ++j) {
                const float across =
                    top + cell * (static_cast<float>(row) + share * (static_cast<float>(j) + 0.5f));
                for (int i = 0; i < points; ++i) {
                    const float along = strip.left + strip.column * (static_cast<float>(place) +
                                                                     share * (static_cast<float>(i) + 0.5f));
                    sum += inkBetween(ink, frame.x(along, across) - 0.5f, frame.y(along, across) - 0.5f);
                }
            }
            *to8++ = static_cast<std::uint8_t>(std::lround(sum / count));
        }
    return strip;
}

}  // namespace dravik::engine
