// A field of light: grey levels as numbers of any size until the camera rounds them.
#pragma once

#include <cstddef>
#include <vector>

#include "engine/image/GreyImage.h"

namespace dravik {

using namespace engine;

struct Field {
    int width, height;
    std::vector<float> values;

    Field(int w, int h)
        : width(w), height(h), values(static_cast<std::size_t>(w) * static_cast<std::size_t>(h)) {}
    float& at(int x, int y) {
        return values[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                      static_cast<std::size_t>(x)];
    }
    // Brings the deviation about 0 to `deviation`.
    void scaleTo(float deviation);
    void smoothRows(float deviation);
    void smoothColumns(float deviation);
    void blur(float deviation) {
        smoothRows(deviation);
        smoothColumns(deviation);
    }
    // As a picture compressed by JPEG of that quality (1 to 100) looks: 8 x 8 cosine transforms rounded by
    // the usual table (ITU-T T.81, annex K).
    void compress(int quality);
    GreyImage image() const;
};

}  // namespace dravik
