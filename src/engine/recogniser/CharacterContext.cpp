#include "engine/recogniser/CharacterContext.h"

#include <algorithm>
#include <array>
#include <limits>

namespace dravik::engine {
namespace {

enum Kind : std::size_t { Capital, Digit, Small, Mark, kKinds };

Kind kindOf(std::size_t place) {
    const char c = kRecognisedCharacters[place];
    return c >= 'A' && c <= 'Z'   ? Capital
           : c >= '0' && c <= '9' ? Digit
           : c >= 'a' && c <= 'z' ? Small
                                  : Mark;
}

// By how much less likely a kind follows another than characters of one kind follow each other, in
// logarithms.
constexpr std::array<std::array<float, kKinds>, kKinds> kUnlikely = {
    {{0.0f, 1.2f, 1.2f, 0.7f}, {1.2f, 0.0f, 2.0f, 0.5f}, {2.0f, 2.0f, 0.0f, 0.7f}, {0.7f, 0.3f, 0.9f, 0.7f}}};

}  // namespace

std::vector<std::size_t> likeliestAlone(std::span<const PatchLikelihoods> line) {
    std::vector<std::size_t> result;
    for (const PatchLikelihoods& one : line)
        result.push_back(
            static_cast<std::size_t>(std::max_element(one.begin(), one.end() - 1) - one.begin()));
    return result;
}

// The best path by the kinds of characters: of each kind only its likeliest character can be on it.
std::vector<std::size_t> likeliestTogether(std::span<const PatchLikelihoods> line) {
    struct Step {
        std::array<float, kKinds> value;
        std::array<std::size_t, kKinds> character, before;
    };
    constexpr float kNever = -std::numeric_limits<float>::max();
    std::vector<Step> steps;
    for (const PatchLikelihoods& one : line) {
        Step step;
        step.value.fill(kNever);
        for (std::size_t place = 0; place < kNoCharacter; ++place)
            if (const Kind kind = kindOf(place); one[place] > step.value[kind]) {
                step.value[kind] = one[place];
                step.character[kind] = place;
            }
        if (!steps.empty())
            for (std::size_t kind = 0; kind < kKinds; ++kind) {
                float most = kNever;
                for (std::size_t last = 0; last < kKinds; ++last)
                    if (const float value = steps.back().value[last] - kUnlikely[last][kind]; value > most) {
                        most = value;
                        step.before[kind] = last;
                    }
                step.value[kind] += most;
            }
        steps.push_back(step);
    }
    std::vector<std::size_t> result(line.size());
    if (line.empty()) return result;
    const auto& last = steps.back().value;
    std::size_t kind = static_cast<std::size_t>(std::max_element(last.begin(), last.end()) - last.begin());
    for (std::size_t i = line.size(); i-- > 0; kind = steps[i].before[kind])
        result[i] = steps[i].character[kind];
    return result;
}

}  // namespace dravik::engine
