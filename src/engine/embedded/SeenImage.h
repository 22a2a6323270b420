// The image that the tool looks at, and the characters that are found in it, which are looked for when they
// are first asked for.
#pragma once

#include <memory>
#include <vector>

#include "engine/font/FontReader.h"
#include "engine/image/GreyImage.h"
#include "engine/scene/Scene.h"

namespace dravik::engine {

class SeenImage {
  public:
    // The image is not null; the scene, which is findScene() of it, may be.
    void show(std::shared_ptr<const GreyImage> image, std::shared_ptr<const Scene> scene);

    const std::shared_ptr<const GreyImage>& image() const noexcept { return image_; }
    const std::shared_ptr<const Scene>& scene();
    const std::vector<FoundCharacter>& found();

  private:
    void take(std::shared_ptr<const Scene> scene);

    std::shared_ptr<const GreyImage> image_ = std::make_shared<GreyImage>();
    std::shared_ptr<const Scene> scene_;
    std::vector<FoundCharacter> found_;
};

}  // namespace dravik::engine
