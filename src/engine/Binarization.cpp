#include "engine/Binarization.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>
#include <utility>

#include "engine/Morphology.h"

namespace dravik {
namespace {

// Larger images are averaged down to about this size: finer detail than that adds time, not characters.
constexpr std::int64_t kWorkingPixels = 4'000'000;
// An image narrower than this holds no character.
constexpr int kLeastSide = 5;
// Print fainter than this many grey levels is taken for noise.
constexpr float kFaintest = 4.0f;
constexpr int kBins = 256;

using Histogram = std::array<std::uint32_t, kBins>;

std::size_t area(int width, int height) {
    return static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
}

std::vector<float> reduced(const GreyImage& image, int scale, int width, int height) {
    std::vector<float> result(area(width, height));
    std::vector<std::uint32_t> sums(static_cast<std::size_t>(width));
    const float share = 1.0f / static_cast<float>(scale * scale);
    for (int y = 0; y < height; ++y) {
        std::fill(sums.begin(), sums.end(), 0u);
        for (int sub = 0; sub < scale; ++sub) {
            const std::uint8_t* in = image.row(y * scale + sub).data();
            for (std::uint32_t& sum : sums)
                for (int k = 0; k < scale; ++k) sum += *in++;
        }
        float* out = &result[area(width, y)];
        for (std::size_t x = 0; x < sums.size(); ++x) out[x] = static_cast<float>(sums[x]) * share;
    }
    return result;
}

// One pass of the 1-2-1 filter both ways; edges repeat.
void smoothOnce(std::vector<float>& pixels, int width, int height) {
    const std::size_t w = static_cast<std::size_t>(width);
    std::vector<float> above(w), line(w);
    for (int y = 0; y < height; ++y) {
        float* row = &pixels[area(width, y)];
        line.assign(row, row + w);
        for (std::size_t x = 1; x + 1 < w; ++x) row[x] = 0.25f * (line[x - 1] + line[x + 1]) + 0.5f * line[x];
        if (w > 1) {
            row[0] = 0.75f * line[0] + 0.25f * line[1];
            row[w - 1] = 0.75f * line[w - 1] + 0.25f * line[w - 2];
        }
    }
    above.assign(pixels.begin(), pixels.begin() + width);
    for (int y = 0; y < height; ++y) {
        float* row = &pixels[area(width, y)];
        const float* below = y + 1 < height ? row + w : row;
        line.assign(row, row + w);
        if (y + 1 < height)
            for (std::size_t x = 0; x < w; ++x) row[x] = 0.25f * (above[x] + below[x]) + 0.5f * line[x];
        else
            for (std::size_t x = 0; x < w; ++x) row[x] = 0.25f * above[x] + 0.75f * line[x];
        above.swap(line);
    }
}

// Spread of the noise from pixel to pixel, in grey levels: a curvature that straight edges do not raise, by
// its median.
float noiseOf(const std::vector<float>& pixels, int width, int height) {
    if (width < 3 || height < 3) return 0;
    const std::size_t step = std::max<std::size_t>(1, pixels.size() / 100'000);
    std::vector<float> curvature;
    const std::size_t w = static_cast<std::size_t>(width);
    for (std::size_t i = w + 1; i + w + 1 < pixels.size(); i += step) {
        const float* p = &pixels[i];
        curvature.push_back(std::abs(p[-1 - width] + p[1 - width] + p[width - 1] + p[width + 1] -
                                     2 * (p[-1] + p[1] + p[-width] + p[width]) + 4 * p[0]));
    }
    if (curvature.empty()) return 0;
    const auto middle = curvature.begin() + static_cast<std::ptrdiff_t>(curvature.size() / 2);
    std::nth_element(curvature.begin(), middle, curvature.end());
    return *middle / (0.6745f * 6.0f);
}

// The value below which `share` of the counts from bin `from` on lie; -1 when fewer than `least` are counted.
int percentile(const Histogram& counts, int from, double share, std::uint32_t least) {
    std::uint64_t total = 0;
    for (int bin = from; bin < kBins; ++bin) total += counts[static_cast<std::size_t>(bin)];
    if (total < std::max(least, 1u)) return -1;
    std::uint64_t wanted = static_cast<std::uint64_t>(share * static_cast<double>(total));
    for (int bin = from; bin < kBins; ++bin) {
        const std::uint64_t here = counts[static_cast<std::size_t>(bin)];
        if (here > wanted) return bin;
        wanted -= here;
    }
    return kBins - 1;
}

// A value per tile, spread over the pixels by interpolation between tile centres.
struct TileGrid {
    int tile, columns, rows;

    TileGrid(int size, int width, int height)
        : tile(size), columns((width + size - 1) / size), rows((height + size - 1) / size) {}

    std::size_t index(int column, int row) const {
        return area(columns, row) + static_cast<std::size_t>(column);
    }
    std::size_t count() const { return area(columns, rows); }

    std::vector<Histogram> histograms(std::span<const float> values, int width, int height) const {
        std::vector<Histogram> result(count(), Histogram{});
        for (int y = 0; y < height; ++y) {
            const float* row = &values[area(width, y)];
            for (int column = 0; column < columns; ++column) {
                Histogram& counts = result[index(column, y / tile)];
                const int end = std::min(width, (column + 1) * tile);
                for (int x = column * tile; x < end; ++x)
                    ++counts[static_cast<std::size_t>(std::clamp(row[x] + 0.5f, 0.0f, 255.0f))];
            }
        }
        return result;
    }

    // The counts of a tile and its eight neighbours.
    Histogram around(const std::vector<Histogram>& tiles, int column, int row) const {
        Histogram sum{};
        for (int r = std::max(0, row - 1); r <= std::min(rows - 1, row + 1); ++r)
            for (int c = std::max(0, column - 1); c <= std::min(columns - 1, column + 1); ++c) {
                const Histogram& one = tiles[index(c, r)];
                for (std::size_t bin = 0; bin < kBins; ++bin) sum[bin] += one[bin];
            }
        return sum;
    }

    // One row of the surface.
    void interpolate(const std::vector<float>& values, int y, int width, float* out) const {
        const auto place = [this](int pixel, int tiles) {
            const float at = (static_cast<float>(pixel) + 0.5f) / static_cast<float>(tile) - 0.5f;
            return std::clamp(at, 0.0f, static_cast<float>(tiles - 1));
        };
        const float v = place(y, rows);
        const int top = static_cast<int>(v), bottom = std::min(top + 1, rows - 1);
        const float down = v - static_cast<float>(top);
        for (int x = 0; x < width; ++x) {
            const float u = place(x, columns);
            const int left = static_cast<int>(u), right = std::min(left + 1, columns - 1);
            const float across = u - static_cast<float>(left);
            const float upper = values[index(left, top)] * (1 - across) + values[index(right, top)] * across;
            const float lower =
                values[index(left, bottom)] * (1 - across) + values[index(right, bottom)] * across;
            out[x] = upper * (1 - down) + lower * down;
        }
    }
};

}  // namespace

Binarizer::Binarizer(const GreyImage& image) {
    if (image.empty()) return;
    while (static_cast<std::int64_t>(image.width() / scale_) * (image.height() / scale_) > kWorkingPixels)
        ++scale_;
    width_ = image.width() / scale_;
    height_ = image.height() / scale_;
    if (std::min(width_, height_) < kLeastSide) return;
    smooth_ = reduced(image, scale_, width_, height_);
    const float noise = noiseOf(smooth_, width_, height_);
    const int passes = noise < 2 ? 1 : noise < 6 ? 2 : 3;
    for (int pass = 0; pass < passes; ++pass) smoothOnce(smooth_, width_, height_);
}

int Binarizer::firstTile() const noexcept {
    return std::clamp(std::min(width_, height_) / 4, 8, 64);
}

std::vector<float> Binarizer::background(int tile) const {
    const TileGrid grid(tile, width_, height_);
    const std::vector<Histogram> tiles = grid.histograms(smooth_, width_, height_);
    std::vector<float> middles(grid.count());
    for (int row = 0; row < grid.rows; ++row)
        for (int column = 0; column < grid.columns; ++column)
            middles[grid.index(column, row)] =
                static_cast<float>(percentile(grid.around(tiles, column, row), 0, 0.5, 1));
    std::vector<float> surface(smooth_.size());
    for (int y = 0; y < height_; ++y) grid.interpolate(middles, y, width_, &surface[area(width_, y)]);
    return surface;
}

// How far each pixel is on the print's side of its background. What is wider than print, such as the
// surroundings of a part, is no print however much it differs from the background nearby.
std::vector<float> Binarizer::depths(const std::vector<float>& ground, bool darkPrint, int tile) const {
    const float sign = darkPrint ? 1.0f : -1.0f;
    std::vector<float> filled = smooth_;
    if (!darkPrint)
        for (float& value : filled) value = -value;
    filled = closed(std::move(filled), width_, height_, tile | 1);
    for (std::size_t i = 0; i < filled.size(); ++i)
        filled[i] = std::min(filled[i] - sign * smooth_[i], sign * (ground[i] - smooth_[i]));
    return filled;
}

double Binarizer::darkness(int tile) const {
    if (smooth_.empty()) return 0;
    const std::vector<float> ground = background(tile);
    const auto strength = [&](bool dark) {
        double sum = 0;
        for (const float depth : depths(ground, dark, tile))
            if (depth > 0) sum += static_cast<double>(depth * depth * depth);
        return sum;
    };
    const double dark = strength(true), light = strength(false);
    return dark + light > 0 ? (dark - light) / (dark + light) : 0;
}

InkImage Binarizer::separate(bool darkPrint, int tile) const {
    InkImage result;
    if (smooth_.empty()) return result;
    const std::vector<float> depth = depths(background(tile), darkPrint, tile);

    std::array<std::uint32_t, kBins> against{};
    for (const float d : depth)
        if (d <= 0) ++against[static_cast<std::size_t>(std::min(-d + 0.5f, 255.0f))];
    const float noise = static_cast<float>(std::max(1, percentile(against, 0, 0.6827, 1)));
    const int visible = static_cast<int>(std::clamp(3.5f * noise, kFaintest, 255.0f));

    const TileGrid grid(tile, width_, height_);
    const std::vector<Histogram> tiles = grid.histograms(depth, width_, height_);
    Histogram all{};
    for (const Histogram& one : tiles)
        for (std::size_t bin = 0; bin < kBins; ++bin) all[bin] += one[bin];
    int strongest = percentile(all, visible, 0.7, 4);
    if (strongest < 0) return result;
    for (int round = 0; round < 3; ++round)
        strongest = percentile(all, std::max(visible, strongest * 2 / 5), 0.7, 1);

    // Where nothing visible is near, the threshold is that of the whole image: noise there stays noise.
    const float overall = static_cast<float>(strongest);
    std::vector<float> thresholds(grid.count());
    for (int row = 0; row < grid.rows; ++row)
        for (int column = 0; column < grid.columns; ++column) {
            const Histogram near = grid.around(tiles, column, row);
            std::uint32_t total = 0;
            for (const std::uint32_t count : near) total += count;
            int local = percentile(near, visible, 0.7, std::max(6u, total / 100));
            if (local >= 0) local = percentile(near, std::max(visible, local * 2 / 5), 0.7, 1);
            const float contrast = local < 0 ? overall : std::max(static_cast<float>(local), 0.3f * overall);
            thresholds[grid.index(column, row)] =
                std::max(0.5f * contrast, static_cast<float>(visible) * 0.8f);
        }

    result.width = width_;
    result.height = height_;
    result.scale = scale_;
    result.ink.resize(depth.size());
    std::vector<float> threshold(static_cast<std::size_t>(width_));
    for (int y = 0; y < height_; ++y) {
        grid.interpolate(thresholds, y, width_, threshold.data());
        const float* in = &depth[area(width_, y)];
        std::uint8_t* out = &result.ink[area(width_, y)];
        for (std::size_t x = 0; x < threshold.size(); ++x)
            out[x] = static_cast<std::uint8_t>(std::clamp(128.0f * in[x] / threshold[x], 0.0f, 255.0f));
    }
    return result;
}

}  // namespace dravik
