#include "engine/embedded/SeenImage.h"

#include <utility>

#include "engine/classifier/SceneReading.h"

namespace dravik::engine {

void SeenImage::show(std::shared_ptr<const GreyImage> image, std::shared_ptr<const Scene> scene) {
    image_ = std::move(image);
    scene_.reset();
    found_.clear();
    if (scene) take(std::move(scene));
}

const std::shared_ptr<const Scene>& SeenImage::scene() {
    if (!scene_) take(std::make_shared<Scene>(findScene(image_)));
    return scene_;
}

const std::vector<FoundCharacter>& SeenImage::found() {
    scene();
    return found_;
}

void SeenImage::take(std::shared_ptr<const Scene> scene) {
    std::vector<FoundCharacter> found;
    for (const PlacedGlyph& glyph : allPlaces(*scene))
        found.push_back(foundCharacter(glyph.place, glyph.line));
    found_ = std::move(found);
    scene_ = std::move(scene);
}

}  // namespace dravik::engine
