// Pieces of print: sets of horizontal runs of ink pixels, found as connected components, which can be
// measured in a turned frame, joined and cut.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

#include "engine/image/Binarization.h"

namespace dravik::engine {

// No ink image is wider or higher.
constexpr int kMostInkSide = 65'535;

// Ink pixels x0 to x1 - 1 of row y. Small, since texture has tens of thousands of them.
struct Run {
    std::uint16_t x0 = 0;
    std::uint16_t x1 = 0;
    std::uint16_t y = 0;

    Run() = default;
    Run(int first, int end, int row) noexcept
        : x0(static_cast<std::uint16_t>(first)),
          x1(static_cast<std::uint16_t>(end)),
          y(static_cast<std::uint16_t>(row)) {}
};

// A frame turned by the print's slope and sheared by its slant: distances along and across its lines, in ink
// pixels, in which upright strokes stand at right angles to the line.
struct Frame {
    float slope = 0;  // rise of y per x along a line of print, at the image's downward y a fall
    float slant = 0;  // how far upright strokes lean to the right, per height

    float along(float x, float y) const noexcept { return x + (slope + slant) * y; }
    float across(float x, float y) const noexcept { return y - slope * x; }
    // Back to the image.
    float x(float along, float across) const noexcept {
        return (along - (slope + slant) * across) / (1 + (slope + slant) * slope);
    }
    float y(float along, float across) const noexcept {
        return (across + slope * along) / (1 + (slope + slant) * slope);
    }
};

struct Box {
    float left = 0;
    float top = 0;
    float right = 0;
    float bottom = 0;

    float width() const noexcept { return right - left; }
    float height() const noexcept { return bottom - top; }
    float middleX() const noexcept { return 0.5f * (left + right); }
    float middleY() const noexcept { return 0.5f * (top + bottom); }
    void include(const Box& other) noexcept;
};

struct Piece {
    std::vector<Run> runs;
    int area = 0;
    Box box;  // in the frame that it was last measured in

    void measure(const Frame& frame);
    // Takes over the other's runs; both boxes must be of the same frame.
    void join(Piece&& other);
};

// The 8-connected components of at least `leastArea` pixels; none when they are more than `mostPieces`.
std::vector<Piece> components(const InkImage& image, int leastArea,
                              std::size_t mostPieces = std::numeric_limits<std::size_t>::max());

// Joins pieces by a partition: pieces of the same representative become one.
class Partition {
  public:
    explicit Partition(std::size_t count);
    std::size_t find(std::size_t element);
    void unite(std::size_t a, std::size_t b);
    std::size_t parts();

  private:
    std::vector<std::uint32_t> parents_;
};

std::vector<Piece> joined(std::vector<Piece> pieces, Partition& partition);

// Least distance between the ink of two pieces, in ink pixels, as far as it is below `reach`; else `reach`.
// The runs of both must be sorted by row.
float inkDistance(const Piece& a, const Piece& b, float reach);

// Cuts a piece at a place along the line; either part may be empty.
std::pair<Piece, Piece> cut(const Piece& piece, const Frame& frame, float along);
// Cuts a piece across, into what is above a place and below it; either part may be empty.
std::pair<Piece, Piece> cutAcross(const Piece& piece, const Frame& frame, float across);

}  // namespace dravik::engine
