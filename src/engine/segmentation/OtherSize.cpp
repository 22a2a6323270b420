#include "engine/segmentation/OtherSize.h"

namespace dravik::engine {
namespace {

// Height of small letters as a part of that of capitals, in most print.
constexpr float kSmallLetters = 0.73f;
// How much surer the characters of a line must be as small letters alone than as capitals and figures, in
// logarithms of confidence: most print on parts has no small letters, and 2 and z, 0 and o differ by their
// height only. Beside lines of the same height there is more doubt.
constexpr double kSmallLettersDoubt = 1, kSmallLettersBesideDoubt = 2;
// Beside a line that is higher by about as much as capitals are higher than small letters, no such margin is
// asked for; a line whose characters are all of one height may even be a little less sure.
constexpr float kLeastLower = 0.6f, kMostLower = 0.87f;
constexpr double kNeighbourDoubt = 0, kOneHeightNeighbourDoubt = -1;

}  // namespace

std::optional<OtherSize> otherSize(std::span<const LineMetrics> lines, const LineMetrics& line) {
    for (const LineMetrics& beside : lines)
        if (const float share = line.capHeight / beside.capHeight; share > kLeastLower && share < kMostLower)
            return OtherSize{beside.capHeight, line.oneHeight ? kOneHeightNeighbourDoubt : kNeighbourDoubt};
    if (!line.oneHeight) return std::nullopt;
    return OtherSize{line.capHeight / kSmallLetters,
                     lines.size() > 1 ? kSmallLettersBesideDoubt : kSmallLettersDoubt};
}

}  // namespace dravik::engine
