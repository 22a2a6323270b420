#include "engine/embedded/SeenImage.h"

#include <utility>

namespace dravik::engine {

FoundCharacter placed(const Region& place, int line) {
    return {place.left, place.top, place.right, place.bottom, line};
}

void SeenImage::show(std::shared_ptr<const GreyImage> image,
                     std::shared_ptr<const Segmentation> segmentation) {
    image_ = std::move(image);
    segmentation_.reset();
    found_.clear();
    if (segmentation) take(std::move(segmentation));
}

const std::shared_ptr<const Segmentation>& SeenImage::segmentation() {
    if (!segmentation_) take(std::make_shared<Segmentation>(segment(*image_)));
    return segmentation_;
}

const std::vector<FoundCharacter>& SeenImage::found() {
    segmentation();
    return found_;
}

void SeenImage::take(std::shared_ptr<const Segmentation> segmentation) {
    std::vector<FoundCharacter> found;
    for (const Glyph& glyph : segmentation->glyphs)
        found.push_back(placed(segmentation->place(glyph), glyph.line));
    found_ = std::move(found);
    segmentation_ = std::move(segmentation);
}

}  // namespace dravik::engine
