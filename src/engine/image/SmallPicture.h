// A small grey picture of a character for people to look at, packed without further loss, so that a font can
// keep one of each sample: at most 32 pixels wide and high, in 16 levels of grey, some 100 bytes.
#pragma once

#include <cstdint>
#include <vector>

#include "engine/image/Binarization.h"
#include "engine/image/GreyImage.h"

namespace dravik::engine {

constexpr int kSmallPictureSide = 32;
// No packed picture is longer.
constexpr std::size_t kLongestPackedPicture = 2048;

struct SmallPicture {
    std::uint8_t width = 0;  // 1 to 32, both 0 for none
    std::uint8_t height = 0;
    std::vector<std::uint8_t> packed;

    bool empty() const noexcept { return width == 0; }
    friend bool operator==(const SmallPicture&, const SmallPicture&) = default;
};

// What the image shows in a box, with a margin around it as far as the image goes; scaled down when it is
// larger. Empty when the box lies outside.
SmallPicture smallPicture(const GreyImage& image, const Region& box);

// Any bytes give a picture, those of smallPicture() the picture that was packed. Empty for none.
GreyImage unpacked(const SmallPicture& picture);

}  // namespace dravik::engine
