// What the network of boundaries says of one line, asked by places along it.
#pragma once

#include <span>
#include <vector>

#include "engine/recogniser/BoundaryNetwork.h"
#include "engine/segmentation/Segmentation.h"

namespace dravik::engine {

struct Boundary {
    float along = 0;  // where it is likeliest
    float odds = 0;   // a logarithm
};

class LineBoundaries {
  public:
    LineBoundaries() = default;
    // Of the line that the pieces stand in, arranged from left to right.
    LineBoundaries(const InkImage& ink, const Frame& frame, std::span<const Glyph> line,
                   const LineMetrics& metrics);

    // False for a line that is too long or short to be looked at; then all odds are 0 and there are no
    // boundaries.
    bool isKnown() const noexcept { return !odds_.empty(); }
    // The greatest odds at or beside the places between `left` and `right`, which may be exchanged.
    float between(float left, float right) const;
    // The mean odds from `left` to `right`: low of a character, high of what is none.
    float mean(float left, float right) const;
    // The places inside a piece where a boundary is likeliest around, of at least such odds.
    std::vector<Boundary> inside(const Box& piece, float leastOdds) const;

  private:
    int place(float along) const;

    float left_ = 0, column_ = 1;
    std::vector<float> odds_;
};

}  // namespace dravik::engine
