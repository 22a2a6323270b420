#include "engine/Morphology.h"

#include <algorithm>
#include <cstddef>

namespace dravik {
namespace {

// The greatest (or, by the negated order, least) value within `radius` of each place of a line: running
// extremes from block border to block border in both directions, of which every window needs one of each.
template <typename Pick>
void extremesAlong(float* line, int count, int radius, std::vector<float>& forward,
                   std::vector<float>& backward, Pick pick) {
    const int side = 2 * radius + 1;
    const int padded = count + 2 * radius;
    forward.resize(static_cast<std::size_t>(padded));
    backward.resize(static_cast<std::size_t>(padded));
    const auto value = [&](int place) { return line[std::clamp(place - radius, 0, count - 1)]; };
    for (int i = 0; i < padded; ++i) {
        const auto at = static_cast<std::size_t>(i);
        forward[at] = i % side == 0 ? value(i) : pick(forward[at - 1], value(i));
    }
    for (int i = padded - 1; i >= 0; --i) {
        const auto at = static_cast<std::size_t>(i);
        backward[at] = i % side == side - 1 || i == padded - 1 ? value(i) : pick(backward[at + 1], value(i));
    }
    for (int i = 0; i < count; ++i)
        line[i] =
            pick(backward[static_cast<std::size_t>(i)], forward[static_cast<std::size_t>(i + 2 * radius)]);
}

// The same across the rows, strip by strip of columns so that memory is read in rows.
template <typename Pick>
void extremesDown(std::vector<float>& pixels, int width, int height, int radius, Pick pick) {
    constexpr int kStrip = 64;
    const int side = 2 * radius + 1;
    const int padded = height + 2 * radius;
    std::vector<float> forward(static_cast<std::size_t>(padded) * kStrip), backward(forward.size());
    for (int left = 0; left < width; left += kStrip) {
        const int columns = std::min(kStrip, width - left);
        const auto row = [&](int place) {
            const auto y = static_cast<std::size_t>(std::clamp(place - radius, 0, height - 1));
            return &pixels[y * static_cast<std::size_t>(width) + static_cast<std::size_t>(left)];
        };
        const auto of = [](std::vector<float>& values, int place) {
            return &values[static_cast<std::size_t>(place) * kStrip];
        };
        for (int i = 0; i < padded; ++i) {
            const float* in = row(i);
            float* out = of(forward, i);
            if (i % side == 0)
                std::copy_n(in, columns, out);
            else
                for (int x = 0; x < columns; ++x) out[x] = pick(out[x - kStrip], in[x]);
        }
        for (int i = padded - 1; i >= 0; --i) {
            const float* in = row(i);
            float* out = of(backward, i);
            if (i % side == side - 1 || i == padded - 1)
                std::copy_n(in, columns, out);
            else
                for (int x = 0; x < columns; ++x) out[x] = pick(out[x + kStrip], in[x]);
        }
        for (int y = 0; y < height; ++y) {
            const float *a = of(backward, y), *b = of(forward, y + 2 * radius);
            float* out = row(y + radius);
            for (int x = 0; x < columns; ++x) out[x] = pick(a[x], b[x]);
        }
    }
}

template <typename Pick>
void extremes(std::vector<float>& pixels, int width, int height, int radius, Pick pick) {
    std::vector<float> forward, backward;
    for (int y = 0; y < height; ++y)
        extremesAlong(&pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width)], width, radius,
                      forward, backward, pick);
    extremesDown(pixels, width, height, radius, pick);
}

}  // namespace

std::vector<float> closed(std::vector<float> pixels, int width, int height, int side) {
    const int radius = side / 2;
    extremes(pixels, width, height, radius, [](float a, float b) { return a > b ? a : b; });
    extremes(pixels, width, height, radius, [](float a, float b) { return a < b ? a : b; });
    return pixels;
}

}  // namespace dravik
