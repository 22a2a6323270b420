#include "engine/image/GreyImage.h"

#include <algorithm>

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

float GreyImage::levelAt(float x, float y) const noexcept {
    const float u = std::clamp(x - 0.5f, 0.0f, static_cast<float>(width_ - 1));
    const float v = std::clamp(y - 0.5f, 0.0f, static_cast<float>(height_ - 1));
    const int c = std::min(static_cast<int>(u), std::max(0, width_ - 2));
    const int r = std::min(static_cast<int>(v), std::max(0, height_ - 2));
    const int right = std::min(c + 1, width_ - 1), below = std::min(r + 1, height_ - 1);
    const float across = u - static_cast<float>(c), down = v - static_cast<float>(r);
    const auto at = [this](int column, int row) { return static_cast<float>((*this)(column, row)); };
    return (at(c, r) * (1 - across) + at(right, r) * across) * (1 - down) +
           (at(c, below) * (1 - across) + at(right, below) * across) * down;
}

}  // namespace dravik::engine
