#include "engine/segmentation/Segmentation.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>

#include "base/StableSort.h"
#include "engine/segmentation/Contenders.h"

namespace dravik::engine {
namespace {

// Log odds of being right below which there is only noise, not print, and above which a single view is beyond
// doubt.
constexpr double kNoPrint = -2.5, kClear = 3;
// What looks like noise is print all the same where its characters are together so much likelier whole ones
// than usual, as a logarithm.
constexpr double kSurelyWhole = 5;
constexpr double kNotJudged = -1e9;

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

Segmentation segment(const GreyImage& image, ViewJudge judge, const std::stop_token& stop,
                     const PrintSettings& print, Search search) {
    std::vector<Candidate> candidates = printCandidates(image, search, judge, stop, print);
    std::vector<Contender> numbers = contenders(candidates);
    const auto isNoPrint = [](const Contender& one) {
        return one.best->value < kNoPrint && one.best->whole.odds < kSurelyWhole;
    };
    if (stop.stop_requested() || std::all_of(numbers.begin(), numbers.end(), isNoPrint)) return {};
    for (Candidate& one : candidates)
        if (&one != numbers.front().best) one.seen.reset();
    const bool isJudged = judge && !numbers.front().best->whole.isClear &&
                          (numbers.size() > 1 || numbers.front().best->value < kClear) &&
                          std::all_of(numbers.begin(), numbers.end(),
                                      [](const Contender& one) { return isWorthJudging(*one.best); });
    Segmentation result;
    if (isJudged) {
        // The most whole first; those that come near it have their pieces made likelier, one after the other,
        // since each takes room.
        stableSort(numbers.begin(), numbers.end(), [](const Contender& a, const Contender& b) {
            return a.odds + a.best->whole.odds > b.odds + b.best->whole.odds;
        });
        const Candidate* last = nullptr;
        double most = kNotJudged;
        for (Contender& number : numbers) {
            if (stop.stop_requested()) return {};
            double asFound = number.best->whole.odds;
            const auto isFar = [&] { return number.odds + asFound < most - kMuchLessWhole; };
            const LikeliestPieces* known = number.best->likeliest.get();
            if (asFound <= kNotJudged || (!isFar() && !known)) {
                result = {};
                result = taken(image, *number.best);
                last = number.best;
                if (asFound <= kNotJudged) asFound = judge(result, Pieces::AsFound).odds;
            }
            if (isFar()) {
                number.odds += asFound;
                continue;
            }
            if (!known) {
                const double odds = judge(result, Pieces::Likeliest).odds;
                number.best->likeliest =
                    std::make_shared<LikeliestPieces>(LikeliestPieces{result.glyphs, odds});
                known = number.best->likeliest.get();
            }
            number.odds += known->odds;
            number.characters = known->glyphs.size();
            number.isJudged = true;
            most = std::max(most, number.odds);
        }
        stableSort(numbers.begin(), numbers.end(),
                   [](const Contender& a, const Contender& b) { return a.odds > b.odds; });
        if (last != numbers.front().best) result = {};
    }
    Contender& best = numbers.front();
    if (result.glyphs.empty()) {
        const bool isHeld = best.best->seen != nullptr;
        result = taken(image, *best.best);
        if (isJudged && best.best->likeliest) {
            result.glyphs = best.best->likeliest->glyphs;
            result.leftOut.clear();
        } else if (isJudged || (best.best->isImproved && !isHeld)) {
            judge(result, Pieces::Likeliest);
        } else if (judge && !best.best->isImproved && isWorthJudging(*best.best)) {
            // Characters that touch may look like text of fewer ones.
            Wholeness whole = best.best->whole;
            if (whole.odds <= kNotJudged) whole = judge(result, Pieces::AsFound);
            if (!whole.isSure || !result.leftOut.empty()) judge(result, Pieces::Likeliest);
            best.characters = result.glyphs.size();
        }
    }
    result.likeness = best.best->value;
    for (const Contender& number : numbers) {
        const auto isKnown = [&](const OtherView& view) { return view.characters == number.characters; };
        if (number.characters == best.characters ||
            std::any_of(result.others.begin(), result.others.end(), isKnown))
            continue;
        const Candidate& one = *number.best;
        result.others.push_back({one.look, one.region, one.scale, number.characters, number.odds - best.odds,
                                 number.isJudged || one.isImproved});
    }
    return result;
}

Segmentation segment(const GreyImage& image, const OtherView& view, ViewJudge judge) {
    Segmentation result = seenAgain(image, view.region, view.scale, view.look);
    if (judge && view.isJudged) judge(result, Pieces::Likeliest);
    return result;
}

}  // namespace dravik::engine
