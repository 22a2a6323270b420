#include "Digits.h"

#include <zlib.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <fstream>
#include <sstream>

#include "engine/segmentation/Features.h"

namespace dravik {

using namespace engine;
using namespace tool;
namespace {

SampleInputs loneInputs(InkImage ink) {
    Segmentation found;
    found.ink = std::move(ink);
    Glyph glyph;
    for (int y = 0; y < found.ink.height; ++y)
        for (int x = 0; x < found.ink.width; ++x) {
            if (found.ink.at(x, y) < 128) continue;
            glyph.piece.runs.push_back({x, x + 1, y});
            ++glyph.piece.area;
        }
    glyph.piece.measure(found.frame);
    return glyphInputs(found, glyph, {glyph.piece.box.bottom, glyph.piece.box.height(), true});
}

// An 8 x 8 picture drawn five times as large.
InkImage enlarged(const std::array<float, 64>& values) {
    constexpr int times = 5, size = 8 * times;
    const auto at = [&values](int x, int y) {
        return x < 0 || y < 0 || x > 7 || y > 7 ? 0.0f : values[static_cast<std::size_t>(8 * y + x)];
    };
    InkImage ink{size, size, 1, 0, 0, {}};
    for (int y = 0; y < size; ++y)
        for (int x = 0; x < size; ++x) {
            const float u = (static_cast<float>(x) + 0.5f) / times - 0.5f;
            const float v = (static_cast<float>(y) + 0.5f) / times - 0.5f;
            const int c = static_cast<int>(std::floor(u)), r = static_cast<int>(std::floor(v));
            const float across = u - static_cast<float>(c), down = v - static_cast<float>(r);
            const float value = (at(c, r) * (1 - across) + at(c + 1, r) * across) * (1 - down) +
                                (at(c, r + 1) * (1 - across) + at(c + 1, r + 1) * across) * down;
            ink.ink.push_back(static_cast<std::uint8_t>(std::min(255.0f, 16 * value)));
        }
    return ink;
}

}  // namespace

LabelledInputs mnistDigits(const std::string& folder, const std::string& prefix, std::size_t most) {
    std::ifstream images(folder + "/" + prefix + "images-idx3-ubyte", std::ios::binary);
    std::ifstream labels(folder + "/" + prefix + "labels-idx1-ubyte", std::ios::binary);
    images.ignore(16);
    labels.ignore(8);
    LabelledInputs data;
    for (char label; data.size() < most && labels.get(label);) {
        InkImage ink{28, 28, 1, 0, 0, std::vector<std::uint8_t>(28 * 28)};
        if (!images.read(reinterpret_cast<char*>(ink.ink.data()), 28 * 28)) break;
        data.add(loneInputs(std::move(ink)), '0' + label);
    }
    return data;
}

LabelledInputs opticalDigits(const std::string& file) {
    LabelledInputs data;
    const gzFile in = gzopen(file.c_str(), "rb");
    if (!in) return data;
    std::array<char, 1024> line;
    while (gzgets(in, line.data(), static_cast<int>(line.size()))) {
        std::replace(line.begin(), line.end(), ',', ' ');
        std::istringstream fields(line.data());
        std::array<float, 64> values;
        for (float& value : values) fields >> value;
        float digit = 0;
        if (fields >> digit) data.add(loneInputs(enlarged(values)), '0' + static_cast<int>(digit));
    }
    gzclose(in);
    return data;
}

}  // namespace dravik
