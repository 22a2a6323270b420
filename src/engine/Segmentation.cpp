#include "engine/Segmentation.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

#include "engine/PrintLooks.h"

namespace dravik {
namespace {

// How much a difference in likeness matters beside the number of views that agree; measured on generated part
// images.
constexpr double kVoteSpread = 0.8;
// Log odds of being right below which there is only noise, not print.
constexpr double kNoPrint = -2.5;

// Of the candidates with the number of characters that most views agree on, the likeliest: views weigh as
// much as they are likely. `candidates` is not empty.
std::size_t agreed(const std::vector<Candidate>& candidates) {
    const auto worse = [](const Candidate& a, const Candidate& b) { return a.value < b.value; };
    const double most = std::max_element(candidates.begin(), candidates.end(), worse)->value;
    std::map<std::size_t, double> votes;
    for (const Candidate& one : candidates)
        votes[one.characters] += std::exp((one.value - most) / kVoteSpread);
    const std::size_t characters =
        std::max_element(votes.begin(), votes.end(), [](const auto& a, const auto& b) {
            return a.second < b.second;
        })->first;
    std::size_t best = candidates.size();
    for (std::size_t i = 0; i < candidates.size(); ++i)
        if (candidates[i].characters == characters &&
            (best == candidates.size() || worse(candidates[best], candidates[i])))
            best = i;
    return best;
}

}  // namespace

Region Segmentation::place(const Glyph& glyph) const {
    int left = ink.width, top = ink.height, right = 0, bottom = 0;
    for (const Run& run : glyph.piece.runs) {
        left = std::min<int>(left, run.x0);
        right = std::max<int>(right, run.x1);
        top = std::min<int>(top, run.y);
        bottom = std::max(bottom, run.y + 1);
    }
    const auto pixels = [this](int value) { return static_cast<float>(value) * ink.scale; };
    return {ink.left + static_cast<int>(pixels(left)), ink.top + static_cast<int>(pixels(top)),
            ink.left + static_cast<int>(std::ceil(pixels(right))),
            ink.top + static_cast<int>(std::ceil(pixels(bottom)))};
}

Segmentation segment(const GreyImage& image) {
    std::vector<Candidate> candidates = printCandidates(image);
    if (candidates.empty()) return {};
    const std::size_t best = agreed(candidates);
    if (candidates[best].value < kNoPrint) return {};
    if (candidates[best].seen) return std::move(*candidates[best].seen);
    for (Candidate& one : candidates) one.seen.reset();
    return seenAgain(image, candidates[best]);
}

}  // namespace dravik
