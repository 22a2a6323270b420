// Part images kept as PGM files, the simplest format that there is.
#pragma once

#include <fstream>
#include <stdexcept>
#include <string>

#include "base/Failure.h"
#include "engine/image/GreyImage.h"

namespace dravik::test {

using namespace engine;

inline void writePgm(const std::string& file, const GreyImage& image) {
    std::ofstream stream(file, std::ios::binary);
    stream << "P5\n" << image.width() << ' ' << image.height() << "\n255\n";
    for (int y = 0; y < image.height(); ++y)
        for (const auto pixel : image.row(y)) stream.put(static_cast<char>(pixel));
    if (!stream.flush()) throw std::runtime_error("cannot write " + file);
}

// The decoder that the tests hand to the program; raises Failure that names the file and the problem.
inline GreyImage readPgm(const std::string& file) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream) throw Failure(RuntimeError::FileNotFound, file + ": no such file");
    std::string magic;
    int width = 0;
    int height = 0;
    int most = 0;
    stream >> magic >> width >> height >> most;
    stream.get();
    if (!stream || magic != "P5" || most != 255)
        throw Failure(RuntimeError::InvalidPropertyValue, file + ": is not a grey image");
    GreyImage image(width, height);
    for (int y = 0; y < height; ++y)
        for (auto& pixel : image.row(y)) pixel = static_cast<std::uint8_t>(stream.get());
    if (!stream) throw Failure(RuntimeError::DeviceIoError, file + ": ends too early");
    return image;
}

}  // namespace dravik::test
