// Where characters that touch are to be cut apart: every narrow place of a piece is judged by what it looks
// like, since a wide letter (M, W, m) has narrow places too and is to stay whole.
#pragma once

#include <array>
#include <span>
#include <vector>

#include "engine/image/Components.h"
#include "engine/segmentation/Decisions.h"
#include "engine/segmentation/RectifiedNetwork.h"
#include "engine/segmentation/TextLines.h"

namespace dravik::engine {

// What is known of a line whose pieces are to be cut; lengths in ink pixels.
struct LineScale {
    float baseline = 0;
    float capHeight = 1;
    float stroke = 1;      // usual width of strokes
    float usualWidth = 1;  // of the line's characters
    float pitch = 0;       // from character to character, 0 when the line is not evenly spaced
    float phase = 0;       // middle of a character, as far as the line is evenly spaced
    float evenness = 0;    // of the characters' middles: 1 all exactly in their places, 0 anywhere
};

// `pieces` are the line's, `pitch` their characterPitch.
LineScale lineScale(std::span<const Piece> pieces, const LineMetrics& metrics, float pitch);

inline constexpr std::size_t kCutTraits = 24;
using CutTraits = std::array<double, kCutTraits>;

struct PossibleCut {
    float along = 0;
    CutTraits traits{};
};

// The narrow places of a piece that is wide enough for two characters.
std::vector<PossibleCut> possibleCuts(const Piece& piece, const Frame& frame, const LineScale& scale);

// Log odds that characters touch there.
using CutNetwork = RectifiedNetwork<kCutTraits, 12>;
extern const CutNetwork kCutLikeness;

// The pieces with those cut that are likely to be several characters.
std::vector<Piece> cutTouching(std::vector<Piece> pieces, const Frame& frame, const LineScale& scale,
                               Decisions& cuts);

}  // namespace dravik::engine
