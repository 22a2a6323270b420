#include "engine/image/RotatedBox.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace dravik::engine {
namespace {

struct Turn {
    explicit Turn(float degrees) {
        // Right angles are met exactly, so that an upright box is cut out without a blur.
        const float quarters = degrees / 90;
        if (quarters == std::round(quarters)) {
            constexpr std::array<float, 4> kSines = {0, 1, 0, -1};
            const auto quarter = static_cast<std::size_t>(((static_cast<int>(quarters) % 4) + 4) % 4);
            s = kSines[quarter];
            c = kSines[(quarter + 1) % 4];
        } else {
            const float radians = degrees * std::numbers::pi_v<float> / 180;
            s = std::sin(radians);
            c = std::cos(radians);
        }
    }
    float s = 0, c = 1;
};

}  // namespace

RotatedBox::Point RotatedBox::toImage(Point own) const noexcept {
    const Turn turn(angle);
    return {centreX + own.x * turn.c - own.y * turn.s, centreY + own.x * turn.s + own.y * turn.c};
}

RotatedBox::Point RotatedBox::toOwn(Point image) const noexcept {
    const Turn turn(angle);
    const float x = image.x - centreX, y = image.y - centreY;
    return {x * turn.c + y * turn.s, y * turn.c - x * turn.s};
}

std::array<RotatedBox::Point, 4> RotatedBox::corners() const noexcept {
    const float x = 0.5f * width, y = 0.5f * height;
    return {toImage({-x, -y}), toImage({x, -y}), toImage({x, y}), toImage({-x, y})};
}

bool RotatedBox::contains(Point image) const noexcept {
    const Point own = toOwn(image);
    return std::abs(own.x) <= 0.5f * width && std::abs(own.y) <= 0.5f * height;
}

GreyImage uprightPicture(const GreyImage& image, const RotatedBox& box) {
    const auto side = [](float length) {
        return std::max(1, static_cast<int>(std::lround(std::min(length, 1e6f))));
    };
    GreyImage picture(side(box.width), side(box.height));
    const Turn turn(box.angle);
    for (int y = 0; y < picture.height(); ++y) {
        const std::span<std::uint8_t> row = picture.row(y);
        for (int x = 0; x < picture.width(); ++x) {
            const float a = static_cast<float>(x) + 0.5f - 0.5f * static_cast<float>(picture.width());
            const float b = static_cast<float>(y) + 0.5f - 0.5f * static_cast<float>(picture.height());
            row[static_cast<std::size_t>(x)] = static_cast<std::uint8_t>(
                image.levelAt(box.centreX + a * turn.c - b * turn.s, box.centreY + a * turn.s + b * turn.c) +
                0.5f);
        }
    }
    return picture;
}

}  // namespace dravik::engine
