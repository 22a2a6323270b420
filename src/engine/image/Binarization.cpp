#include "engine/image/Binarization.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <span>
#include <utility>

#include "engine/image/GreyHistogram.h"
#include "engine/image/InkThreshold.h"
#include "engine/image/Morphology.h"
#include "engine/image/Smoothing.h"

namespace dravik::engine {
namespace {

// An image narrower than this holds no character.
constexpr int kLeastSide = 5;

// A picture of more pixels than this is not held when it can be made from the image again row by row.
constexpr std::size_t kMostHeld = 900'000;

using Values = std::vector<std::uint8_t>;

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
    if (scale == 2) {
        for (int y = 0; y < height; ++y) {
            const std::uint8_t *a = image.row(region.top + 2 * y).data() + region.left,
                               *b = image.row(region.top + 2 * y + 1).data() + region.left;
            std::uint8_t* out = &result[area(width, y)];
            for (int x = 0; x < width; ++x)
                out[x] =
                    static_cast<std::uint8_t>((a[2 * x] + a[2 * x + 1] + b[2 * x] + b[2 * x + 1] + 2) >> 2);
        }
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
        for (int x = 0; x < width; ++x) {
            std::uint32_t sum = 0;
            for (int k = 0; k < scale; ++k) sum += *in++;
            out[x] = static_cast<std::uint8_t>(std::min(255u, (sum * share + (1u << 15)) >> 16));
        }
    }
    return result;
}

// The rows from `first` on of twice as many pixels both ways, between which the values go over evenly.
RowSource doubledRows(const GreyImage& image, const Region& region, int first) {
    const std::size_t width = static_cast<std::size_t>(region.width());
    // Three parts of a row and one of that above or below it, then the same along the row, of 16.
    return [&image, region, width, y = first, sums = std::vector<std::uint16_t>(width + 2),
            row = Values(2 * width)]() mutable {
        const int near = region.top + y / 2;
        const int far = std::clamp(near + (y % 2 ? 1 : -1), region.top, region.bottom - 1);
        const std::uint8_t *a = image.row(near).data() + region.left,
                           *b = image.row(far).data() + region.left;
        for (std::size_t x = 0; x < width; ++x) sums[x + 1] = static_cast<std::uint16_t>(3 * a[x] + b[x]);
        sums.front() = sums[1];
        sums.back() = sums[width];
        for (std::size_t x = 0; x < width; ++x) {
            row[2 * x] = static_cast<std::uint8_t>((3 * sums[x + 1] + sums[x] + 8) / 16);
            row[2 * x + 1] = static_cast<std::uint8_t>((3 * sums[x + 1] + sums[x + 2] + 8) / 16);
        }
        ++y;
        return static_cast<const std::uint8_t*>(row.data());
    };
}

Values doubled(const GreyImage& image, const Region& region) {
    const int width = 2 * region.width(), height = 2 * region.height();
    Values result(area(width, height));
    const RowSource rows = doubledRows(image, region, 0);
    for (int y = 0; y < height; ++y) std::copy_n(rows(), width, &result[area(width, y)]);
    return result;
}

// Spread of the noise from pixel to pixel, in grey levels: a curvature that straight edges do not raise, by
// its median.
float noiseOf(std::span<const std::uint8_t> pixels, int width, int height) {
    if (width < 3 || height < 3) return 0;
    const std::size_t step = std::max<std::size_t>(1, pixels.size() / 20'000);
    // How often each curvature occurs, of which the greatest is 16 times white.
    std::vector<std::uint32_t> counts(16 * 255 + 1);
    std::size_t all = 0;
    const std::size_t w = static_cast<std::size_t>(width);
    for (std::size_t i = w + 1; i + w + 1 < pixels.size(); i += step) {
        const std::uint8_t* p = &pixels[i];
        const int curvature = std::abs(p[-1 - width] + p[1 - width] + p[width - 1] + p[width + 1] -
                                       2 * (p[-1] + p[1] + p[-width] + p[width]) + 4 * p[0]);
        ++counts[static_cast<std::size_t>(curvature)];
        ++all;
    }
    int median = 0;
    for (std::size_t below = counts[0]; below <= all / 2; below += counts[static_cast<std::size_t>(median)])
        ++median;
    return static_cast<float>(median) / (0.6745f * 6.0f);
}

// How many of `count` places `is` true of, in portions whose sum fits the narrowest type.
template <typename Is>
std::int64_t countOf(std::size_t count, Is is) {
    constexpr std::size_t kPortion = 240;
    std::int64_t sum = 0;
    for (std::size_t i = 0; i < count;) {
        std::uint8_t few = 0;
        if (count - i >= kPortion)
            for (std::size_t k = 0; k < kPortion; ++k) few = static_cast<std::uint8_t>(few + is(i + k));
        else
            for (std::size_t k = i; k < count; ++k) few = static_cast<std::uint8_t>(few + is(k));
        sum += few;
        i += std::min(kPortion, count - i);
    }
    return sum;
}

}  // namespace

std::int64_t InkImage::pixels() const noexcept {
    const std::uint8_t* values = ink.data();
    return countOf(ink.size(), [values](std::size_t i) { return static_cast<std::uint8_t>(values[i] >> 7); });
}

std::int64_t InkImage::edges() const noexcept {
    if (ink.empty()) return 0;
    const std::uint8_t *before = ink.data(), *values = before + 1;
    return countOf(ink.size() - 1, [before, values](std::size_t i) {
        return static_cast<std::uint8_t>((values[i] & ~before[i]) >> 7 & 1);
    });
}

int Binarizer::radius(float blur) noexcept {
    return blur >= 0.75f ? static_cast<int>(std::lround(blur)) : 0;
}

Binarizer::Binarizer(const GreyImage& image, const Region& region, float scale)
    : scale_(scale), region_(region) {
    if (image.empty()) return;
    width_ = static_cast<int>(static_cast<float>(region.width()) / scale);
    height_ = static_cast<int>(static_cast<float>(region.height()) / scale);
    if (std::min(width_, height_) < kLeastSide) return;
    const auto passes = [this] { return noise_ < 2 ? 1 : noise_ < 6 ? 2 : 3; };
    const bool large = area(width_, height_) > kMostHeld;
    if (large && scale == 1 && region == Region{0, 0, image.width(), image.height()}) {
        noise_ = noiseOf({image.row(0).data(), area(width_, height_)}, width_, height_);
        const auto rows = [&image](int first) { return rowsOf(image.row(first).data(), image.width()); };
        smooth_ = SmoothPicture(rows, width_, height_, passes());
        return;
    }
    Values pixels =
        scale < 1 ? doubled(image, region) : reduced(image, region, static_cast<int>(scale), width_, height_);
    noise_ = noiseOf(pixels, width_, height_);
    if (large && scale < 1) {
        const auto rows = [&image, region](int first) { return doubledRows(image, region, first); };
        smooth_ = SmoothPicture(rows, width_, height_, passes());
    } else {
        smooth_ = SmoothPicture(std::move(pixels), width_, height_, passes());
    }
}

// How far each pixel is on the print's side of its background. What is wider than print, such as the
// surroundings of a part, is no print however much it differs from the background nearby.
void Binarizer::findDepths(bool darkPrint, int side, float blur, Values& ground) const {
    const int wide = radius(blur);
    // What is looked at, from the top row to the bottom one, turned so that print is darker. The blurred rows
    // are made twice, which takes less room than to keep them.
    Values turned(darkPrint ? 0 : static_cast<std::size_t>(width_));
    const auto rows = [&] {
        RowSource rows = smooth_.rows();
        if (wide > 0)
            rows = [blurred = BlurredRows(std::move(rows), width_, height_, wide)]() mutable {
                return blurred.next();
            };
        return [&, rows]() {
            const std::uint8_t* row = rows();
            if (darkPrint) return row;
            std::uint8_t* const to = turned.data();
            for (std::size_t x = 0, width = turned.size(); x < width; ++x)
                to[x] = static_cast<std::uint8_t>(255 - row[x]);
            return static_cast<const std::uint8_t*>(to);
        };
    };
    ground.resize(smooth_.size());
    // The extremes of noise would lift the background above its mean.
    smooth(rows(), width_, height_, ground.data());
    if (noise_ > 3) smooth(rowsOf(ground.data(), width_), width_, height_, ground.data());
    closeNarrow(ground, width_, height_, side | 1);
    const RowSource print = rows();
    for (int y = 0; y < height_; ++y) {
        const std::uint8_t* in = print();
        std::uint8_t* depth = &ground[area(width_, y)];
        for (std::size_t x = 0, width = static_cast<std::size_t>(width_); x < width; ++x)
            depth[x] = static_cast<std::uint8_t>(std::max(depth[x], in[x]) - in[x]);
    }
}

bool Binarizer::leansDark() const {
    HistogramCounter counter;
    const std::size_t step = std::max<std::size_t>(1, smooth_.size() / 50'000);
    const std::size_t width = static_cast<std::size_t>(width_);
    const RowSource rows = smooth_.rows();
    std::size_t next = 0;  // from the start of the row
    for (int y = 0; y < height_; ++y, next -= width) {
        const std::uint8_t* row = rows();
        if (next >= width) continue;
        counter.add(row + next, width - next, step);
        next += (width - next + step - 1) / step * step;
    }
    const Histogram counts = counter.counts();
    const int usual = percentile(counts, 0, 0.5, 1);
    double balance = 0;
    for (int bin = 0; bin < kBins; ++bin) {
        const double away = usual - bin;
        balance += away * away * away * counts[static_cast<std::size_t>(bin)];
    }
    return balance >= 0;
}

InkImage Binarizer::separate(bool darkPrint, int side, float blur, Values&& room) const {
    InkImage result;
    if (smooth_.empty()) return result;
    Values depth = std::move(room);
    findDepths(darkPrint, side, blur, depth);
    if (!inkFromDepths(depth, width_, height_, side)) return result;
    result.width = width_;
    result.height = height_;
    result.scale = scale_;
    result.left = region_.left;
    result.top = region_.top;
    result.ink = std::move(depth);
    return result;
}

}  // namespace dravik::engine
