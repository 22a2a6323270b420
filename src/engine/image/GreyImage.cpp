#include "engine/image/GreyImage.h"

#include "base/Failure.h"

namespace dravik::engine {
namespace {

std::size_t pixelCount(int width, int height) {
    if (width < 0 || height < 0)
        throw Failure(RuntimeError::InvalidProcedureCall, "An image cannot have " + std::to_string(width) +
                                                              " x " + std::to_string(height) + " pixels");
    if (static_cast<std::int64_t>(width) * height > kMostPixels)
        throw Failure(RuntimeError::InvalidProcedureCall, "Image of " + std::to_string(width) + " x " +
                                                              std::to_string(height) +
                                                              " pixels is larger than 64 megapixels");
    return static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
}

}  // namespace

GreyImage::GreyImage(int width, int height, std::uint8_t value)
    : width_(width), height_(height), pixels_(pixelCount(width, height), value) {}

GreyImage::GreyImage(const std::uint8_t* pixels, int width, int height, std::ptrdiff_t stride)
    : width_(width), height_(height) {
    pixels_.reserve(pixelCount(width, height));
    for (int y = 0; y < height; ++y) {
        const std::uint8_t* row = pixels + y * stride;
        pixels_.insert(pixels_.end(), row, row + width);
    }
}

}  // namespace dravik::engine
