#include "engine/Binarization.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>
#include <utility>

#include "engine/Morphology.h"

namespace dravik {
namespace {

// An image narrower than this holds no character.
constexpr int kLeastSide = 5;
// Print fainter than this many grey levels is taken for noise.
constexpr int kFaintest = 4;
// Finer tiles than this hold too little to tell the contrast from.
constexpr int kLeastTile = 16;
constexpr int kBins = 256;

using Values = std::vector<std::uint8_t>;
using Histogram = std::array<std::uint32_t, kBins>;

std::size_t area(int width, int height) {
    return static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
}

// Means of `scale` x `scale` pixels.
Values reduced(const GreyImage& image, const Region& region, int scale, int width, int height) {
    Values result(area(width, height));
    if (scale == 1) {
        for (int y = 0; y < height; ++y)
            std::copy_n(image.row(region.top + y).data() + region.left, width, &result[area(width, y)]);
        return result;
    }
    const std::size_t across = static_cast<std::size_t>(width) * static_cast<std::size_t>(scale);
    std::vector<std::uint16_t> sums(across);
    // A product with this and a shift divide by scale x scale, rounded.
    const std::uint32_t pixels = static_cast<std::uint32_t>(scale * scale);
    const std::uint32_t share = (1u << 16) / pixels;
    for (int y = 0; y < height; ++y) {
        std::fill(sums.begin(), sums.end(), std::uint16_t{0});
        for (int sub = 0; sub < scale; ++sub) {
            const std::uint8_t* in = image.row(region.top + y * scale + sub).data() + region.left;
            for (std::size_t x = 0; x < across; ++x) sums[x] = static_cast<std::uint16_t>(sums[x] + in[x]);
        }
        std::uint8_t* out = &result[area(width, y)];
        const std::uint16_t* in = sums.data();
        const auto put = [&](int x, std::uint32_t sum) {
            out[x] = static_cast<std::uint8_t>(std::min(255u, (sum * share + (1u << 15)) >> 16));
        };
        if (scale == 2) {
            for (int x = 0; x < width; ++x) put(x, static_cast<std::uint32_t>(in[2 * x] + in[2 * x + 1]));
        } else {
            for (int x = 0; x < width; ++x) {
                std::uint32_t sum = 0;
                for (int k = 0; k < scale; ++k) sum += *in++;
                put(x, sum);
            }
        }
    }
    return result;
}

// Twice as many pixels both ways, between which the values go over evenly.
Values doubled(const GreyImage& image, const Region& region) {
    const int width = 2 * region.width(), height = 2 * region.height();
    Values result(area(width, height));
    const auto pixel = [&](int x, int y) {
        return static_cast<int>(image(std::clamp(x, region.left, region.right - 1),
                                      std::clamp(y, region.top, region.bottom - 1)));
    };
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const int px = region.left + x / 2, py = region.top + y / 2;
            const int ox = px + (x & 1 ? 1 : -1), oy = py + (y & 1 ? 1 : -1);
            const int sum = 9 * pixel(px, py) + 3 * (pixel(ox, py) + pixel(px, oy)) + pixel(ox, oy);
            result[area(width, y) + static_cast<std::size_t>(x)] = static_cast<std::uint8_t>((sum + 8) / 16);
        }
    return result;
}

// One pass of the 1-2-1 filter both ways; edges repeat.
void smoothOnce(Values& pixels, int width, int height) {
    const std::size_t w = static_cast<std::size_t>(width);
    const auto mean = [](std::uint8_t a, std::uint8_t b, std::uint8_t c) {
        return static_cast<std::uint8_t>((a + 2 * b + c + 2) >> 2);
    };
    Values line(w + 2), above(w);
    for (int y = 0; y < height; ++y) {
        std::uint8_t* row = &pixels[area(width, y)];
        std::copy_n(row, w, line.begin() + 1);
        line.front() = row[0];
        line.back() = row[w - 1];
        const std::uint8_t* in = line.data();
        for (std::size_t x = 0; x < w; ++x) row[x] = mean(in[x], in[x + 1], in[x + 2]);
    }
    above.assign(pixels.begin(), pixels.begin() + width);
    line.resize(w);
    for (int y = 0; y < height; ++y) {
        std::uint8_t* row = &pixels[area(width, y)];
        const std::uint8_t* below = y + 1 < height ? row + w : row;
        std::copy_n(row, w, line.begin());
        const std::uint8_t *up = above.data(), *here = line.data();
        for (std::size_t x = 0; x < w; ++x) row[x] = mean(up[x], here[x], below == row ? here[x] : below[x]);
        above.swap(line);
    }
}

// Means over a window of 2 x radius + 1 both ways, done twice: nearly a normal curve of that radius.
void smoothWide(Values& pixels, int width, int height, int radius) {
    const std::uint32_t side = static_cast<std::uint32_t>(2 * radius + 1);
    const std::uint32_t share = ((1u << 16) + side / 2) / side;
    std::vector<std::uint32_t> sums(static_cast<std::size_t>(width));
    Values line(static_cast<std::size_t>(std::max(width, height)));
    for (int round = 0; round < 2; ++round) {
        for (int y = 0; y < height; ++y) {
            std::uint8_t* row = &pixels[area(width, y)];
            std::copy_n(row, width, line.begin());
            const auto at = [&](int x) {
                return static_cast<std::uint32_t>(
                    line[static_cast<std::size_t>(std::clamp(x, 0, width - 1))]);
            };
            std::uint32_t sum = 0;
            for (int x = -radius; x <= radius; ++x) sum += at(x);
            for (int x = 0; x < width; ++x) {
                row[x] = static_cast<std::uint8_t>(std::min(255u, (sum * share + (1u << 15)) >> 16));
                sum += at(x + radius + 1) - at(x - radius);
            }
        }
        const Values before = pixels;
        const auto rowAt = [&](int y) { return &before[area(width, std::clamp(y, 0, height - 1))]; };
        std::fill(sums.begin(), sums.end(), 0u);
        for (int y = -radius; y <= radius; ++y) {
            const std::uint8_t* in = rowAt(y);
            for (std::size_t x = 0; x < sums.size(); ++x) sums[x] += in[x];
        }
        for (int y = 0; y < height; ++y) {
            std::uint8_t* out = &pixels[area(width, y)];
            const std::uint8_t *enters = rowAt(y + radius + 1), *leaves = rowAt(y - radius);
            for (std::size_t x = 0; x < sums.size(); ++x) {
                out[x] = static_cast<std::uint8_t>(std::min(255u, (sums[x] * share + (1u << 15)) >> 16));
                sums[x] += static_cast<std::uint32_t>(enters[x]) - leaves[x];
            }
        }
    }
}

// Spread of the noise from pixel to pixel, in grey levels: a curvature that straight edges do not raise, by
// its median.
float noiseOf(const Values& pixels, int width, int height) {
    if (width < 3 || height < 3) return 0;
    const std::size_t step = std::max<std::size_t>(1, pixels.size() / 20'000);
    std::vector<int> curvature;
    const std::size_t w = static_cast<std::size_t>(width);
    for (std::size_t i = w + 1; i + w + 1 < pixels.size(); i += step) {
        const std::uint8_t* p = &pixels[i];
        curvature.push_back(std::abs(p[-1 - width] + p[1 - width] + p[width - 1] + p[width + 1] -
                                     2 * (p[-1] + p[1] + p[-width] + p[width]) + 4 * p[0]));
    }
    if (curvature.empty()) return 0;
    const auto middle = curvature.begin() + static_cast<std::ptrdiff_t>(curvature.size() / 2);
    std::nth_element(curvature.begin(), middle, curvature.end());
    return static_cast<float>(*middle) / (0.6745f * 6.0f);
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

    // Of one row of tiles.
    std::vector<Histogram> histograms(const Values& values, int width, int height, int row) const {
        std::vector<Histogram> result(static_cast<std::size_t>(columns), Histogram{});
        for (int y = row * tile; y < std::min(height, (row + 1) * tile); ++y) {
            const std::uint8_t* in = &values[area(width, y)];
            for (int column = 0; column < columns; ++column) {
                Histogram& counts = result[static_cast<std::size_t>(column)];
                const int end = std::min(width, (column + 1) * tile);
                for (int x = column * tile; x < end; ++x) ++counts[in[x]];
            }
        }
        return result;
    }

    // One row of the surface.
    void interpolate(const std::vector<float>& values, int y, std::span<float> out) const {
        const auto place = [this](int pixel, int tiles) {
            const float at = (static_cast<float>(pixel) + 0.5f) / static_cast<float>(tile) - 0.5f;
            return std::clamp(at, 0.0f, static_cast<float>(tiles - 1));
        };
        const float v = place(y, rows);
        const int top = static_cast<int>(v), bottom = std::min(top + 1, rows - 1);
        const float down = v - static_cast<float>(top);
        const auto edge = [&](int column) {
            return values[index(column, top)] * (1 - down) + values[index(column, bottom)] * down;
        };
        const int width = static_cast<int>(out.size());
        // From tile centre to tile centre the value changes evenly.
        for (int x = 0; x < width;) {
            const float u = place(x, columns);
            const int left = static_cast<int>(u), right = std::min(left + 1, columns - 1);
            const float from = edge(left), step = edge(right) - from;
            int end = x + 1;
            while (end < width && static_cast<int>(place(end, columns)) == left) ++end;
            const float shift = 0.5f / static_cast<float>(tile) - 0.5f - static_cast<float>(left);
            for (; x < end; ++x)
                out[static_cast<std::size_t>(x)] =
                    from +
                    step * std::clamp(static_cast<float>(x) / static_cast<float>(tile) + shift, 0.0f, 1.0f);
        }
    }
};

}  // namespace

Binarizer::Binarizer(const GreyImage& image, const Region& region, float scale)
    : scale_(scale), region_(region) {
    if (image.empty()) return;
    width_ = static_cast<int>(static_cast<float>(region.width()) / scale);
    height_ = static_cast<int>(static_cast<float>(region.height()) / scale);
    if (std::min(width_, height_) < kLeastSide) return;
    smooth_ =
        scale < 1 ? doubled(image, region) : reduced(image, region, static_cast<int>(scale), width_, height_);
    noise_ = noiseOf(smooth_, width_, height_);
    const int passes = noise_ < 2 ? 1 : noise_ < 6 ? 2 : 3;
    for (int pass = 0; pass < passes; ++pass) smoothOnce(smooth_, width_, height_);
}

// How far each pixel is on the print's side of its background. What is wider than print, such as the
// surroundings of a part, is no print however much it differs from the background nearby.
Values Binarizer::depths(bool darkPrint, int side, float blur) const {
    // Both are copies of the image in size, so the second is only made where it differs from smooth_.
    Values blurred;
    if (blur >= 0.75f) {
        blurred = smooth_;
        smoothWide(blurred, width_, height_, static_cast<int>(std::lround(blur)));
    }
    const Values& print = blurred.empty() ? smooth_ : blurred;
    Values ground = print;
    if (!darkPrint)
        for (std::uint8_t& value : ground) value = static_cast<std::uint8_t>(255 - value);
    // The extremes of noise would lift the background above its mean.
    smoothOnce(ground, width_, height_);
    if (noise_ > 3) smoothOnce(ground, width_, height_);
    ground = closed(std::move(ground), width_, height_, side | 1);
    for (std::size_t i = 0; i < ground.size(); ++i) {
        const std::uint8_t value = darkPrint ? print[i] : static_cast<std::uint8_t>(255 - print[i]);
        ground[i] = ground[i] > value ? static_cast<std::uint8_t>(ground[i] - value) : std::uint8_t{0};
    }
    return ground;
}

bool Binarizer::leansDark() const {
    Histogram counts{};
    const std::size_t step = std::max<std::size_t>(1, smooth_.size() / 50'000);
    for (std::size_t i = 0; i < smooth_.size(); i += step) ++counts[smooth_[i]];
    const int usual = percentile(counts, 0, 0.5, 1);
    double balance = 0;
    for (int bin = 0; bin < kBins; ++bin) {
        const double away = usual - bin;
        balance += away * away * away * counts[static_cast<std::size_t>(bin)];
    }
    return balance >= 0;
}

InkImage Binarizer::separate(bool darkPrint, int side, float blur) const {
    InkImage result;
    if (smooth_.empty()) return result;
    Values depth = depths(darkPrint, side, blur);

    const TileGrid grid(std::max(side, kLeastTile), width_, height_);
    Histogram all{};
    for (const std::uint8_t value : depth) ++all[value];
    // Most of the image is background, whose depth is that of the noise.
    const int usual = percentile(all, 0, 0.5, 1), lower = percentile(all, 0, 0.16, 1);
    const int visible = std::min(255, usual + std::max(kFaintest, 5 * (usual - lower) / 2));
    int strongest = percentile(all, visible, 0.7, 4);
    if (strongest < 0) return result;
    for (int round = 0; round < 3; ++round)
        strongest = percentile(all, std::max(visible, strongest * 2 / 5), 0.7, 1);

    // Where nothing visible is near, the threshold is that of the whole image: noise there stays noise.
    const float overall = static_cast<float>(strongest);
    std::vector<float> thresholds(grid.count());
    // Three rows of tiles at a time: the counts of all would take four times the room of the pixels.
    std::array<std::vector<Histogram>, 3> near;
    near[1] = grid.histograms(depth, width_, height_, 0);
    for (int row = 0; row < grid.rows; ++row) {
        near[2].clear();
        if (row + 1 < grid.rows) near[2] = grid.histograms(depth, width_, height_, row + 1);
        for (int column = 0; column < grid.columns; ++column) {
            Histogram around{};
            for (const std::vector<Histogram>& tiles : near)
                for (int c = std::max(0, column - 1);
                     !tiles.empty() && c <= std::min(grid.columns - 1, column + 1); ++c)
                    for (std::size_t bin = 0; bin < kBins; ++bin)
                        around[bin] += tiles[static_cast<std::size_t>(c)][bin];
            std::uint32_t total = 0;
            for (const std::uint32_t count : around) total += count;
            int local = percentile(around, visible, 0.7, std::max(6u, total / 100));
            if (local >= 0) local = percentile(around, std::max(visible, local * 2 / 5), 0.7, 1);
            const float contrast = local < 0 ? overall : std::max(static_cast<float>(local), 0.2f * overall);
            thresholds[grid.index(column, row)] =
                std::max(0.5f * (contrast + static_cast<float>(usual)), static_cast<float>(visible));
        }
        std::rotate(near.begin(), near.begin() + 1, near.end());
    }

    result.width = width_;
    result.height = height_;
    result.scale = scale_;
    result.left = region_.left;
    result.top = region_.top;
    std::vector<float> threshold(static_cast<std::size_t>(width_));
    for (int y = 0; y < height_; ++y) {
        grid.interpolate(thresholds, y, threshold);
        std::uint8_t* ink = &depth[area(width_, y)];
        for (std::size_t x = 0; x < threshold.size(); ++x)
            ink[x] = static_cast<std::uint8_t>(
                std::min(128.0f * static_cast<float>(ink[x]) / threshold[x], 255.0f));
    }
    result.ink = std::move(depth);
    return result;
}

}  // namespace dravik
