// Separates the print from its background: brings the image to a size that suits the print, smooths noise,
// takes what is narrower than print for print and sets a local threshold from the contrast found nearby.
// Works the same for dark print on light and light print on dark.
#pragma once

#include <cstdint>
#include <vector>

#include "engine/image/GreyImage.h"
#include "engine/image/SmoothPicture.h"

namespace dravik::engine {

// A part of an image, in image pixels; right and bottom are exclusive.
struct Region {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    int width() const noexcept { return right - left; }
    int height() const noexcept { return bottom - top; }
    bool operator==(const Region&) const = default;
};

// How much of each pixel is print: 0 none, 128 the threshold, 255 full. One ink pixel covers scale x scale
// image pixels; the first one's corner is that of the region that was looked at.
struct InkImage {
    int width = 0;
    int height = 0;
    float scale = 1;
    int left = 0;  // image pixels
    int top = 0;
    std::vector<std::uint8_t> ink;

    bool empty() const noexcept { return ink.empty(); }
    std::uint8_t at(int x, int y) const noexcept {
        return ink[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                   static_cast<std::size_t>(x)];
    }
    std::int64_t pixels() const noexcept;  // of ink
    // Places where ink begins after paper, rows taken one after the other.
    std::int64_t edges() const noexcept;
};

// A region of a grey image made ready for separation.
class Binarizer {
  public:
    // `scale` is the image pixels to a working pixel: 1 or a larger whole number to average so many, 0.5 to
    // make two of one. The image must outlive it.
    Binarizer(const GreyImage& image, const Region& region, float scale);

    // The print that is darker or lighter than its background. `side` is wider than any stroke, in working
    // pixels, and about three quarters of a character's height. `blur` further smooths so that marks closer
    // than about twice that many pixels run together. The pixels of an earlier look may give their room.
    InkImage separate(bool darkPrint, int side, float blur = 0, std::vector<std::uint8_t>&& room = {}) const;

    // The grey level at a working pixel, after smoothing.
    int level(int x, int y) const { return smooth_.at(x, y); }

    // Whether the image is rather of dark print: what differs most from the usual grey is darker.
    bool leansDark() const;

    // What `blur` comes to, in whole pixels.
    static int radius(float blur) noexcept;

    const Region& region() const noexcept { return region_; }
    float scale() const noexcept { return scale_; }
    int width() const noexcept { return width_; }
    int height() const noexcept { return height_; }
    bool empty() const noexcept { return smooth_.empty(); }
    // Standard deviation of the noise before smoothing, in grey levels.
    float noise() const noexcept { return noise_; }

  private:
    void findDepths(bool darkPrint, int side, float blur, std::vector<std::uint8_t>& depths) const;

    int width_ = 0;
    int height_ = 0;
    float scale_ = 1;
    Region region_;
    float noise_ = 0;
    SmoothPicture smooth_;
};

}  // namespace dravik::engine
