#include "engine/image/GreyImage.h"

#include "base/Failure.h"

namespace dravik::engine {

GreyImage::GreyImage(int width, int height, std::uint8_t value) : width_(width), height_(height) {
    if (width < 0 || height < 0)
        throw Failure(RuntimeError::InvalidProcedureCall, "An image cannot have " + std::to_string(width) +
                                                              " x " + std::to_string(height) + " pixels");
    if (static_cast<std::int64_t>(width) * height > kMostPixels)
        throw Failure(RuntimeError::InvalidProcedureCall, "Image of " + std::to_string(width) + " x " +
                                                              std::to_string(height) +
                                                              " pixels is larger than 64 megapixels");
    pixels_.assign(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), value);
}

}  // namespace dravik::engine
