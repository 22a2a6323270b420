#include "engine/recogniser/CharacterPatch.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace dravik::engine {
namespace {

// Points looked at across a cell of the patch, at most.
constexpr int kMostPoints = 4;
constexpr float kMostCapHeight = 4000;
constexpr std::uint8_t kInk = 128;
// Both kinds of ink in one number, so that they are looked at together.
constexpr int kOthers = 16;
constexpr std::uint32_t kBoth = 0x00FF00FF;

// The part of an ink image that a patch covers, with a margin; beyond the image there is paper.
class Window {
  public:
    Window(const InkImage& ink, const Piece& piece, int left, int top, int right, int bottom)
        : left_(left),
          top_(top),
          width_(right - left),
          height_(bottom - top),
          both_(static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_)) {
        int ownLeft = ink.width, ownTop = ink.height, ownRight = 0, ownBottom = 0;
        for (const Run& run : piece.runs) {
            ownLeft = std::min<int>(ownLeft, run.x0);
            ownRight = std::max<int>(ownRight, run.x1);
            ownTop = std::min<int>(ownTop, run.y);
            ownBottom = std::max(ownBottom, run.y + 1);
        }
        for (int y = std::max(0, top); y < std::min(ink.height, bottom); ++y) {
            const bool beside = y >= ownTop - 1 && y <= ownBottom;
            for (int x = std::max(0, left); x < std::min(ink.width, right); ++x) {
                const std::uint8_t value = ink.at(x, y);
                if (value >= kInk)
                    at(x, y) = static_cast<std::uint32_t>(value) << kOthers;
                else if (beside && x >= ownLeft - 1 && x <= ownRight)
                    at(x, y) = value;
            }
        }
        for (const Run& run : piece.runs) {
            if (run.y < top || run.y >= bottom) continue;
            for (int x = std::max<int>(run.x0, left); x < std::min<int>(run.x1, right); ++x)
                at(x, run.y) = ink.at(x, run.y);
        }
    }

    // The ink at a point between four pixels, in 65,536ths of a pixel from the window's first one's middle.
    std::uint32_t between(int x, int y) const {
        const std::uint32_t across = static_cast<std::uint32_t>(x >> 8) & 255,
                            down = static_cast<std::uint32_t>(y >> 8) & 255;
        const std::uint32_t* first =
            &both_[static_cast<std::size_t>(y >> 16) * static_cast<std::size_t>(width_) +
                   static_cast<std::size_t>(x >> 16)];
        const std::uint32_t* second = first + width_;
        const std::uint32_t upper = (first[0] * (256 - across) + first[1] * across) >> 8 & kBoth;
        const std::uint32_t lower = (second[0] * (256 - across) + second[1] * across) >> 8 & kBoth;
        return (upper * (256 - down) + lower * down) >> 8 & kBoth;
    }

  private:
    std::uint32_t& at(int x, int y) {
        return both_[static_cast<std::size_t>(y - top_) * static_cast<std::size_t>(width_) +
                     static_cast<std::size_t>(x - left_)];
    }
    int left_, top_, width_, height_;
    std::vector<std::uint32_t> both_;
};

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
    const float step = cell / static_cast<float>(points);
    const auto fixed = [](float value) { return static_cast<int>(value * 65536); };
    const int alongX = fixed(frame.x(step, 0)), alongY = fixed(frame.y(step, 0));
    const std::uint32_t count = static_cast<std::uint32_t>(points * points);
    for (int row = 0; row < kPatchSide; ++row) {
        std::array<std::uint32_t, kPatchSide> own{}, others{};
        for (int j = 0; j < points; ++j) {
            const float across = top + step * (static_cast<float>(row * points + j) + 0.5f),
                        along = left + 0.5f * step;
            int x = fixed(frame.x(along, across) - 0.5f - static_cast<float>(firstX));
            int y = fixed(frame.y(along, across) - 0.5f - static_cast<float>(firstY));
            for (std::size_t column = 0; column < kPatchSide; ++column) {
                std::uint32_t sum = 0;
                for (int i = 0; i < points; ++i, x += alongX, y += alongY) sum += window.between(x, y);
                own[column] += sum & 0xFFFF;
                others[column] += sum >> kOthers;
            }
        }
        const std::size_t first = static_cast<std::size_t>(row) * kPatchSide;
        for (std::size_t column = 0; column < kPatchSide; ++column) {
            patch.own[first + column] = static_cast<std::uint8_t>((own[column] + count / 2) / count);
            patch.others[first + column] = static_cast<std::uint8_t>((others[column] + count / 2) / count);
        }
    }
    return patch;
}

}  // namespace dravik::engine
