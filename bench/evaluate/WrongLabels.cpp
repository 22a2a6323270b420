#include "evaluate/WrongLabels.h"

#include <algorithm>
#include <cstdio>

#include "base/Text.h"

namespace dravik {

using namespace engine;

void WrongLabels::tryOut(EmbeddedTool& tool, const std::vector<std::string>& text) {
    if (text.size() < 2 || tool.found().size() != text.size()) return;
    const std::vector<CharacterCandidates> candidates = tool.candidatesWork()({});
    const auto contradicted = [&](const std::vector<std::string>& typed) {
        std::string all;
        for (const std::string& one : typed) all += one;
        const std::vector<CharacterLikelihood> said = tool.compare(all);
        std::vector<bool> places(typed.size());
        for (std::size_t i = 0; i < typed.size(); ++i) places[i] = contradicts(candidates[i], said[i]);
        return places;
    };
    const auto isWrong = [&](const std::vector<std::string>& typed, std::size_t i) {
        return typed[i] != text[i] && !areDrawnAlike(typed[i], text[i]);
    };
    const auto count = [&](Kind& kind, const std::vector<std::string>& typed) {
        std::vector<std::size_t> wrong;
        for (std::size_t i = 0; i < text.size(); ++i)
            if (isWrong(typed, i)) wrong.push_back(i);
        if (wrong.empty()) return;
        const std::vector<bool> places = contradicted(typed);
        ++kind.typed;
        kind.found += std::any_of(wrong.begin(), wrong.end(), [&](std::size_t i) { return places[i]; });
    };
    ++right_;
    const std::vector<bool> places = contradicted(text);
    doubted_ += std::find(places.begin(), places.end(), true) != places.end();

    const auto place = static_cast<std::size_t>(random_.whole(0, static_cast<int>(text.size()) - 1));
    std::vector<std::string> typed = text;
    while (!isWrong(typed, place))
        typed[place] = std::string(1, random_.of(std::string(kRecognisedCharacters)));
    count(kinds_[0], typed);
    const std::string other = typed[place];
    typed = text;
    const std::size_t first = std::min(place, text.size() - 2);
    std::swap(typed[first], typed[first + 1]);
    count(kinds_[1], typed);
    typed = text;
    typed.erase(typed.begin() + static_cast<std::ptrdiff_t>(place));
    typed.push_back(other);
    count(kinds_[2], typed);
}

void WrongLabels::print() const {
    for (const Kind& kind : kinds_)
        std::printf("wrong labels, %s: %d of %d pointed out (%.1f %%)\n", kind.name, kind.found, kind.typed,
                    100.0 * kind.found / std::max(1, kind.typed));
    std::printf("right labels doubted: %d of %d (%.1f %%)\n", doubted_, right_,
                100.0 * doubted_ / std::max(1, right_));
}

}  // namespace dravik
