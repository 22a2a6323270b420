#include "engine/image/Thumbnail.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <functional>
#include <numeric>
#include <vector>

namespace dravik::engine {
namespace {

// The part of the source that one target pixel covers along one axis: whole pixels, the first and last in
// part.
struct Coverage {
    int first = 0;
    std::vector<float> weights;  // their sum is 1
};

std::vector<Coverage> coverages(int sourceLength, int targetLength) {
    std::vector<Coverage> result(static_cast<std::size_t>(targetLength));
    const double step = static_cast<double>(sourceLength) / targetLength;
    for (int i = 0; i < targetLength; ++i) {
        const double from = i * step;
        const double to = std::min((i + 1) * step, static_cast<double>(sourceLength));
        auto& coverage = result[static_cast<std::size_t>(i)];
        coverage.first = static_cast<int>(from);
        const int end = std::min(static_cast<int>(std::ceil(to)), sourceLength);
        for (int x = coverage.first; x < end; ++x)
            coverage.weights.push_back(static_cast<float>(
                (std::min(to, x + 1.0) - std::max(from, static_cast<double>(x))) / (to - from)));
    }
    return result;
}

}  // namespace

GreyImage thumbnailOf(const GreyImage& image, int side) {
    if (image.empty() || side < 1) return {};
    const double scale = std::min(1.0, static_cast<double>(side) / std::max(image.width(), image.height()));
    const int width = std::max(1, static_cast<int>(std::lround(image.width() * scale)));
    const int height = std::max(1, static_cast<int>(std::lround(image.height() * scale)));

    const auto across = coverages(image.width(), width);
    const auto down = coverages(image.height(), height);
    GreyImage result(width, height);
    std::vector<float> sums(static_cast<std::size_t>(width));
    for (int y = 0; y < height; ++y) {
        std::fill(sums.begin(), sums.end(), 0.0F);
        const auto& rows = down[static_cast<std::size_t>(y)];
        for (std::size_t r = 0; r < rows.weights.size(); ++r) {
            const auto source = image.row(rows.first + static_cast<int>(r));
            for (std::size_t x = 0; x < sums.size(); ++x) {
                float sum = 0;
                for (std::size_t c = 0; c < across[x].weights.size(); ++c)
                    sum += across[x].weights[c] *
                           static_cast<float>(source[static_cast<std::size_t>(across[x].first) + c]);
                sums[x] += rows.weights[r] * sum;
            }
        }
        const auto target = result.row(y);
        for (std::size_t x = 0; x < sums.size(); ++x)
            target[x] = static_cast<std::uint8_t>(std::clamp(std::lround(sums[x]), 0L, 255L));
    }
    return result;
}

GreyImage reduced(const GreyImage& image, int factor) {
    const int width = (image.width() + factor - 1) / factor, height = (image.height() + factor - 1) / factor;
    GreyImage result(width, height);
    std::vector<std::uint32_t> sums;
    for (int y = 0; y < height; ++y) {
        const int bottom = std::min((y + 1) * factor, image.height());
        sums.assign(static_cast<std::size_t>(image.width()), 0);
        for (int from = y * factor; from < bottom; ++from)
            std::transform(sums.begin(), sums.end(), image.row(from).begin(), sums.begin(), std::plus<>());
        const auto rows = static_cast<std::uint32_t>(bottom - y * factor);
        for (int x = 0; x < width; ++x) {
            const auto first = sums.begin() + std::ptrdiff_t{x} * factor;
            const auto end = sums.begin() + std::min((x + 1) * factor, image.width());
            const auto count = static_cast<std::uint32_t>(end - first) * rows;
            result(x, y) = static_cast<std::uint8_t>((std::accumulate(first, end, count / 2)) / count);
        }
    }
    return result;
}

}  // namespace dravik::engine
