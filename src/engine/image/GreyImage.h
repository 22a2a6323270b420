// A grey image: 8 bits a pixel, 0 black to 255 white, rows from top to bottom without gaps.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace dravik::engine {

// The largest image that the tool takes.
constexpr std::int64_t kMostPixels = 64'000'000;

class GreyImage {
  public:
    GreyImage() = default;
    // All pixels `value`; raises Invalid procedure call (5) for negative sizes or more than kMostPixels.
    GreyImage(int width, int height, std::uint8_t value = 0);
    // A copy of pixels whose rows are `stride` bytes apart, the first one at the top; raises as above.
    GreyImage(const std::uint8_t* pixels, int width, int height, std::ptrdiff_t stride);

    int width() const noexcept { return width_; }
    int height() const noexcept { return height_; }
    bool empty() const noexcept { return pixels_.empty(); }

    std::uint8_t operator()(int x, int y) const noexcept { return pixels_[index(x, y)]; }
    std::uint8_t& operator()(int x, int y) noexcept { return pixels_[index(x, y)]; }
    std::span<const std::uint8_t> row(int y) const noexcept {
        return {&pixels_[index(0, y)], std::size_t(width_)};
    }
    // Between the pixels' middles, which are at halves; outside as at the nearest border. The image is not
    // empty.
    float levelAt(float x, float y) const noexcept;
    std::span<std::uint8_t> row(int y) noexcept { return {&pixels_[index(0, y)], std::size_t(width_)}; }

  private:
    std::size_t index(int x, int y) const noexcept {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) + static_cast<std::size_t>(x);
    }

    int width_ = 0;
    int height_ = 0;
    std::vector<std::uint8_t> pixels_;
};

}  // namespace dravik::engine
