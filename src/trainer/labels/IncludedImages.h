// Which images the samples of a font come from: by path and by what they show, so that a copy under another
// name is known as well.
#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <unordered_set>

#include "engine/font/SampleStore.h"
#include "engine/image/GreyImage.h"

namespace dravik::trainer {

// The same for the same pixels, and almost never for others; never 0.
std::uint64_t digestOf(const engine::GreyImage& image);

class IncludedImages {
  public:
    IncludedImages() = default;
    explicit IncludedImages(const engine::SampleColumns& samples);

    bool has(const std::string& path) const { return paths_.contains(path); }
    // The path of an image with these pixels, that path itself where it is one of them; "" when there is
    // none. An image of the same path counts where nothing tells that it has shown something else.
    std::string same(const std::string& path, std::uint64_t digest) const;

  private:
    std::unordered_set<std::string> paths_;
    std::unordered_map<std::uint64_t, std::string> byDigest_;
    std::unordered_set<std::string> unknown_;  // paths of images of which nothing else is known
};

}  // namespace dravik::trainer
