#include "trainer/window/BoxHandles.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace dravik::trainer {
namespace {

using engine::RotatedBox;

// Degrees by which a turn may miss a right angle and is one.
constexpr float kNearlyRight = 1.5f;

// Of the handles, clockwise from the upper left, which side each moves: -1 left or top, 1 right or bottom.
constexpr std::array<int, 8> kAcross = {-1, 0, 1, 1, 1, 0, -1, -1};
constexpr std::array<int, 8> kDown = {-1, -1, -1, 0, 1, 1, 1, 0};

float distance(ImagePoint a, ImagePoint b) {
    return std::hypot(a.x - b.x, a.y - b.y);
}

// The box with its sides at these places of its own.
RotatedBox withSides(const RotatedBox& box, float left, float top, float right, float bottom) {
    const ImagePoint centre = box.toImage({0.5f * (left + right), 0.5f * (top + bottom)});
    return {centre.x, centre.y, right - left, bottom - top, box.angle};
}

}  // namespace

std::array<ImagePoint, 8> handlePlaces(const RotatedBox& box) {
    std::array<ImagePoint, 8> places;
    for (std::size_t i = 0; i < places.size(); ++i)
        places[i] = box.toImage({0.5f * static_cast<float>(kAcross[i]) * box.width,
                                 0.5f * static_cast<float>(kDown[i]) * box.height});
    return places;
}

ImagePoint turnPlace(const RotatedBox& box, float above) {
    return box.toImage({0, -0.5f * box.height - above});
}

BoxPart partAt(const RotatedBox& box, ImagePoint place, float reach, float turnAbove) {
    if (turnAbove > 0 && distance(place, turnPlace(box, turnAbove)) <= reach) return BoxPart::Turn;
    const ImagePoint own = box.toOwn(place);
    const float x = 0.5f * box.width, y = 0.5f * box.height;
    if (std::abs(own.x) > x + reach || std::abs(own.y) > y + reach) return BoxPart::None;
    // Small boxes can be taken hold of inside, too.
    const float in = std::min(reach, std::min(x, y) / 2);
    const int across = own.x < in - x ? -1 : own.x > x - in ? 1 : 0;
    const int down = own.y < in - y ? -1 : own.y > y - in ? 1 : 0;
    for (std::size_t i = 0; i < kAcross.size(); ++i)
        if (kAcross[i] == across && kDown[i] == down)
            return static_cast<BoxPart>(static_cast<int>(BoxPart::TopLeft) + static_cast<int>(i));
    return BoxPart::Inside;
}

RotatedBox dragged(const RotatedBox& box, BoxPart part, ImagePoint from, ImagePoint to, float least) {
    RotatedBox result = box;
    switch (part) {
        case BoxPart::None:
            break;
        case BoxPart::Inside:
            result.centreX += to.x - from.x;
            result.centreY += to.y - from.y;
            break;
        case BoxPart::Turn: {
            const float radians = std::atan2(to.y - box.centreY, to.x - box.centreX);
            const float angle = usualAngle(radians * 180 / std::numbers::pi_v<float> + 90);
            const float right = 90 * std::round(angle / 90);
            result.angle =
                usualAngle(std::abs(angle - right) < kNearlyRight ? right : std::round(angle * 2) / 2);
            break;
        }
        default: {
            const auto handle = static_cast<std::size_t>(part) - static_cast<std::size_t>(BoxPart::TopLeft);
            const ImagePoint start = box.toOwn(from), end = box.toOwn(to);
            const float dx = end.x - start.x, dy = end.y - start.y;
            float left = -0.5f * box.width, right = -left, top = -0.5f * box.height, bottom = -top;
            if (kAcross[handle] < 0) left = std::min(left + dx, right - least);
            if (kAcross[handle] > 0) right = std::max(right + dx, left + least);
            if (kDown[handle] < 0) top = std::min(top + dy, bottom - least);
            if (kDown[handle] > 0) bottom = std::max(bottom + dy, top + least);
            result = withSides(box, left, top, right, bottom);
        }
    }
    return result;
}

RotatedBox boxBetween(ImagePoint one, ImagePoint other, float angle) {
    const RotatedBox frame{0, 0, 0, 0, angle};
    const ImagePoint a = frame.toOwn(one), b = frame.toOwn(other);
    return withSides(frame, std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x), std::max(a.y, b.y));
}

RotatedBox boxAround(const RotatedBox& first, const RotatedBox& second) {
    float left = -0.5f * first.width, right = -left, top = -0.5f * first.height, bottom = -top;
    for (const ImagePoint corner : second.corners()) {
        const ImagePoint own = first.toOwn(corner);
        left = std::min(left, own.x);
        right = std::max(right, own.x);
        top = std::min(top, own.y);
        bottom = std::max(bottom, own.y);
    }
    return withSides(first, left, top, right, bottom);
}

RotatedBox slice(const RotatedBox& box, float from, float to) {
    const float left = -0.5f * box.width, top = -0.5f * box.height;
    return withSides(box, left + from, top, left + to, -top);
}

float usualAngle(float degrees) {
    return std::remainder(degrees, 360.0f);
}

}  // namespace dravik::trainer
