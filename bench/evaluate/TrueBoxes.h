// Where the characters of generated part images truly are.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "engine/image/Components.h"

namespace dravik {

struct Truth {
    bool dark = true;
    float capHeight = 0;
    std::vector<engine::Box> characters;  // in image pixels
};

// By the name of the image, from meta.tsv and boxes.tsv of the folder.
std::map<std::string, Truth> truths(const std::string& folder);

// A box of the image in a frame of a picture that begins at image pixel (left, top), `scale` image pixels to
// one of its own.
engine::Box inFrame(const engine::Box& box, const engine::Frame& frame, int left, int top, float scale);

}  // namespace dravik
