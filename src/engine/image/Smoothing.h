// Smooths grey pictures row by row: beside the picture a few of its rows are held, never a second copy.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

namespace dravik::engine {

// Gives the rows of a picture from top to bottom, each good until the next is asked for.
using RowSource = std::function<const std::uint8_t*()>;

// Rows of `width` values without gaps.
RowSource rowsOf(const std::uint8_t* pixels, int width);

// One pass of the 1-2-1 filter both ways; edges repeat. Row y is written to `pixels` after row y + 1 was
// read, so that the rows may be those of `pixels`.
void smooth(RowSource rows, int width, int height, std::uint8_t* pixels);
RowSource smoothed(RowSource rows, int width, int height);

// The rows of a picture, from top to bottom, as means over a window of 2 x radius + 1 both ways, done twice:
// nearly a normal curve of that radius, which is 1 to 127. Edges repeat.
class BlurredRows {
  public:
    BlurredRows(RowSource rows, int width, int height, int radius);

    // Good until the next call; at most `height` times.
    const std::uint8_t* next();

  private:
    // One of the two rounds, which holds the rows of its window.
    class Round {
      public:
        Round(std::size_t width, int height, int radius);
        const std::uint8_t* next(const RowSource& rows);

      private:
        // The sums of a window are of 16 bits.
        static constexpr int kMostRadius = 127;

        void take(const std::uint8_t* row);
        const std::uint8_t* held(int y) const;
        void toMeans(const std::uint16_t* sums, std::uint8_t* means) const;

        const std::size_t width_;
        const int height_, radius_;
        const std::uint16_t share_;  // one by the window's side, in 65536ths
        int taken_ = 0, given_ = 0;
        std::vector<std::uint8_t> padded_, window_, mean_;
        std::vector<std::uint16_t> along_, sums_;
    };

    RowSource rows_;
    Round first_, second_;
};

}  // namespace dravik::engine
