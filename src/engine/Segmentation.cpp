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
constexpr double kVoteSpread = 1.25;
// Views of print whose heights differ by less than this factor are the same one.
constexpr float kSameSize = 1.1f;

bool worse(const Candidate& a, const Candidate& b) {
    return a.value < b.value;
}

// Of the candidates with the number of characters that most views agree on, the likeliest: views weigh as
// much as they are likely, and those of the same polarity, size and sharpness count once, since they see the
// same pieces. `candidates` is not empty.
Candidate& agreed(std::vector<Candidate>& candidates) {
    std::sort(candidates.rbegin(), candidates.rend(), worse);
    const double most = candidates.front().value;
    std::map<std::size_t, double> votes;
    for (std::size_t i = 0; i < candidates.size(); ++i) {
        const Candidate& one = candidates[i];
        const auto same = [&](const Candidate& other) {
            return other.found.glyphs.size() == one.found.glyphs.size() &&
                   other.found.look.dark == one.found.look.dark &&
                   (other.found.look.blur > 0) == (one.found.look.blur > 0) &&
                   other.height < kSameSize * one.height && one.height < kSameSize * other.height;
        };
        const auto end = candidates.begin() + static_cast<std::ptrdiff_t>(i);
        if (std::none_of(candidates.begin(), end, same))
            votes[one.found.glyphs.size()] += std::exp((one.value - most) / kVoteSpread);
    }
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
