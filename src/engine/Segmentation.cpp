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

bool worse(const Candidate& a, const Candidate& b) {
    return a.value < b.value;
}

// Of the candidates with the number of characters that most views agree on, the likeliest: views weigh as
// much as they are likely. `candidates` is not empty.
Candidate& agreed(std::vector<Candidate>& candidates) {
    std::sort(candidates.rbegin(), candidates.rend(), worse);
    std::map<std::size_t, double> votes;
    for (const Candidate& one : candidates)
        votes[one.found.glyphs.size()] += std::exp((one.value - candidates.front().value) / kVoteSpread);
    const auto count = std::max_element(votes.begin(), votes.end(),
                                        [](const auto& a, const auto& b) { return a.second < b.second; });
    return *std::find_if(candidates.begin(), candidates.end(),
                         [&](const Candidate& one) { return one.found.glyphs.size() == count->first; });
}

}  // namespace

Region Segmentation::place(const Glyph& glyph) const {
    int left = ink.width, top = ink.height, right = 0, bottom = 0;
    for (const Run& run : glyph.piece.runs) {
        left = std::min(left, run.x0);
        right = std::max(right, run.x1);
        top = std::min(top, run.y);
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
    return std::move(agreed(candidates).found);
}

}  // namespace dravik
