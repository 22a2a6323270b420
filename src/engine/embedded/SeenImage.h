// The image that the tool looks at, and the characters that are found in it, which are looked for when they
// are first asked for, or are told; and what a sample of them is told to come from.
#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "engine/font/FontReader.h"
#include "engine/font/SampleOrigin.h"
#include "engine/image/GreyImage.h"
#include "engine/scene/GivenCharacters.h"
#include "engine/scene/Scene.h"

namespace dravik::engine {

class SeenImage {
  public:
    // The image is not null; the scene, which is findScene() of it, may be, and stays whatever the settings.
    void show(std::shared_ptr<const GreyImage> image, std::shared_ptr<const Scene> scene);
    // What was found by other settings counts no more.
    void setSettings(const SegmentationSettings& settings);
    // The characters that there are, until the next image or other settings; nothing for those that are
    // found.
    void setCharacters(const std::optional<std::vector<CharacterBox>>& boxes);

    // What is found, divided otherwise (see sceneWithText()), stands in its place until the next image or
    // other settings; null for what is found. No characters are told then.
    void setDivision(std::shared_ptr<const Scene> scene);
    const std::shared_ptr<const Scene>& division() const noexcept { return division_; }
    // Whatever was told.
    const std::shared_ptr<const Scene>& foundScene();

    // Of the image that is shown, until the next one.
    void setName(const std::string& name, std::uint64_t digest = 0);

    const std::shared_ptr<const GreyImage>& image() const noexcept { return image_; }
    // With the characters that were told, if any.
    const std::shared_ptr<const Scene>& scene();
    const std::vector<FoundCharacter>& found();
    // As they were told, or as they were found.
    const std::vector<CharacterBox>& boxes();
    // Of the found characters, one by one.
    std::vector<std::shared_ptr<const SampleOrigin>> origins();

  private:
    void take(std::shared_ptr<const Scene> scene, std::vector<CharacterBox> boxes);
    const std::shared_ptr<const Scene>& basis();

    std::shared_ptr<const GreyImage> image_ = std::make_shared<GreyImage>();
    SegmentationSettings settings_;
    bool isHandedOver_ = false;  // the scene came with the image
    std::shared_ptr<const Scene> foundScene_, division_;
    std::shared_ptr<const Scene> scene_;
    std::vector<FoundCharacter> found_;
    std::vector<CharacterBox> boxes_;
    std::shared_ptr<const SourceImage> name_;
};

}  // namespace dravik::engine
