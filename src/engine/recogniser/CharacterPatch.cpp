#include "engine/recogniser/CharacterPatch.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <vector>

namespace dravik::engine {
namespace {

// Points looked at across a cell of the patch, at most.
constexpr int kMostPoints = 4;
constexpr float kMostCapHeight = 4000;
constexpr std::uint8_t kInk = 128;
// Both kinds of ink in one number, so that they are looked at together.
constexpr int kOthers = 16;

// Eight numbers that are worked on at once: both kinds of ink of four pixels. Written as the compiler's
// manual has it: an alias loses such attributes.
// NOLINTBEGIN(modernize-use-using)
typedef std::uint16_t Eight __attribute__((vector_size(16)));
typedef std::uint32_t Four __attribute__((vector_size(16)));
typedef std::uint64_t Two __attribute__((vector_size(16)));
// NOLINTEND(modernize-use-using)

// Pixels in another order.
template <int... Order>
Eight reordered(Eight of) {
    const Four pixels = reinterpret_cast<Four>(of);
    return reinterpret_cast<Eight>(__builtin_shufflevector(pixels, pixels, Order...));
}

// What two pixels count for at each 256th of the way from one to the other, twice.
constexpr std::array<Eight, 256> sharesBetween() {
    std::array<Eight, 256> result{};
    for (std::size_t i = 0; i < result.size(); ++i) {
        const std::uint16_t near = static_cast<std::uint16_t>(256 - i), far = static_cast<std::uint16_t>(i);
        result[i] = Eight{near, near, far, far, near, near, far, far};
    }
    return result;
}
constexpr std::array<Eight, 256> kShares = sharesBetween();

// The part of an ink image that a patch covers, with a margin; beyond the image there is paper.
class Window {
  public:
    Window(const InkImage& ink, const Piece& piece, int left, int top, int right, int bottom)
        : left_(left),
          top_(top),
          width_(static_cast<std::size_t>(right - left)),
          both_(width_ * static_cast<std::size_t>(bottom - top)) {
        int ownLeft = ink.width, ownTop = ink.height, ownRight = 0, ownBottom = 0;
        for (const Run& run : piece.runs) {
            ownLeft = std::min<int>(ownLeft, run.x0);
            ownRight = std::max<int>(ownRight, run.x1);
            ownTop = std::min<int>(ownTop, run.y);
            ownBottom = std::max(ownBottom, run.y + 1);
        }
        const int first = std::max(0, left), end = std::min(ink.width, right);
        for (int y = std::max(0, top); y < std::min(ink.height, bottom); ++y) {
            if (first >= end) break;
            const std::uint8_t* values =
                &ink.ink[static_cast<std::size_t>(y) * static_cast<std::size_t>(ink.width)];
            std::uint32_t* to = &at(first, y) - first;
            for (int x = first; x < end; ++x)
                to[x] = values[x] >= kInk ? static_cast<std::uint32_t>(values[x]) << kOthers : 0;
            if (y < ownTop - 1 || y > ownBottom) continue;
            for (int x = std::max(first, ownLeft - 1); x < std::min(end, ownRight + 1); ++x)
                if (values[x] < kInk) to[x] = values[x];
        }
        for (const Run& run : piece.runs) {
            if (run.y < top || run.y >= bottom) continue;
            for (int x = std::max<int>(run.x0, left); x < std::min<int>(run.x1, right); ++x)
                at(x, run.y) = ink.at(x, run.y);
        }
    }

    // The ink at a point between four pixels, in 65,536ths of a pixel from the window's first one's middle:
    // its own and that of others come first.
    Eight between(int x, int y) const {
        const std::uint32_t* first =
            &both_[static_cast<std::size_t>(y >> 16) * width_ + static_cast<std::size_t>(x >> 16)];
        const auto two = [](const std::uint32_t* from) {
            std::uint64_t pixels = 0;
            std::memcpy(&pixels, from, sizeof pixels);
            return pixels;
        };
        const Eight four = reinterpret_cast<Eight>(Two{two(first), two(first + width_)});
        const Eight pairs = four * kShares[static_cast<std::size_t>(x >> 8 & 255)];
        const Eight rows = (pairs + reordered<1, 0, 3, 2>(pairs)) >> 8;
        const Eight both = rows * reordered<0, 0, 1, 1>(kShares[static_cast<std::size_t>(y >> 8 & 255)]);
        return (both + reordered<2, 3, 0, 1>(both)) >> 8;
    }

  private:
    std::uint32_t& at(int x, int y) {
        return both_[static_cast<std::size_t>(y - top_) * width_ + static_cast<std::size_t>(x - left_)];
    }
    int left_, top_;
    std::size_t width_;
    std::vector<std::uint32_t> both_;
};

// Where a patch's first point is, and how far from point to point along the line, in 65,536ths of a pixel.
struct Grid {
    const Frame& frame;
    float left, top, step;
    int firstX, firstY;
};

// A cell's ink is that of Points x Points points.
template <int Points>
void look(const Window& window, const Grid& grid, CharacterPatch& patch) {
    constexpr std::uint32_t kCount = Points * Points;
    const auto fixed = [](float value) { return static_cast<int>(value * 65536); };
    const int alongX = fixed(grid.frame.x(grid.step, 0)), alongY = fixed(grid.frame.y(grid.step, 0));
    for (int row = 0; row < kPatchSide; ++row) {
        std::array<std::uint32_t, kPatchSide> both{};
        for (int j = 0; j < Points; ++j) {
            const float across = grid.top + grid.step * (static_cast<float>(row * Points + j) + 0.5f),
                        along = grid.left + 0.5f * grid.step;
            int x = fixed(grid.frame.x(along, across) - 0.5f - static_cast<float>(grid.firstX));
            int y = fixed(grid.frame.y(along, across) - 0.5f - static_cast<float>(grid.firstY));
            for (std::uint32_t& cell : both) {
                Eight sum{};
                for (int i = 0; i < Points; ++i, x += alongX, y += alongY) sum += window.between(x, y);
                std::uint32_t ownAndOthers = 0;
                std::memcpy(&ownAndOthers, &sum, sizeof ownAndOthers);
                cell += ownAndOthers;
            }
        }
        const std::size_t first = static_cast<std::size_t>(row) * kPatchSide;
        for (std::size_t column = 0; column < kPatchSide; ++column) {
            const std::uint32_t own = both[column] & 0xFFFF, others = both[column] >> kOthers;
            patch.own[first + column] = static_cast<std::uint8_t>((own + kCount / 2) / kCount);
            patch.others[first + column] = static_cast<std::uint8_t>((others + kCount / 2) / kCount);
        }
    }
}

}  // namespace

CharacterPatch characterPatch(const InkImage& ink, const Frame& frame, const Piece& piece,
                              const LineMetrics& line) {
    CharacterPatch patch;
    // Higher print would not fit into the numbers below; what is that high is no print.
    const float cell = std::clamp(line.capHeight, 1.0f, kMostCapHeight) / kPatchCapHeight;
    const float left = piece.box.middleX() - 0.5f * kPatchSide * cell,
                top = line.baseline - kPatchBaseline * cell;
    const float right = left + kPatchSide * cell, bottom = top + kPatchSide * cell;
    float x0 = 1e9f, y0 = 1e9f, x1 = -1e9f, y1 = -1e9f;
    for (const float along : {left, right})
        for (const float across : {top, bottom}) {
            x0 = std::min(x0, frame.x(along, across));
            x1 = std::max(x1, frame.x(along, across));
            y0 = std::min(y0, frame.y(along, across));
            y1 = std::max(y1, frame.y(along, across));
        }
    const int firstX = static_cast<int>(std::floor(x0)) - 2, firstY = static_cast<int>(std::floor(y0)) - 2;
    const Window window(ink, piece, firstX, firstY, static_cast<int>(std::ceil(x1)) + 3,
                        static_cast<int>(std::ceil(y1)) + 3);
    const int points = std::clamp(static_cast<int>(std::lround(cell)), 1, kMostPoints);
    const Grid grid{frame, left, top, cell / static_cast<float>(points), firstX, firstY};
    switch (points) {
        case 1:
            look<1>(window, grid, patch);
            break;
        case 2:
            look<2>(window, grid, patch);
            break;
        case 3:
            look<3>(window, grid, patch);
            break;
        default:
            look<kMostPoints>(window, grid, patch);
            break;
    }
    return patch;
}

}  // namespace dravik::engine
