#include "engine/scene/TextLine.h"

namespace dravik::engine {
namespace {

struct Point {
    float x, y;
};

Point placeOf(const TextLine& line, float along, float across) {
    const float c = std::cos(line.angle), s = std::sin(line.angle);
    return {along * c - across * s, along * s + across * c};
}

}  // namespace

bool isSamePlace(const TextLine& a, const TextLine& b) {
    const TextLine& small = a.right - a.left < b.right - b.left ? a : b;
    const TextLine& large = &small == &a ? b : a;
    const float c = std::cos(large.angle), s = std::sin(large.angle);
    int inside = 0;
    constexpr int kSamples = 9;
    for (int i = 0; i < kSamples; ++i) {
        const float part = (static_cast<float>(i) + 0.5f) / kSamples;
        const Point place =
            placeOf(small, small.left + part * (small.right - small.left), 0.5f * (small.top + small.bottom));
        const float along = place.x * c + place.y * s, across = place.y * c - place.x * s;
        const float room = 0.3f * large.height();
        inside += along > large.left - room && along < large.right + room && across > large.top - room &&
                  across < large.bottom + room;
    }
    return inside > kSamples / 3;
}

TextLine turned(const TextLine& line, float angle) {
    const Point middle = placeOf(line, 0.5f * (line.left + line.right), line.middle());
    const float c = std::cos(angle), s = std::sin(angle);
    const float alongBy = middle.x * c + middle.y * s - 0.5f * (line.left + line.right);
    const float acrossBy = middle.y * c - middle.x * s - line.middle();
    TextLine result = line;
    result.angle = angle;
    result.left += alongBy;
    result.right += alongBy;
    result.top += acrossBy;
    result.bottom += acrossBy;
    return result;
}

}  // namespace dravik::engine
