// The decoded images around the one that is shown: they are decoded beside the window before the operator
// leafs to them, and stay while he is near.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "trainer/NewestWork.h"
#include "trainer/OpenedParts.h"

namespace dravik::trainer {

class NearImages {
  public:
    explicit NearImages(engine::ImageDecoder decoder);
    NearImages(const NearImages&) = delete;
    NearImages& operator=(const NearImages&) = delete;
    // Waits for the end of a decoding.
    ~NearImages();

    // Which images are near from now on, the one that is wanted first at the front; others are dropped.
    void goTo(std::vector<std::string> paths);
    // The image of the file as it is then, decoded unless it is there; it stays while it is near. Any thread
    // may do it, and it never raises.
    std::function<OpenedParts::Decoded()> decoding(const std::string& path) const;
    // Decodes those that are near, as far as they are not large.
    void decodeAll();
    void forget(const std::string& path);

  private:
    struct Shared;
    const std::shared_ptr<Shared> shared_;
    NewestWork work_;
};

}  // namespace dravik::trainer
