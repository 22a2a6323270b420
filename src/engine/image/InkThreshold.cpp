#include "engine/image/InkThreshold.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <utility>

#include "engine/image/GreyHistogram.h"

namespace dravik::engine {
namespace {

// Print fainter than this many grey levels is taken for noise.
constexpr int kFaintest = 4;
// Finer tiles than this hold too little to tell the contrast from.
constexpr int kLeastTile = 16;
// The pixels of a larger one could be more than 16 bits count.
constexpr int kMostTile = 255;

using Values = std::vector<std::uint8_t>;

std::size_t area(int width, int height) {
    return static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
}

using TileCounts = std::array<std::uint16_t, kBins>;

// A value per tile, spread over the pixels by interpolation between tile centres.
class TileGrid {
  public:
    TileGrid(int size, int width, int height)
        : tile_(size),
          width_(width),
          height_(height),
          columns_((width + size - 1) / size),
          rows_((height + size - 1) / size),
          shares_(static_cast<std::size_t>(width)) {
        for (int x = 0; x < width; ++x) {
            const int left = tilesBefore(x, columns_);
            const float shift = 0.5f / static_cast<float>(tile_) - 0.5f - static_cast<float>(left);
            shares_[static_cast<std::size_t>(x)] =
                std::clamp(static_cast<float>(x) / static_cast<float>(tile_) + shift, 0.0f, 1.0f);
            if (x == 0 || left != tilesBefore(x - 1, columns_)) starts_.push_back(x);
        }
        starts_.push_back(width);
    }

    int columns() const { return columns_; }
    int rows() const { return rows_; }
    std::size_t index(int column, int row) const {
        return area(columns_, row) + static_cast<std::size_t>(column);
    }
    // Pixels of a tile and of those around it.
    std::uint32_t pixelsAround(int column, int row) const {
        const auto extent = [this](int at, int pixels) {
            return std::min(pixels, (at + 2) * tile_) - std::max(0, (at - 1) * tile_);
        };
        return static_cast<std::uint32_t>(extent(column, width_) * extent(row, height_));
    }

    // Of one row of tiles, for tiles that have values of `least` or more; none for others and beyond the last
    // row.
    struct TileRow {
        std::vector<TileCounts> counts;
        std::vector<std::ptrdiff_t> places;  // of the tile's counts, -1 for none
    };
    void count(const Values& values, int row, int least, TileRow& result) const {
        result.counts.clear();
        result.places.clear();
        if (row >= rows_) return;
        result.counts.reserve(static_cast<std::size_t>(columns_));
        const int top = row * tile_, bottom = std::min(height_, top + tile_);
        std::vector<std::uint8_t> most(static_cast<std::size_t>(width_));
        for (int y = top; y < bottom; ++y) {
            const std::uint8_t* in = &values[area(width_, y)];
            std::uint8_t* const to = most.data();
            for (std::size_t x = 0, width = most.size(); x < width; ++x) to[x] = std::max(to[x], in[x]);
        }
        for (int left = 0; left < width_; left += tile_) {
            const int right = std::min(width_, left + tile_);
            const auto end = most.begin() + right;
            const bool any =
                std::any_of(most.begin() + left, end, [least](std::uint8_t value) { return value >= least; });
            result.places.push_back(any ? static_cast<std::ptrdiff_t>(result.counts.size()) : -1);
            if (!any) continue;
            HistogramCounter counter;
            for (int y = top; y < bottom; ++y)
                counter.add(&values[area(width_, y) + static_cast<std::size_t>(left)],
                            static_cast<std::size_t>(right - left));
            const Histogram counts = counter.counts();
            std::transform(counts.begin(), counts.end(), result.counts.emplace_back().begin(),
                           [](std::uint32_t count) { return static_cast<std::uint16_t>(count); });
        }
    }

    // One row of the surface.
    void interpolate(const std::vector<float>& values, int y, std::vector<float>& out) const {
        const float v = place(y, rows_);
        const int top = static_cast<int>(v), bottom = std::min(top + 1, rows_ - 1);
        const float down = v - static_cast<float>(top);
        const auto edge = [&](int column) {
            return values[index(column, top)] * (1 - down) + values[index(column, bottom)] * down;
        };
        for (std::size_t part = 0; part + 1 < starts_.size(); ++part) {
            const std::size_t first = static_cast<std::size_t>(starts_[part]),
                              end = static_cast<std::size_t>(starts_[part + 1]);
            const int left = tilesBefore(starts_[part], columns_), right = std::min(left + 1, columns_ - 1);
            const float from = edge(left), step = edge(right) - from;
            const float* const shares = shares_.data();
            float* const to = out.data();
            for (std::size_t x = first; x < end; ++x) to[x] = from + step * shares[x];
        }
    }

  private:
    // In tile centres from that of the first tile.
    float place(int pixel, int tiles) const {
        const float at = (static_cast<float>(pixel) + 0.5f) / static_cast<float>(tile_) - 0.5f;
        return std::clamp(at, 0.0f, static_cast<float>(tiles - 1));
    }
    int tilesBefore(int pixel, int tiles) const { return static_cast<int>(place(pixel, tiles)); }

    const int tile_, width_, height_, columns_, rows_;
    std::vector<float> shares_;  // of the tile to the right, at each place of a row
    std::vector<int> starts_;    // of the parts between tile centres, and the end of the last
};

// What stands out in the whole image.
struct Contrast {
    int usual = 0;    // most of the image is background, whose depth is that of the noise
    int visible = 0;  // the least depth above the noise
    int strongest = -1;
};

Contrast contrastOf(const Values& depths) {
    HistogramCounter counter;
    counter.add(depths.data(), depths.size());
    const Histogram all = counter.counts();
    Contrast result;
    result.usual = percentile(all, 0, 0.5, 1);
    const int lower = percentile(all, 0, 0.16, 1);
    result.visible = std::min(255, result.usual + std::max(kFaintest, 5 * (result.usual - lower) / 2));
    result.strongest = percentile(all, result.visible, 0.7, 4);
    for (int round = 0; round < 3 && result.strongest >= 0; ++round)
        result.strongest = percentile(all, std::max(result.visible, result.strongest * 2 / 5), 0.7, 1);
    return result;
}

std::vector<float> tileThresholds(const Values& depths, const TileGrid& grid, const Contrast& contrast) {
    // Where nothing visible is near, the threshold is that of the whole image: noise there stays noise.
    const float overall = static_cast<float>(contrast.strongest), usual = static_cast<float>(contrast.usual);
    std::vector<float> result(area(grid.columns(), grid.rows()));
    // Three rows of tiles at a time: the counts of all would take twice the room of the pixels.
    std::array<TileGrid::TileRow, 3> near;
    std::vector<std::optional<Histogram>> sums(static_cast<std::size_t>(grid.columns()));  // of their columns
    grid.count(depths, 0, contrast.visible, near[1]);
    for (int row = 0; row < grid.rows(); ++row) {
        grid.count(depths, row + 1, contrast.visible, near[2]);
        for (std::size_t column = 0; column < sums.size(); ++column) {
            sums[column].reset();
            for (const TileGrid::TileRow& tiles : near) {
                const std::ptrdiff_t at = tiles.places.empty() ? -1 : tiles.places[column];
                if (at < 0) continue;
                if (!sums[column]) sums[column].emplace();
                const TileCounts& counts = tiles.counts[static_cast<std::size_t>(at)];
                for (std::size_t bin = 0; bin < kBins; ++bin) (*sums[column])[bin] += counts[bin];
            }
        }
        for (int column = 0; column < grid.columns(); ++column) {
            Histogram around{};
            bool any = false;
            for (int c = std::max(0, column - 1); c <= std::min(grid.columns() - 1, column + 1); ++c) {
                const std::optional<Histogram>& sum = sums[static_cast<std::size_t>(c)];
                if (!sum) continue;
                for (std::size_t bin = 0; bin < kBins; ++bin) around[bin] += (*sum)[bin];
                any = true;
            }
            int local = -1;
            if (any)
                local = percentile(around, contrast.visible, 0.7,
                                   std::max(6u, grid.pixelsAround(column, row) / 100));
            if (local >= 0) local = percentile(around, std::max(contrast.visible, local * 2 / 5), 0.7, 1);
            const float here = local < 0 ? overall : std::max(static_cast<float>(local), 0.2f * overall);
            result[grid.index(column, row)] =
                std::max(0.5f * (here + usual), static_cast<float>(contrast.visible));
        }
        std::rotate(near.begin(), near.begin() + 1, near.end());
    }
    return result;
}

}  // namespace

bool inkFromDepths(Values& depths, int width, int height, int side) {
    const Contrast contrast = contrastOf(depths);
    if (contrast.strongest < 0) return false;
    const TileGrid grid(std::clamp(side, kLeastTile, kMostTile), width, height);
    const std::vector<float> thresholds = tileThresholds(depths, grid, contrast);
    std::vector<float> threshold(static_cast<std::size_t>(width));
    for (int y = 0; y < height; ++y) {
        grid.interpolate(thresholds, y, threshold);
        std::uint8_t* ink = &depths[area(width, y)];
        const float* limit = threshold.data();
        for (std::size_t x = 0; x < static_cast<std::size_t>(width); ++x)
            ink[x] =
                static_cast<std::uint8_t>(std::min(128.0f * static_cast<float>(ink[x]) / limit[x], 255.0f));
    }
    return true;
}

}  // namespace dravik::engine
