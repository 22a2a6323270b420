// Separates the print from its background: smooths noise, follows uneven light with a background surface, and
// sets a local threshold from the contrast found nearby. Works the same for dark print on light and light
// print on dark.
#pragma once

#include <cstdint>
#include <vector>

#include "engine/GreyImage.h"

namespace dravik {

// How much of each pixel is print: 0 none, 128 the threshold, 255 full. One ink pixel covers scale x scale
// image pixels.
struct InkImage {
    int width = 0;
    int height = 0;
    int scale = 1;
    std::vector<std::uint8_t> ink;

    bool empty() const noexcept { return ink.empty(); }
    std::uint8_t at(int x, int y) const noexcept {
        return ink[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                   static_cast<std::size_t>(x)];
    }
};

// A grey image made ready for separation: reduced to a size that is quick to work on, and smoothed.
class Binarizer {
  public:
    explicit Binarizer(const GreyImage& image);

    // The print that is darker or lighter than its background. `tile` is the grain, in reduced pixels, with
    // which the background and contrast are followed; a window of three tiles should hold about two
    // characters' height.
    InkImage separate(bool darkPrint, int tile) const;

    // How strongly the image speaks for dark print (positive) or light print (negative), -1 to 1.
    double darkness(int tile) const;

    // A grain to start from when nothing is known of the print's size.
    int firstTile() const noexcept;

  private:
    std::vector<float> background(int tile) const;
    std::vector<float> depths(const std::vector<float>& ground, bool darkPrint, int tile) const;

    int width_ = 0;
    int height_ = 0;
    int scale_ = 1;
    std::vector<float> smooth_;
};

}  // namespace dravik
