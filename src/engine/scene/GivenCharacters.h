// Characters whose boxes an operator has told: what is found in an image, corrected by hand.
#pragma once

#include <memory>
#include <span>
#include <vector>

#include "engine/scene/Scene.h"

namespace dravik::engine {

// A character's box in the whole picture, and the line that it stands in, from 0. In reading order, line by
// line.
struct CharacterBox {
    RotatedBox place;
    int line = 0;

    bool operator==(const CharacterBox&) const = default;
};

std::vector<CharacterBox> characterBoxes(const Scene& scene);

// The scene with exactly these characters. A box that is one of the found ones keeps its character as it was
// found; of any other the print in it is the character, but for what belongs to a character that stayed. A
// box that seems empty counts too. Lines are numbered anew, in the order of the boxes. The image is that of
// the scene, and not null.
Scene withCharacters(const GreyImage& image, const Scene& found, std::span<const CharacterBox> boxes,
                     const PrintSettings& print = {});

// Where a box that holds two characters is best cut, in pixels from its left side.
float bestCut(const GreyImage& image, const RotatedBox& box);

}  // namespace dravik::engine
