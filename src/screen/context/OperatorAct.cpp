#include "screen/context/OperatorAct.h"

#include <algorithm>

namespace dravik::screen {
namespace {

constexpr std::size_t kMostNamed = 10;

std::string joined(const std::vector<std::string>& characters, std::size_t count, std::string_view between) {
    std::string text;
    for (std::size_t i = 0; i < count; ++i) text += (i > 0 ? std::string(between) : "") + characters[i];
    return text;
}

std::string counted(std::size_t samples) {
    return samples == 1 ? "1 sample" : std::to_string(samples) + " samples";
}

// "3 samples of B", "3 samples" of several characters.
std::string ofOne(const std::vector<std::string>& characters) {
    const bool one = std::all_of(characters.begin(), characters.end(),
                                 [&](const auto& character) { return character == characters.front(); });
    return counted(characters.size()) + (one && !characters.empty() ? " of " + characters.front() : "");
}

std::string included(const std::vector<std::string>& characters) {
    return "include of " + (characters.size() <= kMostNamed ? joined(characters, characters.size(), "")
                                                            : counted(characters.size()));
}

}  // namespace

bool OperatorAct::deletes() const noexcept {
    switch (kind) {
        case Kind::UndoOfInclude:
        case Kind::DeletionInGrid:
        case Kind::DeletionOfBin:
        case Kind::DeletionByDistance:
        case Kind::DeletionOfCharacter:
        case Kind::Exclusion:
            return true;
        default:
            return false;
    }
}

std::string actName(const OperatorAct& act) {
    using Kind = OperatorAct::Kind;
    switch (act.kind) {
        case Kind::Include:
            return included(act.characters);
        case Kind::UndoOfInclude:
            return "removal of " + counted(act.samples()) + " of the last include";
        case Kind::Exclusion:
            return "removal of " + act.subject + " from the font";
        case Kind::CharacterSet:
            return "change of the character set";
        case Kind::Learn:
            return "learning";
        case Kind::Revert:
            return "revert of " + act.subject;
        case Kind::Save:
            return "save of " + act.subject;
        default:
            return "deletion of " + ofOne(act.characters);
    }
}

std::string deletedText(const OperatorAct& act) {
    if (!act.deletes() || act.characters.empty()) return {};
    // As a step back in the history says it; the screen deletes the last sample first.
    if (act.kind == OperatorAct::Kind::UndoOfInclude)
        return "Undone: " + included({act.characters.rbegin(), act.characters.rend()});
    const std::size_t count = act.characters.size();
    const std::size_t named = std::min(count, kMostNamed);
    return "Deleted " + joined(act.characters, named, ", ") +
           (count > named ? " and " + std::to_string(count - named) + " more" : "");
}

}  // namespace dravik::screen
