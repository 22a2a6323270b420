#include "engine/recogniser/LineBoundaries.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace dravik::engine {
namespace {

// Columns at the sides of a piece that are not inside it.
constexpr int kSides = 2;

}  // namespace

LineBoundaries::LineBoundaries(const InkImage& ink, const Frame& frame, std::span<const Glyph> line,
                               const LineMetrics& metrics) {
    if (line.empty()) return;
    Box all = line.front().piece.box;
    for (const Glyph& one : line) all.include(one.piece.box);
    const LineStrip strip = lineStrip(ink, frame, metrics, all.left, all.right);
    left_ = strip.left;
    column_ = strip.column;
    odds_ = boundaryOdds(strip);
}

int LineBoundaries::place(float along) const {
    return std::clamp(static_cast<int>(std::floor((along - left_) / column_)), 0,
                      static_cast<int>(odds_.size()) - 1);
}

float LineBoundaries::between(float left, float right) const {
    if (!isKnown()) return 0;
    const int first = place(std::min(left, right) - column_), last = place(std::max(left, right) + column_);
    return *std::max_element(odds_.begin() + first, odds_.begin() + last + 1);
}

float LineBoundaries::mean(float left, float right) const {
    if (!isKnown()) return 0;
    const int first = place(left), last = place(right);
    return std::accumulate(odds_.begin() + first, odds_.begin() + last + 1, 0.0f) /
           static_cast<float>(last - first + 1);
}

std::vector<Boundary> LineBoundaries::inside(const Box& piece, float leastOdds) const {
    std::vector<Boundary> result;
    if (!isKnown()) return result;
    const int first = place(piece.left) + kSides, last = place(piece.right) - kSides;
    for (int i = first; i <= last; ++i) {
        const float odds = odds_[static_cast<std::size_t>(i)];
        const auto at = odds_.begin() + i;
        if (odds < leastOdds || odds < *std::max_element(at - kSides, at + kSides + 1) || odds == *(at - 1))
            continue;
        result.push_back({left_ + column_ * (static_cast<float>(i) + 0.5f), odds});
    }
    return result;
}

}  // namespace dravik::engine
