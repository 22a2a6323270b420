#include "engine/scene/PartInk.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace dravik::engine {
namespace {

// Of a box less ink than this seems empty.
constexpr float kLeastInk = 0.015f;

}  // namespace

PartInk::PartInk(ScenePart& part) : part_(part), ink_(part.found.ink), taken_(ink_.ink.size()) {}

void PartInk::take(const Piece& piece) {
    for (const Run& run : piece.runs)
        for (int x = run.x0; x < run.x1; ++x) taken_[index(x, run.y)] = 1;
}

Piece PartInk::pieceIn(const RotatedBox& box) {
    const RotatedBox own = ownBox(box);
    Piece piece = runsIn(own, [&](int x, int y) { return isInk(x, y) && !taken_[index(x, y)]; });
    if (static_cast<float>(piece.area) < kLeastInk * own.width * own.height) {
        separate(own);
        piece = runsIn(own, [&](int x, int y) { return isInk(x, y); });
    }
    if (piece.runs.empty()) piece = runsIn(own, [](int, int) { return true; });
    return piece;
}

bool PartInk::shows(const RotatedBox& box) const {
    const auto corners = ownBox(box).corners();
    return std::all_of(corners.begin(), corners.end(), [&](RotatedBox::Point corner) {
        return corner.x > -1 && corner.y > -1 && corner.x < static_cast<float>(ink_.width + 1) &&
               corner.y < static_cast<float>(ink_.height + 1);
    });
}

std::size_t PartInk::index(int x, int y) const {
    return static_cast<std::size_t>(y) * static_cast<std::size_t>(ink_.width) + static_cast<std::size_t>(x);
}
bool PartInk::isInk(int x, int y) const {
    return ink_.ink[index(x, y)] >= 128;
}

RotatedBox PartInk::ownBox(const RotatedBox& box) const {
    const float c = std::cos(part_.angle), s = std::sin(part_.angle);
    const float x = box.centreX - part_.left, y = box.centreY - part_.top;
    const auto scaled = [this](float pixels) { return pixels / ink_.scale; };
    return {scaled(x * c + y * s - static_cast<float>(ink_.left)),
            scaled(y * c - x * s - static_cast<float>(ink_.top)), scaled(box.width), scaled(box.height),
            box.angle - part_.angle * 180 / std::numbers::pi_v<float>};
}

template <typename Body>
void PartInk::eachPixel(const RotatedBox& own, Body body) const {
    float left = 1e9f, top = 1e9f, right = -1e9f, bottom = -1e9f;
    for (const RotatedBox::Point corner : own.corners()) {
        left = std::min(left, corner.x);
        right = std::max(right, corner.x);
        top = std::min(top, corner.y);
        bottom = std::max(bottom, corner.y);
    }
    const auto within = [](float value, int most) {
        return static_cast<int>(std::clamp(value, 0.0f, static_cast<float>(most)));
    };
    for (int y = within(top, ink_.height); y < within(bottom + 1, ink_.height); ++y)
        for (int x = within(left, ink_.width); x < within(right + 1, ink_.width); ++x)
            if (own.contains({static_cast<float>(x) + 0.5f, static_cast<float>(y) + 0.5f})) body(x, y);
}

template <typename Choice>
Piece PartInk::runsIn(const RotatedBox& own, Choice isOfIt) const {
    Piece piece;
    eachPixel(own, [&](int x, int y) {
        if (!isOfIt(x, y)) return;
        if (piece.runs.empty() || piece.runs.back().y != y || piece.runs.back().x1 != x)
            piece.runs.emplace_back(x, x, y);
        ++piece.runs.back().x1;
        ++piece.area;
    });
    return piece;
}

// Separates the box's print by a threshold of its own.
void PartInk::separate(const RotatedBox& own) {
    std::vector<std::pair<std::size_t, float>> levels;
    float low = 255, high = 0;
    eachPixel(own, [&](int x, int y) {
        const float level =
            part_.seen().levelAt(static_cast<float>(ink_.left) + (static_cast<float>(x) + 0.5f) * ink_.scale,
                                 static_cast<float>(ink_.top) + (static_cast<float>(y) + 0.5f) * ink_.scale);
        levels.emplace_back(index(x, y), level);
        low = std::min(low, level);
        high = std::max(high, level);
    });
    if (high <= low) return;
    // The middle between the means of both sides, until it stays.
    float threshold = 0.5f * (low + high);
    for (int pass = 0; pass < 10; ++pass) {
        float darker = 0, lighter = 0, dark = 0;
        for (const auto& [place, level] : levels) {
            (level < threshold ? darker : lighter) += level;
            dark += level < threshold ? 1 : 0;
        }
        const float light = static_cast<float>(levels.size()) - dark;
        if (dark == 0 || light == 0) break;
        threshold = 0.5f * (darker / dark + lighter / light);
    }
    const float sign = part_.isDark() ? -1.0f : 1.0f;
    for (const auto& [place, level] : levels) {
        const float depth = sign * (level - threshold) / (0.5f * (high - low));
        ink_.ink[place] = static_cast<std::uint8_t>(std::clamp(128 + 127 * depth, 0.0f, 255.0f));
    }
}

}  // namespace dravik::engine
