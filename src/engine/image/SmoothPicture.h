// A grey picture after smoothing. It is held whole or, when it would take much room beside the image that it
// is made from, made again whenever its rows are wanted.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

#include "engine/image/Smoothing.h"

namespace dravik::engine {

class SmoothPicture {
  public:
    SmoothPicture() = default;
    // Smooths the pixels, rows of `width` without gaps, in `passes` passes of the 1-2-1 filter.
    SmoothPicture(std::vector<std::uint8_t> pixels, int width, int height, int passes);
    // Smooths rows when they are wanted; `rowsFrom` gives those from one on.
    using RowsFrom = std::function<RowSource(int first)>;
    SmoothPicture(RowsFrom rowsFrom, int width, int height, int passes);

    bool empty() const noexcept { return height_ == 0; }
    std::size_t size() const noexcept {
        return static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_);
    }
    // Not to be called by several threads at once.
    std::uint8_t at(int x, int y) const {
        const std::size_t column = static_cast<std::size_t>(x);
        if (rowsFrom_) return recentRow(y)[column];
        return held_[static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) + column];
    }
    // All rows, good as long as the picture.
    RowSource rows() const;

  private:
    // Rows are computed kBandRows at a time; the last kBands such bands are kept.
    static constexpr int kBandRows = 16, kBands = 8;

    RowSource rows(int first, int end) const;
    const std::uint8_t* recentRow(int y) const {
        const int band = y / kBandRows, place = band % kBands;
        if (bands_[static_cast<std::size_t>(place)] != band) makeBand(band);
        return &recent_[static_cast<std::size_t>(place * kBandRows + y % kBandRows) *
                        static_cast<std::size_t>(width_)];
    }
    void makeBand(int band) const;

    int width_ = 0, height_ = 0, passes_ = 0;
    std::vector<std::uint8_t> held_;
    RowsFrom rowsFrom_;
    mutable std::vector<int> bands_;  // which are kept
    mutable std::vector<std::uint8_t> recent_;
};

}  // namespace dravik::engine
