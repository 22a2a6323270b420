// The pixels of a camera as a grey image.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "engine/image/GreyImage.h"

namespace dravik::camera {

// What a camera sends, by the names of the GenICam standard features naming convention. The best first: where
// the camera can send several, the first that it knows is chosen.
inline constexpr std::string_view kPixelFormats[] = {
    "Mono8",    "Mono10",   "Mono12",   "Mono14", "Mono16", "BayerRG8",
    "BayerGR8", "BayerGB8", "BayerBG8", "RGB8",   "BGR8",
};

// Rows of `width` pixels, each row followed by `padding` bytes. Pixels of 10 to 16 bits are little-endian, of
// two bytes; of them the upper eight bits count. Colours become grey by their luminance (ITU-R BT.601), those
// of a Bayer mosaic by the mean of each pixel's two by two neighbourhood. Raises Device I/O error (57),
// naming the format, for one that is not in kPixelFormats and for too few bytes.
engine::GreyImage greyImage(std::string_view format, int width, int height, std::size_t padding,
                            std::span<const std::byte> bytes);

}  // namespace dravik::camera
