#include "engine/segmentation/LineMetrics.h"

#include <algorithm>
#include <functional>
#include <vector>

namespace dravik::engine {
namespace {

constexpr std::size_t kMostMeasured = 300;

// Mean of the values within `reach` of the densest place; `count` tells how many there are.
float densest(std::span<const float> sorted, float reach, std::size_t& count) {
    std::size_t first = 0, best = 0;
    count = 0;
    for (std::size_t last = 0; last < sorted.size(); ++last) {
        while (sorted[last] - sorted[first] > reach) ++first;
        if (last - first + 1 > count) {
            count = last - first + 1;
            best = first;
        }
    }
    float sum = 0;
    for (std::size_t i = best; i < best + count; ++i) sum += sorted[i];
    return count ? sum / static_cast<float>(count) : 0;
}

}  // namespace

LineMetrics measureLine(std::span<const Box> boxes, float height) {
    LineMetrics metrics;
    if (boxes.empty()) return metrics;
    std::vector<float> bottoms;
    const std::size_t stride = 1 + boxes.size() / kMostMeasured;
    for (std::size_t i = 0; i < boxes.size(); i += stride) bottoms.push_back(boxes[i].bottom);
    std::sort(bottoms.begin(), bottoms.end());
    std::size_t standing = 0;
    metrics.baseline = densest(bottoms, 0.14f * height, standing);
    // Letters that hang below the line may outnumber those that stand on it, which then are the next cluster
    // above.
    const auto above = std::lower_bound(bottoms.begin(), bottoms.end(), metrics.baseline - 0.15f * height);
    std::size_t higher = 0;
    const float other = densest({bottoms.begin(), above}, 0.14f * height, higher);
    if (higher * 2 >= standing && higher > 0 && metrics.baseline - other < 0.6f * height)
        metrics.baseline = other;

    std::vector<float> heights;
    for (std::size_t i = 0; i < boxes.size(); i += stride) heights.push_back(metrics.baseline - boxes[i].top);
    std::sort(heights.begin(), heights.end(), std::greater<>());
    // The tallest height that at least two share, so that one slash or bracket does not set it.
    float tallest = heights.front();
    for (std::size_t i = 0; i + 1 < heights.size(); ++i)
        if (heights[i] - heights[i + 1] < 0.08f * heights[i]) {
            tallest = heights[i];
            break;
        }
    float sum = 0, count = 0, lower = 0;
    for (const float h : heights) {
        if (h > 1.02f * tallest) continue;
        if (h >= 0.88f * tallest) {
            sum += h;
            ++count;
        } else if (h >= 0.5f * tallest) {
            ++lower;
        }
    }
    metrics.capHeight = std::max(2.0f, count > 0 ? sum / count : tallest);
    metrics.oneHeight = lower == 0;
    return metrics;
}

}  // namespace dravik::engine
