#include "engine/Segmentation.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <memory>
#include <utility>

#include "engine/PrintLooks.h"

namespace dravik {
namespace {

// How much a difference in likeness matters beside the number of views that agree; measured on generated part
// images.
constexpr double kVoteSpread = 1.3;
// Log odds of being right below which there is only noise, not print.
constexpr double kNoPrint = -2.5;
// Other numbers of characters worth a thought.
constexpr std::size_t kMostOthers = 4;
constexpr double kLeastOther = -4;

// A number of characters that was seen: its likeliest candidate, and the weight of all that saw it.
struct Number {
    Candidate* best = nullptr;
    double votes = 0;
};

// The likeliest first: views weigh as much as they are likely.
std::vector<Number> numbersSeen(std::vector<Candidate>& candidates) {
    double most = -1e9;
    for (const Candidate& one : candidates) most = std::max(most, one.value);
    std::map<std::size_t, Number> byNumber;
    for (Candidate& one : candidates) {
        Number& number = byNumber[one.characters];
        number.votes += std::exp((one.value - most) / kVoteSpread);
        if (!number.best || one.value > number.best->value) number.best = &one;
    }
    std::vector<Number> result;
    for (const auto& [characters, number] : byNumber) result.push_back(number);
    std::stable_sort(result.begin(), result.end(),
                     [](const Number& a, const Number& b) { return a.votes > b.votes; });
    return result;
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
    const std::vector<Number> numbers = numbersSeen(candidates);
    if (numbers.empty() || numbers.front().best->value < kNoPrint) return {};
    std::vector<OtherView> others;
    for (std::size_t i = 1; i < std::min(numbers.size(), kMostOthers + 1); ++i) {
        const double odds = std::log(numbers[i].votes / numbers.front().votes);
        if (odds < kLeastOther) break;
        const Candidate& one = *numbers[i].best;
        others.push_back({one.look, one.region, one.scale, one.characters, odds});
    }
    Candidate& best = *numbers.front().best;
    const std::unique_ptr<Segmentation> held = std::move(best.seen);
    for (Candidate& one : candidates) one.seen.reset();
    Segmentation result = held ? std::move(*held) : seenAgain(image, best.region, best.scale, best.look);
    result.others = std::move(others);
    return result;
}

Segmentation segment(const GreyImage& image, const OtherView& view) {
    return seenAgain(image, view.region, view.scale, view.look);
}

}  // namespace dravik
