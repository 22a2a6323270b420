// A face of dots on a square lattice.
#pragma once

#include <map>
#include <utility>
#include <vector>

#include "generate/Typeface.h"

namespace dravik {

class DotFace : public Typeface {
  public:
    struct Dot {
        int column, row;  // from the left edge; from the baseline upwards
    };
    using Patterns = std::map<char, std::vector<Dot>>;

    // `rows` is the height of capitals, `advance` the step from character to character, in dots.
    DotFace(Patterns patterns, int rows, int advance)
        : patterns_(std::move(patterns)), rows_(rows), advance_(advance) {}
    bool isDotMatrix() const override { return true; }
    bool has(char character) const override { return patterns_.count(character) > 0; }

  protected:
    Extent extent(char character, const PrintStyle& style) const override;
    void draw(Print& print, char character, float x, float y, const PrintStyle& style, int owner,
              Random& random) const override;

  private:
    Patterns patterns_;
    int rows_, advance_;
};

}  // namespace dravik
