#include "engine/segmentation/Segmentation.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>

#include "engine/segmentation/CharacterShapes.h"
#include "engine/segmentation/Contenders.h"

namespace dravik::engine {
namespace {

// Log odds of being right below which there is only noise, not print.
constexpr double kNoPrint = -2.5;
// Where looks differ by more characters, some see other things than characters, of which shapes tell little.
constexpr std::size_t kMostDifferent = 2;
// What the shapes of the characters weigh beside the votes of the looks; measured on generated part images.
constexpr double kShapeShare = 0.33;

// Judging more or larger print would take long.
constexpr std::size_t kMostJudged = 300;
constexpr double kMostPixelsJudged = 1'000'000;

bool isWorthJudging(const Contender& number) {
    const Candidate& one = *number.best;
    const double pixels = static_cast<double>(one.region.width()) * one.region.height() /
                          (static_cast<double>(one.scale) * static_cast<double>(one.scale));
    return one.characters <= kMostJudged && pixels <= kMostPixelsJudged;
}

Segmentation taken(const GreyImage& image, Candidate& candidate) {
    const std::unique_ptr<Segmentation> held = std::move(candidate.seen);
    return held ? std::move(*held) : seenAgain(image, candidate.region, candidate.scale, candidate.look);
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

Segmentation segment(const GreyImage& image, const std::stop_token& stop, const PrintSettings& print) {
    std::vector<Candidate> candidates = printCandidates(image, Search::UntilClear, stop, print);
    std::vector<Contender> numbers = contenders(candidates);
    if (stop.stop_requested() || numbers.empty() || numbers.front().best->value < kNoPrint) return {};
    const std::size_t first = numbers.front().best->characters;
    std::erase_if(numbers, [first](const Contender& one) {
        const std::size_t characters = one.best->characters;
        return characters > first + kMostDifferent || characters + kMostDifferent < first;
    });
    for (Candidate& one : candidates)
        if (&one != numbers.front().best) one.seen.reset();
    Segmentation result;
    if (numbers.size() > 1 && std::all_of(numbers.begin(), numbers.end(), isWorthJudging)) {
        // One after the other, since each takes room.
        for (Contender& number : numbers) {
            if (stop.stop_requested()) return {};
            result = {};
            result = taken(image, *number.best);
            number.odds += kShapeShare * shapeEvidence(result);
        }
        const Contender last = numbers.back();
        std::stable_sort(numbers.begin(), numbers.end(),
                         [](const Contender& a, const Contender& b) { return a.odds > b.odds; });
        if (last.best != numbers.front().best) result = {};
    }
    const Contender& best = numbers.front();
    if (result.glyphs.empty()) result = taken(image, *best.best);
    result.likeness = best.best->value;
    for (std::size_t i = 1; i < numbers.size(); ++i) {
        const Candidate& one = *numbers[i].best;
        result.others.push_back(
            {one.look, one.region, one.scale, one.characters, numbers[i].odds - best.odds});
    }
    return result;
}

Segmentation segment(const GreyImage& image, const OtherView& view) {
    return seenAgain(image, view.region, view.scale, view.look);
}

}  // namespace dravik::engine
