// Grey images from PNG files, for tests and benchmarks only: the engine itself decodes no image format.
#pragma once

#include <png.h>

#include <cstring>
#include <stdexcept>
#include <string>
#include <vector>

#include "engine/image/GreyImage.h"

namespace dravik {

using namespace engine;

inline GreyImage readPng(const std::string& file) {
    png_image header;
    std::memset(&header, 0, sizeof header);
    header.version = PNG_IMAGE_VERSION;
    if (!png_image_begin_read_from_file(&header, file.c_str()))
        throw std::runtime_error(file + ": " + header.message);
    header.format = PNG_FORMAT_GRAY;
    GreyImage image(static_cast<int>(header.width), static_cast<int>(header.height));
    const png_color white = {255, 255, 255};
    if (!png_image_finish_read(&header, &white, image.row(0).data(), 0, nullptr)) {
        png_image_free(&header);
        throw std::runtime_error(file + ": " + header.message);
    }
    return image;
}

}  // namespace dravik
