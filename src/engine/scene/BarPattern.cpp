#include "engine/scene/BarPattern.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>
#include <utility>
#include <vector>

namespace dravik::engine {
namespace {

// The best correlation of two rows, one of which may be shifted by up to so many places.
float correlation(std::span<const float> a, std::span<const float> b, int reach) {
    float best = -1;
    const int length = static_cast<int>(a.size()) - reach;
    for (int shift = -reach; length > reach && shift <= reach; ++shift) {
        double sumA = 0, sumB = 0, squareA = 0, squareB = 0, product = 0;
        for (int i = reach; i < length; ++i) {
            const double x = static_cast<double>(a[static_cast<std::size_t>(i)]),
                         y = static_cast<double>(b[static_cast<std::size_t>(i + shift)]);
            sumA += x;
            sumB += y;
            squareA += x * x;
            squareB += y * y;
            product += x * y;
        }
        const double count = length - reach;
        const double spread = std::sqrt((squareA - sumA * sumA / count) * (squareB - sumB * sumB / count));
        if (spread > 0) best = std::max(best, static_cast<float>((product - sumA * sumB / count) / spread));
    }
    return best;
}

}  // namespace

bool isBarred(const GreyImage& image, const TextLine& line) {
    constexpr int kRows = 3;
    const float c = std::cos(line.angle), s = std::sin(line.angle), height = line.height();
    const int width = static_cast<int>(line.right - line.left);
    std::array<std::vector<float>, 3> means;
    for (std::size_t k = 0; k < means.size(); ++k) {
        means[k].assign(static_cast<std::size_t>(width), 0);
        for (int r = 0; r < kRows; ++r) {
            const float across =
                line.top + (0.2f + 0.25f * static_cast<float>(k) + 0.05f * static_cast<float>(r)) * height;
            for (int x = 0; x < width; ++x) {
                const float along = line.left + static_cast<float>(x);
                means[k][static_cast<std::size_t>(x)] +=
                    image.levelAt(along * c - across * s, along * s + across * c);
            }
        }
    }
    // The line's direction is known to a degree or so.
    const int reach = 1 + static_cast<int>(0.04f * height);
    const float alike =
        std::min({correlation(means[0], means[1], reach), correlation(means[1], means[2], reach),
                  correlation(means[0], means[2], reach)});
    if (alike < 0.9f) return false;
    const auto [low, high] = std::minmax_element(means[1].begin(), means[1].end());
    const float middle = 0.5f * (*low + *high);
    std::vector<float> bars;
    float inBar = 0;
    for (const float level : means[1]) {
        if ((level < middle) == line.dark)
            ++inBar;
        else if (inBar > 0)
            bars.push_back(std::exchange(inBar, 0.0f));
    }
    if (bars.size() < 3) return false;
    float sum = 0, squares = 0;
    for (const float bar : bars) {
        sum += bar;
        squares += bar * bar;
    }
    const float count = static_cast<float>(bars.size()), mean = sum / count;
    const float spread = std::sqrt(std::max(0.0f, squares / count - mean * mean));
    return spread > 0.3f * mean || static_cast<float>(width) < 0.25f * count * line.height();
}

}  // namespace dravik::engine
