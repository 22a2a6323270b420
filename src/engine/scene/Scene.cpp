#include "engine/scene/Scene.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <utility>

namespace dravik::engine {
namespace {

// Around a line of print, in parts of its height.
constexpr float kBeside = 0.15f, kAbove = 0.4f, kBelow = 0.45f;
// Empty room around all that.
constexpr float kRoom = 0.5f;
// A picture is filled by its print when nowhere more room than this is left around it, in heights of its
// lines.
constexpr float kBesidePrint = 6, kAbovePrint = 1.8f;
constexpr float kUpright = 0.05f;  // radians
// A picture of more pixels in which no lines are found has none.
constexpr std::int64_t kMostWithoutLines = 500'000;

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

// The line upright, with nothing but background around it.
ScenePart uprightLine(const GreyImage& image, const TextLine& line) {
    const float height = line.height();
    const int room = static_cast<int>(std::lround(kRoom * height));
    const int inWidth = static_cast<int>(std::lround(line.right - line.left + 2 * kBeside * height));
    const int inHeight = static_cast<int>(std::lround((1 + kAbove + kBelow) * height));
    const float c = std::cos(line.angle), s = std::sin(line.angle);
    const float along = line.left - kBeside * height, across = line.top - kAbove * height;
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
    const std::vector<float> above = background(first, reach, line.dark),
                             below = background(last, reach, line.dark);
    for (int y = 0; y < room; ++y)
        for (int x = 0; x < inWidth; ++x) {
            const std::size_t column = static_cast<std::size_t>(x);
            picture->row(y)[column + static_cast<std::size_t>(room)] =
                static_cast<std::uint8_t>(above[column]);
            picture->row(room + inHeight + y)[column + static_cast<std::size_t>(room)] =
                static_cast<std::uint8_t>(below[column]);
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
    part.angle = line.angle;
    const float a = along - static_cast<float>(room), b = across - static_cast<float>(room);
    part.left = a * c - b * s;
    part.top = a * s + b * c;
    part.picture = std::move(picture);
    return part;
}

// Whether the picture shows its print and little else.
bool fills(const GreyImage& image, std::span<const TextLine> lines) {
    float left = 1e9f, top = 1e9f, right = 0, bottom = 0, height = 0;
    for (const TextLine& line : lines) {
        if (std::abs(line.angle) > kUpright) return false;
        left = std::min(left, line.left);
        right = std::max(right, line.right);
        top = std::min(top, line.top);
        bottom = std::max(bottom, line.bottom);
        height = std::max(height, line.height());
    }
    return std::max(left, static_cast<float>(image.width()) - right) < kBesidePrint * height &&
           std::max(top, static_cast<float>(image.height()) - bottom) < kAbovePrint * height;
}

}  // namespace

Region ScenePart::place(const Glyph& glyph, int width, int height) const {
    const Region own = found.place(glyph);
    if (angle == 0 && left == 0 && top == 0) return own;
    const float c = std::cos(angle), s = std::sin(angle);
    float x0 = 1e9f, y0 = 1e9f, x1 = -1e9f, y1 = -1e9f;
    for (const int x : {own.left, own.right})
        for (const int y : {own.top, own.bottom}) {
            const float u = left + static_cast<float>(x) * c - static_cast<float>(y) * s;
            const float v = top + static_cast<float>(x) * s + static_cast<float>(y) * c;
            x0 = std::min(x0, u);
            x1 = std::max(x1, u);
            y0 = std::min(y0, v);
            y1 = std::max(y1, v);
        }
    const auto within = [](float value, int most) {
        return std::clamp(static_cast<int>(std::lround(value)), 0, most);
    };
    return {within(x0, width), within(y0, height), within(x1, width), within(y1, height)};
}

std::size_t Scene::characters() const noexcept {
    std::size_t count = 0;
    for (const ScenePart& part : parts) count += part.found.glyphs.size();
    return count;
}

Scene findScene(std::shared_ptr<const GreyImage> image) {
    Scene scene;
    const std::vector<TextLine> lines = findTextLines(*image);
    const std::int64_t pixels = static_cast<std::int64_t>(image->width()) * image->height();
    if (lines.empty() ? pixels <= kMostWithoutLines : fills(*image, lines)) {
        ScenePart& whole = scene.parts.emplace_back();
        whole.found = segment(*image);
        whole.picture = std::move(image);
        return scene;
    }
    int number = 0;
    for (const TextLine& line : lines) {
        ScenePart part = uprightLine(*image, line);
        part.found = segment(*part.picture);
        if (part.found.glyphs.empty()) continue;
        part.firstLine = number;
        number += static_cast<int>(part.found.lines.size());
        scene.parts.push_back(std::move(part));
    }
    return scene;
}

}  // namespace dravik::engine
