// The characters of a picture that shows more than its print: each line of print is found, turned upright,
// freed of what stands around it, and then looked at alone.
#pragma once

#include <memory>
#include <vector>

#include "engine/scene/TextFinder.h"
#include "engine/segmentation/Segmentation.h"

namespace dravik::engine {

// A part of the picture that is looked at alone, upright.
struct ScenePart {
    std::shared_ptr<const GreyImage> picture;
    Segmentation found;
    // From this picture's pixels to those of the whole: turned by `angle` radians, then shifted.
    float angle = 0;
    float left = 0, top = 0;
    int firstLine = 0;  // the number of its first line in the scene

    // The box of a glyph in the whole picture; cut to what there is of it.
    Region place(const Glyph& glyph, int width, int height) const;
};

struct Scene {
    std::vector<ScenePart> parts;  // in reading order

    std::size_t characters() const noexcept;
};

// Never null. A picture that is filled by its print, or in which no lines are found though it is small, is
// one part: the picture itself.
Scene findScene(std::shared_ptr<const GreyImage> image);

}  // namespace dravik::engine
