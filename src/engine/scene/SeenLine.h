// A line of print that was cut out of a picture and looked at.
#pragma once

#include <span>
#include <stop_token>

#include "engine/scene/Scene.h"

namespace dravik::engine {

// Print odds of a clear line.
inline constexpr double kClearLine = 2.5;

struct SeenLine {
    TextLine line;
    ScenePart part;
    double odds = 0;  // that it is print, see printOdds()

    // Whether it shows characters that are hardly anything else.
    bool isClear() const;
};

// Looks at lines of one picture. What it refers to has to outlive it.
class LineSight {
  public:
    // `lines` are all that were found in the picture: none of another one is seen in a line that is cut out.
    LineSight(const GreyImage& image, std::span<const TextLine> lines, const PrintSettings& print,
              const std::stop_token& stop)
        : image_(image), lines_(lines), print_(print), stop_(stop) {}

    const GreyImage& image() const noexcept { return image_; }

    // The line's print is `height` pixels high. A clear line is of its print's polarity.
    SeenLine look(const TextLine& line, float height) const;

  private:
    const GreyImage& image_;
    const std::span<const TextLine> lines_;
    const PrintSettings& print_;
    const std::stop_token& stop_;
};

}  // namespace dravik::engine
