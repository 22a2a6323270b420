#include "engine/image/Morphology.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace dravik::engine {
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

// The same across the rows, strip by strip of columns so that memory is read in rows. The rows are taken in
// blocks as long as a window, so that every window is the end of one block and the start of the next:
// extremes from each row to the end of its block are held for two blocks, those from the start of a block run
// along.
template <typename Pick>
void extremesDown(Values& pixels, int width, int height, int radius, Pick pick) {
    constexpr int kStrip = 128;
    const int side = 2 * radius + 1;
    Values toEnd(static_cast<std::size_t>(side) * kStrip), toNextEnd(toEnd.size());
    std::array<std::uint8_t, kStrip> fromStart{};
    for (int left = 0; left < width; left += kStrip) {
        const int columns = std::min(kStrip, width - left);
        const auto row = [&](int place) {
            const auto y = static_cast<std::size_t>(std::clamp(place, 0, height - 1));
            return &pixels[y * static_cast<std::size_t>(width) + static_cast<std::size_t>(left)];
        };
        const auto fill = [&](Values& block, int first) {
            std::uint8_t* out = &block[static_cast<std::size_t>(side - 1) * kStrip];
            std::copy_n(row(first + side - 1), columns, out);
            for (int i = side - 2; i >= 0; --i, out -= kStrip) {
                const std::uint8_t *in = row(first + i), *after = out;
                std::uint8_t* here = out - kStrip;
                for (int x = 0; x < columns; ++x) here[x] = pick(after[x], in[x]);
            }
        };
        // The window of row y begins `radius` rows above it: that of the first row of a block is the block.
        fill(toEnd, -radius);
        for (int start = 0; start < height; start += side) {
            fill(toNextEnd, start + side - radius);
            std::copy_n(toEnd.begin(), columns, row(start));
            for (int y = start + 1; y < std::min(height, start + side); ++y) {
                const std::uint8_t* in = row(y + radius);
                const std::uint8_t* end = &toEnd[static_cast<std::size_t>(y - start) * kStrip];
                if (y == start + 1)
                    std::copy_n(in, columns, fromStart.begin());
                else
                    for (int x = 0; x < columns; ++x) {
                        auto& value = fromStart[static_cast<std::size_t>(x)];
                        value = pick(value, in[x]);
                    }
                std::uint8_t* out = row(y);
                const std::uint8_t* begin = fromStart.data();
                for (int x = 0; x < columns; ++x) out[x] = pick(end[x], begin[x]);
            }
            toEnd.swap(toNextEnd);
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

void closeNarrow(Values& pixels, int width, int height, int side) {
    const int radius = side / 2;
    if (pixels.empty() || radius < 1) return;
    extremes(pixels, width, height, radius, [](std::uint8_t a, std::uint8_t b) { return a > b ? a : b; });
    extremes(pixels, width, height, radius, [](std::uint8_t a, std::uint8_t b) { return a < b ? a : b; });
}

}  // namespace dravik::engine
