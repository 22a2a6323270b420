#include "engine/Morphology.h"

#include <algorithm>
#include <cstddef>

namespace dravik {
namespace {

using Values = std::vector<std::uint8_t>;

// The greatest (or, by the other order, least) value within `radius` of each place of a row: windows of
// doubled width until two of them cover the wanted one.
template <typename Pick>
void extremesAlong(std::uint8_t* row, int width, int radius, Values& line, Pick pick) {
    const std::size_t count = static_cast<std::size_t>(width), reach = static_cast<std::size_t>(radius);
    const std::size_t side = 2 * reach + 1;
    line.resize(count + 2 * reach);
    std::fill_n(line.begin(), reach, row[0]);
    std::copy_n(row, count, line.begin() + radius);
    std::fill_n(line.begin() + radius + width, reach, row[width - 1]);
    std::size_t covered = 1;
    for (; 2 * covered <= side; covered *= 2) {
        std::uint8_t* out = line.data();
        const std::uint8_t* other = out + covered;
        const std::size_t end = line.size() - covered;
        for (std::size_t i = 0; i < end; ++i) out[i] = pick(out[i], other[i]);
    }
    const std::uint8_t *a = line.data(), *b = a + (side - covered);
    for (std::size_t i = 0; i < count; ++i) row[i] = pick(a[i], b[i]);
}

// The same across the rows, strip by strip of columns so that memory is read in rows: running extremes from
// block border to block border in both directions, of which every window needs one of each.
template <typename Pick>
void extremesDown(Values& pixels, int width, int height, int radius, Pick pick) {
    constexpr int kStrip = 128;
    const int side = 2 * radius + 1;
    const int padded = height + 2 * radius;
    Values forward(static_cast<std::size_t>(padded) * kStrip), backward(forward.size());
    for (int left = 0; left < width; left += kStrip) {
        const int columns = std::min(kStrip, width - left);
        const auto row = [&](int place) {
            const auto y = static_cast<std::size_t>(std::clamp(place - radius, 0, height - 1));
            return &pixels[y * static_cast<std::size_t>(width) + static_cast<std::size_t>(left)];
        };
        const auto of = [](Values& values, int place) {
            return &values[static_cast<std::size_t>(place) * kStrip];
        };
        for (int i = 0; i < padded; ++i) {
            const std::uint8_t* in = row(i);
            std::uint8_t* out = of(forward, i);
            if (i % side == 0)
                std::copy_n(in, columns, out);
            else
                for (int x = 0; x < columns; ++x) out[x] = pick(out[x - kStrip], in[x]);
        }
        for (int i = padded - 1; i >= 0; --i) {
            const std::uint8_t* in = row(i);
            std::uint8_t* out = of(backward, i);
            if (i % side == side - 1 || i == padded - 1)
                std::copy_n(in, columns, out);
            else
                for (int x = 0; x < columns; ++x) out[x] = pick(out[x + kStrip], in[x]);
        }
        for (int y = 0; y < height; ++y) {
            const std::uint8_t *a = of(backward, y), *b = of(forward, y + 2 * radius);
            std::uint8_t* out = row(y + radius);
            for (int x = 0; x < columns; ++x) out[x] = pick(a[x], b[x]);
        }
    }
}

template <typename Pick>
void extremes(Values& pixels, int width, int height, int radius, Pick pick) {
    Values line;
    for (int y = 0; y < height; ++y)
        extremesAlong(&pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width)], width, radius,
                      line, pick);
    extremesDown(pixels, width, height, radius, pick);
}

}  // namespace

Values closed(Values pixels, int width, int height, int side) {
    const int radius = side / 2;
    if (pixels.empty() || radius < 1) return pixels;
    extremes(pixels, width, height, radius, [](std::uint8_t a, std::uint8_t b) { return a > b ? a : b; });
    extremes(pixels, width, height, radius, [](std::uint8_t a, std::uint8_t b) { return a < b ? a : b; });
    return pixels;
}

}  // namespace dravik
