#include "engine/image/SmoothPicture.h"

#include <algorithm>
#include <utility>

namespace dravik::engine {

SmoothPicture::SmoothPicture(std::vector<std::uint8_t> pixels, int width, int height, int passes)
    : width_(width), height_(height), passes_(passes), held_(std::move(pixels)) {
    for (int pass = 0; pass < passes; ++pass)
        smooth(rowsOf(held_.data(), width), width, height, held_.data());
}

SmoothPicture::SmoothPicture(RowsFrom rowsFrom, int width, int height, int passes)
    : width_(width), height_(height), passes_(passes), rowsFrom_(std::move(rowsFrom)), bands_(kBands, -1) {}

RowSource SmoothPicture::rows() const {
    return rowsFrom_ ? rows(0, height_) : rowsOf(held_.data(), width_);
}

// What is beyond the rows wanted by no more than a row for each pass has a part in them.
RowSource SmoothPicture::rows(int first, int end) const {
    const int from = std::max(0, first - passes_), to = std::min(height_, end + passes_);
    RowSource result = rowsFrom_(from);
    for (int pass = 0; pass < passes_; ++pass) result = smoothed(std::move(result), width_, to - from);
    for (int y = from; y < first; ++y) result();
    return result;
}

void SmoothPicture::makeBand(int band) const {
    const int first = band * kBandRows, end = std::min(height_, first + kBandRows);
    if (recent_.empty())
        recent_.resize(static_cast<std::size_t>(kBandRows * kBands) * static_cast<std::size_t>(width_));
    const std::size_t place = static_cast<std::size_t>(band % kBands);
    std::uint8_t* out = &recent_[place * kBandRows * static_cast<std::size_t>(width_)];
    const RowSource row = rows(first, end);
    for (int y = first; y < end; ++y, out += width_) std::copy_n(row(), width_, out);
    bands_[place] = band;
}

}  // namespace dravik::engine
