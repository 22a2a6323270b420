// Finds which ink hangs together, touching corner to corner at least, in a picture that is seen row by row:
// runs that touch one above the other get the same label, or labels of which it becomes known that they are
// one.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace dravik::engine {

// Calls `visit(x0, x1)` for each run of pixels of 128 and more, from left to right; x1 is exclusive.
template <typename Visit>
void forInkRuns(const std::uint8_t* row, int width, Visit visit) {
    // The place of the next pixel whose highest bit is that of `wanted`, eight at a time.
    const auto next = [row, width](int x, std::uint64_t flip) {
        for (; x + 8 <= width; x += 8) {
            std::uint64_t pixels = 0;
            for (int i = 0; i < 8; ++i) pixels |= static_cast<std::uint64_t>(row[x + i]) << (8 * i);
            pixels = (pixels ^ flip) & 0x8080808080808080u;
            if (pixels) return x + std::countr_zero(pixels) / 8;
        }
        while (x < width && ((row[x] ^ flip) & 0x80u) == 0) ++x;
        return x;
    };
    for (int x = next(0, 0); x < width;) {
        const int end = next(x, ~std::uint64_t{0});
        visit(x, end);
        x = next(end, 0);
    }
}

class RunLabels {
  public:
    struct Labelled {
        int x0, x1;
        std::uint32_t label;
    };
    // The runs of the next row, good until the next call.
    const std::vector<Labelled>& add(const std::uint8_t* row, int width);

    // The label that stands for all that are the same: the least of them, which was given to the first run.
    std::uint32_t same(std::uint32_t label);
    std::size_t count() const { return same_.size(); }

  private:
    std::vector<std::uint32_t> same_;
    std::vector<Labelled> above_, here_;
};

}  // namespace dravik::engine
