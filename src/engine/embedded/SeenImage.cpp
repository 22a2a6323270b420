#include "engine/embedded/SeenImage.h"

#include <utility>

#include "engine/classifier/SceneReading.h"

namespace dravik::engine {

void SeenImage::show(std::shared_ptr<const GreyImage> image, std::shared_ptr<const Scene> scene) {
    image_ = std::move(image);
    name_.reset();
    scene_.reset();
    division_.reset();
    found_.clear();
    isHandedOver_ = scene != nullptr;
    foundScene_ = std::move(scene);
}

void SeenImage::setSettings(const SegmentationSettings& settings) {
    if (std::exchange(settings_, settings) == settings || isHandedOver_) return;
    foundScene_.reset();
    division_.reset();
    scene_.reset();
}

void SeenImage::setCharacters(const std::optional<std::vector<CharacterBox>>& boxes) {
    scene_.reset();
    if (boxes)
        take(std::make_shared<Scene>(withCharacters(*image_, *basis(), *boxes, settings_.print)), *boxes);
}

void SeenImage::setDivision(std::shared_ptr<const Scene> scene) {
    division_ = std::move(scene);
    scene_.reset();
}

// What told characters are taken from, or stands there without any.
const std::shared_ptr<const Scene>& SeenImage::basis() {
    return division_ ? division_ : foundScene();
}

const std::vector<CharacterBox>& SeenImage::boxes() {
    scene();
    return boxes_;
}

const std::shared_ptr<const Scene>& SeenImage::foundScene() {
    if (!foundScene_) foundScene_ = std::make_shared<Scene>(findScene(image_, settings_));
    return foundScene_;
}

void SeenImage::setName(const std::string& name, std::uint64_t digest) {
    const bool isUsable = !name.empty() && name.size() <= kLongestImageName;
    name_ = isUsable ? std::make_shared<const SourceImage>(SourceImage{name, digest}) : nullptr;
}

const std::shared_ptr<const Scene>& SeenImage::scene() {
    if (!scene_) take(basis(), characterBoxes(*basis()));
    return scene_;
}

const std::vector<FoundCharacter>& SeenImage::found() {
    scene();
    return found_;
}

// The picture is that of the upright line, as the tool has seen the character.
std::vector<std::shared_ptr<const SampleOrigin>> SeenImage::origins() {
    std::vector<std::shared_ptr<const SampleOrigin>> result;
    for (const ScenePart& part : scene()->parts)
        for (const Glyph& glyph : part.found.glyphs) {
            const Region place = part.found.place(glyph);
            result.push_back(std::make_shared<const SampleOrigin>(
                SampleOrigin{smallPicture(*part.picture, place), name_, part.place(place)}));
        }
    return result;
}

void SeenImage::take(std::shared_ptr<const Scene> scene, std::vector<CharacterBox> boxes) {
    std::vector<FoundCharacter> found;
    for (const PlacedGlyph& glyph : allPlaces(*scene))
        found.push_back(foundCharacter(glyph.place, glyph.line));
    found_ = std::move(found);
    boxes_ = std::move(boxes);
    scene_ = std::move(scene);
}

}  // namespace dravik::engine
