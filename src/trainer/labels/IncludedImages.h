// Which images were included into which font, in this run of the program: by path and by what they show, so
// that a copy under another name is known as well.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "engine/image/GreyImage.h"

namespace dravik::trainer {

// The same for the same pixels, and almost never for others.
std::uint64_t digestOf(const engine::GreyImage& image);

class IncludedImages {
  public:
    struct Image {
        std::string font;
        std::string path;
        std::uint64_t digest = 0;
    };
    void add(Image image);
    // Null when none of these pixels was included into the font.
    const Image* find(const std::string& font, std::uint64_t digest) const;
    bool has(const std::string& font, const std::string& path) const;
    // The include that was made last into the font is taken back, or done again.
    void takeBack(const std::string& font);
    void doAgain(const std::string& font);

  private:
    std::vector<Image> images_, takenBack_;
};

}  // namespace dravik::trainer
