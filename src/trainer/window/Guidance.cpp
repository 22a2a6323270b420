#include "trainer/window/Guidance.h"

#include <algorithm>
#include <map>
#include <vector>

#include "base/Text.h"

namespace dravik::trainer {
namespace {

constexpr std::size_t kNamedPairs = 3;

// "Include 2 more parts with Q, 7 (1 sample each)." and the same for those of two samples.
std::string moreSamples(const engine::SampleColumns& committed) {
    std::map<std::int32_t, int> counts;
    for (const std::int32_t code : committed.codes) ++counts[code];
    std::string text;
    for (int has = 1; has < kFewestSamples; ++has) {
        std::vector<std::int32_t> few;
        for (const auto& [code, count] : counts)
            if (count == has) few.push_back(code);
        if (few.empty()) continue;
        const int missing = kFewestSamples - has;
        if (!text.empty()) text += " ";
        text += "Include " + std::to_string(missing) +
                (missing == 1 ? " more part with " : " more parts with ") + engine::listed(few) + " (" +
                std::to_string(has) + (has == 1 ? " sample" : " samples") +
                (few.size() == 1 ? ")." : " each).");
    }
    return text;
}

// The pairs that are taken for each other, whichever is taken for which.
std::string confusedPairs(const engine::HeldOutResult& check) {
    std::vector<std::pair<std::int32_t, std::int32_t>> pairs;
    for (const engine::Confusion& one : check.confusions) {
        const std::pair pair = std::minmax({one.code, one.readAs});
        if (std::find(pairs.begin(), pairs.end(), pair) == pairs.end()) pairs.push_back(pair);
    }
    if (pairs.empty()) return {};
    std::string text = "Look for wrong labels among ";
    const std::size_t named = std::min(pairs.size(), kNamedPairs);
    for (std::size_t i = 0; i < named; ++i)
        text += (i == 0           ? ""
                 : i + 1 == named ? " and "
                                  : ", ") +
                characterOf(pairs[i].first) + "/" + characterOf(pairs[i].second);
    return text + " (View > Gallery, read wrong in the check); where there are none, include more of both.";
}

}  // namespace

std::string guidanceText(const engine::SampleColumns& committed, const engine::HeldOutResult& check) {
    const std::string more = moreSamples(committed), confused = confusedPairs(check);
    return more.empty() || confused.empty() ? more + confused : more + "\n" + confused;
}

}  // namespace dravik::trainer
