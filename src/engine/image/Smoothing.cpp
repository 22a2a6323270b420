#include "engine/image/Smoothing.h"

#include <algorithm>
#include <utility>

namespace dravik::engine {
namespace {

// (a + 2 b + c) / 4, rounded, without leaving 8 bits.
std::uint8_t mean(std::uint8_t a, std::uint8_t b, std::uint8_t c) {
    const auto half = static_cast<std::uint8_t>((a & c) + ((a ^ c) >> 1));
    return static_cast<std::uint8_t>((half + b + 1) >> 1);
}

void smoothAlong(const std::uint8_t* in, std::size_t width, std::uint8_t* out) {
    const std::size_t last = width - 1;
    out[0] = mean(in[0], in[0], in[std::min<std::size_t>(1, last)]);
    for (std::size_t x = 1; x < last; ++x) out[x] = mean(in[x - 1], in[x], in[x + 1]);
    out[last] = mean(in[last > 0 ? last - 1 : 0], in[last], in[last]);
}

// One pass, row by row.
class Pass {
  public:
    Pass(RowSource rows, int width, int height)
        : rows_(std::move(rows)),
          unread_(height - 1),
          above_(static_cast<std::size_t>(width)),
          here_(above_.size()),
          below_(above_.size()) {
        smoothAlong(rows_(), here_.size(), here_.data());
        above_ = here_;
    }

    void next(std::uint8_t* out) {
        if (unread_-- > 0)
            smoothAlong(rows_(), below_.size(), below_.data());
        else
            below_ = here_;
        const std::uint8_t *a = above_.data(), *b = here_.data(), *c = below_.data();
        for (std::size_t x = 0, width = here_.size(); x < width; ++x) out[x] = mean(a[x], b[x], c[x]);
        above_.swap(here_);
        here_.swap(below_);
    }

  private:
    RowSource rows_;
    int unread_;
    std::vector<std::uint8_t> above_, here_, below_;
};

}  // namespace

RowSource rowsOf(const std::uint8_t* pixels, int width) {
    return [row = pixels, width]() mutable { return std::exchange(row, row + width); };
}

void smooth(RowSource rows, int width, int height, std::uint8_t* pixels) {
    if (width < 1 || height < 1) return;
    Pass pass(std::move(rows), width, height);
    for (int y = 0; y < height; ++y, pixels += width) pass.next(pixels);
}

RowSource smoothed(RowSource rows, int width, int height) {
    return [pass = Pass(std::move(rows), width, height),
            out = std::vector<std::uint8_t>(static_cast<std::size_t>(width))]() mutable {
        pass.next(out.data());
        return static_cast<const std::uint8_t*>(out.data());
    };
}

BlurredRows::Round::Round(std::size_t width, int height, int radius)
    : width_(width),
      height_(height),
      radius_(std::min(radius, kMostRadius)),
      share_(static_cast<std::uint16_t>(((1 << 16) + radius_) / (2 * radius_ + 1))),
      padded_(width + 2 * static_cast<std::size_t>(radius_) + 1),
      window_(width * (2 * static_cast<std::size_t>(radius_) + 2)),
      mean_(width),
      along_(width),
      sums_(width) {}

// The sums as means, rounded.
void BlurredRows::Round::toMeans(const std::uint16_t* sums, std::uint8_t* means) const {
    const std::uint16_t share = share_;
    for (std::size_t x = 0, width = width_; x < width; ++x) {
        const std::uint32_t product = static_cast<std::uint32_t>(sums[x]) * share;
        const std::uint16_t whole = static_cast<std::uint16_t>(product >> 16),
                            rest = static_cast<std::uint16_t>(sums[x] * share);
        const std::int16_t rounded = static_cast<std::int16_t>(whole + (rest >> 15));
        means[x] = static_cast<std::uint8_t>(std::min<std::int16_t>(255, rounded));
    }
}

const std::uint8_t* BlurredRows::Round::held(int y) const {
    const int place = std::clamp(y, 0, height_ - 1) % (2 * radius_ + 2);
    return &window_[static_cast<std::size_t>(place) * width_];
}

// Means along the row.
void BlurredRows::Round::take(const std::uint8_t* row) {
    const std::size_t radius = static_cast<std::size_t>(radius_), side = 2 * radius + 1;
    std::fill_n(padded_.begin(), radius, row[0]);
    std::copy_n(row, width_, padded_.begin() + radius_);
    std::fill(padded_.begin() + radius_ + static_cast<std::ptrdiff_t>(width_), padded_.end(),
              row[width_ - 1]);
    const std::uint8_t *leaves = padded_.data(), *enters = leaves + side;
    std::uint16_t* const sums = along_.data();
    std::uint32_t sum = 0;
    for (std::size_t x = 0; x < side; ++x) sum += padded_[x];
    for (std::size_t x = 0, width = width_; x < width; ++x) {
        sums[x] = static_cast<std::uint16_t>(sum);
        sum += static_cast<std::uint32_t>(enters[x]) - leaves[x];
    }
    toMeans(sums, &window_[static_cast<std::size_t>(taken_ % (2 * radius_ + 2)) * width_]);
    ++taken_;
}

const std::uint8_t* BlurredRows::Round::next(const RowSource& rows) {
    while (taken_ < height_ && taken_ <= given_ + radius_) take(rows());
    std::uint16_t* const sums = sums_.data();
    const std::size_t width = width_;
    if (given_ == 0) {
        for (int y = -radius_; y <= radius_; ++y) {
            const std::uint8_t* row = held(y);
            for (std::size_t x = 0; x < width; ++x) sums[x] = static_cast<std::uint16_t>(sums[x] + row[x]);
        }
    } else {
        const std::uint8_t *enters = held(given_ + radius_), *leaves = held(given_ - radius_ - 1);
        for (std::size_t x = 0; x < width; ++x)
            sums[x] = static_cast<std::uint16_t>(sums[x] + enters[x] - leaves[x]);
    }
    toMeans(sums, mean_.data());
    ++given_;
    return mean_.data();
}

BlurredRows::BlurredRows(RowSource rows, int width, int height, int radius)
    : rows_(std::move(rows)),
      first_(static_cast<std::size_t>(width), height, radius),
      second_(static_cast<std::size_t>(width), height, radius) {}

const std::uint8_t* BlurredRows::next() {
    return second_.next([this] { return first_.next(rows_); });
}

}  // namespace dravik::engine
