// The characters of a picture that shows more than its print: each line of print is found, turned upright,
// freed of what stands around it, and then looked at alone.
#pragma once

#include <memory>
#include <stop_token>
#include <vector>

#include "engine/image/RotatedBox.h"
#include "engine/scene/TextFinder.h"
#include "engine/segmentation/Segmentation.h"

namespace dravik::engine {

// A part of the picture that is looked at alone, upright.
struct ScenePart {
    std::shared_ptr<const GreyImage> picture;
    // Where that shows its print alone, white on black: what it was made of, and whether the print is darker
    // than its ground there. Null otherwise.
    std::shared_ptr<const GreyImage> original;
    bool isDarkThere = false;
    Segmentation found;  // behind its own lines are those of the other parts, as high as its pixels have them
    Region whole;        // that the part is of
    // From the part's pixels to those of the whole: turned by `angle` radians, then shifted.
    float angle = 0;
    float left = 0, top = 0;
    int firstLine = 0;  // the number of its first line in the scene

    const GreyImage& seen() const { return original ? *original : *picture; }
    // Whether its print is darker than the ground as it is seen.
    bool isDark() const { return original ? isDarkThere : found.look.dark; }
    // The box in the whole picture of a box in the part; cut to what there is of it.
    Region place(const Region& own) const;
    // The same as it stands there, turned.
    RotatedBox box(const Region& own) const;
};

struct Scene {
    std::vector<ScenePart> parts;  // in reading order

    std::size_t characters() const noexcept;
};

// A picture that is filled by its print, or in which nothing else is seen, is one part: the picture itself.
// Of a region only what is in it is looked at, turned upright. Ends soon, with anything or nothing found,
// once a stop is requested. The image is not null.
Scene findScene(const std::shared_ptr<const GreyImage>& image, const SegmentationSettings& settings = {},
                const std::stop_token& stop = {});

// Gives each part the lines of the others too: how high they are tells its capitals from small letters. To be
// called once for parts that have their own lines alone.
void tellOfNeighbours(Scene& scene);

}  // namespace dravik::engine
