#include "camera/PixelFormat.h"

#include <algorithm>
#include <charconv>
#include <cstdint>

#include "base/Failure.h"

namespace dravik::camera {
namespace {

struct Layout {
    std::size_t bytes = 1;  // a pixel
    int shift = 0;          // to eight bits
    bool mosaic = false;
    bool colour = false;
    bool blueFirst = false;
};

Layout layoutOf(std::string_view format) {
    if (std::find(std::begin(kPixelFormats), std::end(kPixelFormats), format) == std::end(kPixelFormats))
        throw Failure(RuntimeError::DeviceIoError, "The camera sends pixels as \"" + std::string(format) +
                                                       "\", which cannot be read here");
    if (format.starts_with("Bayer")) return {.mosaic = true};
    if (!format.starts_with("Mono")) return {.bytes = 3, .colour = true, .blueFirst = format.front() == 'B'};
    int bits = 8;
    std::from_chars(format.data() + std::string_view("Mono").size(), format.data() + format.size(), bits);
    return {.bytes = bits > 8 ? 2u : 1u, .shift = bits - 8};
}

}  // namespace

engine::GreyImage greyImage(std::string_view format, int width, int height, std::size_t padding,
                            std::span<const std::byte> bytes) {
    const Layout layout = layoutOf(format);
    engine::GreyImage image(width, height);
    const std::size_t stride = static_cast<std::size_t>(width) * layout.bytes + padding;
    if (height > 0 && bytes.size() < stride * static_cast<std::size_t>(height) - padding)
        throw Failure(RuntimeError::DeviceIoError, "The camera sent " + std::to_string(bytes.size()) +
                                                       " bytes for " + std::to_string(width) + " x " +
                                                       std::to_string(height) + " pixels of " +
                                                       std::string(format));
    const auto* data = reinterpret_cast<const std::uint8_t*>(bytes.data());
    for (int y = 0; y < height; ++y) {
        const std::uint8_t* from = data + stride * static_cast<std::size_t>(y);
        const std::span<std::uint8_t> to = image.row(y);
        if (layout.colour) {
            for (std::uint8_t& pixel : to) {
                const int red = from[layout.blueFirst ? 2 : 0];
                const int blue = from[layout.blueFirst ? 0 : 2];
                pixel = static_cast<std::uint8_t>((299 * red + 587 * from[1] + 114 * blue + 500) / 1000);
                from += 3;
            }
        } else if (layout.mosaic) {
            const std::uint8_t* beside = height == 1 ? from : y + 1 < height ? from + stride : from - stride;
            for (std::size_t x = 0; x < to.size(); ++x) {
                const std::size_t next = x + 1 < to.size() ? x + 1 : x > 0 ? x - 1 : x;
                to[x] = static_cast<std::uint8_t>((from[x] + from[next] + beside[x] + beside[next] + 2) / 4);
            }
        } else if (layout.bytes == 2) {
            for (std::uint8_t& pixel : to) {
                pixel = static_cast<std::uint8_t>(std::min((from[0] | from[1] << 8) >> layout.shift, 255));
                from += 2;
            }
        } else {
            std::copy_n(from, to.size(), to.begin());
        }
    }
    return image;
}

}  // namespace dravik::camera
