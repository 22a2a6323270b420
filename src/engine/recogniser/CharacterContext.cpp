#include "engine/recogniser/CharacterContext.h"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

namespace dravik::engine {
namespace {

enum Kind : std::size_t { Capital, Digit, Small, Mark, kKinds };

// Nothing is known of what stands beside characters that the base recogniser does not know; they count as
// marks.
Kind kindOf(std::int32_t code) {
    return code >= 'A' && code <= 'Z'   ? Capital
           : code >= '0' && code <= '9' ? Digit
           : code >= 'a' && code <= 'z' ? Small
                                        : Mark;
}

// By how much less likely a kind follows another than characters of one kind follow each other, in
// logarithms.
constexpr std::array<std::array<float, kKinds>, kKinds> kUnlikely = {
    {{0.0f, 1.2f, 1.2f, 0.7f}, {1.2f, 0.0f, 2.0f, 0.5f}, {2.0f, 2.0f, 0.0f, 0.7f}, {0.7f, 0.3f, 0.9f, 0.7f}}};

constexpr float kNever = -std::numeric_limits<float>::max();

// The likeliest character of each kind, and the best way to it.
struct Step {
    std::array<float, kKinds> value;
    std::array<std::size_t, kKinds> place{}, before{};
};

Step likeliestOfKinds(std::span<const PossibleCharacter> possible) {
    Step step;
    step.value.fill(kNever);
    for (std::size_t place = 0; place < possible.size(); ++place)
        if (const Kind kind = kindOf(possible[place].code); possible[place].likelihood > step.value[kind]) {
            step.value[kind] = possible[place].likelihood;
            step.place[kind] = place;
        }
    return step;
}

}  // namespace

std::size_t likeliestAlone(const PatchLikelihoods& one) {
    return static_cast<std::size_t>(std::max_element(one.begin(), one.end() - 1) - one.begin());
}

// The best path by the kinds of characters: of each kind only its likeliest character can be on it.
std::vector<ChosenCharacter> likeliestTogether(std::span<const std::vector<PossibleCharacter>> line) {
    if (line.empty()) return {};
    std::vector<Step> steps;
    std::vector<std::size_t> alone, path(line.size());
    for (const std::vector<PossibleCharacter>& possible : line) {
        Step step = likeliestOfKinds(possible);
        alone.push_back(static_cast<std::size_t>(std::max_element(step.value.begin(), step.value.end()) -
                                                 step.value.begin()));
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
    const auto& last = steps.back().value;
    std::size_t kind = static_cast<std::size_t>(std::max_element(last.begin(), last.end()) - last.begin());
    for (std::size_t i = line.size(); i-- > 0; kind = steps[i].before[kind]) path[i] = kind;
    std::vector<ChosenCharacter> result;
    for (std::size_t i = 0; i < line.size(); ++i) {
        const auto unlikely = [&](std::size_t own) {
            return (i > 0 ? kUnlikely[path[i - 1]][own] : 0) +
                   (i + 1 < path.size() ? kUnlikely[own][path[i + 1]] : 0);
        };
        result.push_back({steps[i].place[path[i]], unlikely(alone[i]) - unlikely(path[i])});
    }
    return result;
}

std::vector<std::size_t> likeliestTogether(std::span<const PatchLikelihoods> line) {
    std::vector<std::vector<PossibleCharacter>> possible;
    for (const PatchLikelihoods& one : line) {
        std::vector<PossibleCharacter>& all = possible.emplace_back();
        for (std::size_t place = 0; place < kNoCharacter; ++place)
            all.push_back({kRecognisedCharacters[place], one[place]});
    }
    std::vector<std::size_t> result;
    for (const ChosenCharacter& one : likeliestTogether(std::span(std::as_const(possible))))
        result.push_back(one.place);
    return result;
}

}  // namespace dravik::engine
