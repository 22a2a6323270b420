#include "engine/segmentation/Contenders.h"

#include <algorithm>
#include <cmath>
#include <map>

#include "base/StableSort.h"

namespace dravik::engine {
namespace {

// How much a difference in likeness matters beside the number of views that agree; measured on generated part
// images.
constexpr double kVoteSpread = 1.3;
constexpr std::size_t kMostContenders = 6;
constexpr double kLeastOdds = -4.5;

}  // namespace

std::vector<Contender> contenders(std::vector<Candidate>& candidates) {
    double most = -1e9;
    for (const Candidate& one : candidates) most = std::max(most, one.value);
    std::map<std::size_t, Contender> byNumber;  // the odds are their votes at first
    for (Candidate& one : candidates) {
        Contender& number = byNumber[one.characters];
        number.odds += std::exp((one.value - most) / kVoteSpread);
        number.characters = one.characters;
        if (!number.best || one.value > number.best->value) number.best = &one;
    }
    std::vector<Contender> result;
    result.reserve(byNumber.size());
    for (const auto& [characters, number] : byNumber) result.push_back(number);
    stableSort(result.begin(), result.end(),
               [](const Contender& a, const Contender& b) { return a.odds > b.odds; });
    if (result.empty()) return result;
    const double first = result.front().odds;
    for (Contender& one : result) one.odds = std::log(one.odds / first);
    std::erase_if(result, [](const Contender& one) { return one.odds < kLeastOdds; });
    result.resize(std::min(result.size(), kMostContenders));
    return result;
}

}  // namespace dravik::engine
