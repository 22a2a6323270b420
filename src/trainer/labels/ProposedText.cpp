#include "trainer/labels/ProposedText.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "base/Text.h"

namespace dravik::trainer {
namespace {

// Characters that are less sure are shown to the operator before they are included.
constexpr double kSure = 0.9;
constexpr double kProbablyNone = 0.5;

std::string percent(double share) {
    return std::to_string(std::lround(share * 100)) + " %";
}

}  // namespace

std::vector<ProposedCharacter> propose(std::span<const engine::CharacterCandidates> found,
                                       const engine::TextFormats& format) {
    std::vector<ProposedCharacter> result;
    for (std::size_t place = 0; place < found.size(); ++place) {
        std::vector<std::pair<double, const std::string*>> odds;
        double sum = 1;  // of being something else
        for (const engine::LabelCandidate& one : found[place].candidates) {
            const double sure = std::min(one.confidence, 0.9999);
            odds.push_back(
                {sure / (1 - sure) * format.weight(found.size(), place, one.character), &one.character});
            sum += odds.back().first;
        }
        std::partial_sort(odds.begin(), odds.begin() + std::min<std::ptrdiff_t>(2, std::ssize(odds)),
                          odds.end(), [](const auto& a, const auto& b) { return a.first > b.first; });
        ProposedCharacter& one = result.emplace_back();
        one.character = *odds.front().second;
        one.confidence = odds.front().first / sum;
        if (found[place].noCharacter > kProbablyNone && one.confidence < kSure)
            one.doubt = "may be a part of a character, two of them, or dirt";
        else if (one.confidence < kSure && odds.size() > 1 && odds[1].first > 0.1 * odds[0].first)
            one.doubt = one.character + " or " + *odds[1].second + " (" + percent(one.confidence) + " sure)";
        else if (one.confidence < kSure)
            one.doubt = one.character + ", " + percent(one.confidence) + " sure";
    }
    return result;
}

void ProposedText::clear() {
    proposal_.clear();
    accepted_.clear();
    origins_.assign(text_.size(), std::nullopt);
}

void ProposedText::setProposal(std::vector<ProposedCharacter> characters) {
    std::vector<bool> accepted(characters.size(), false);
    if (characters.size() == proposal_.size())
        for (std::size_t i = 0; i < characters.size(); ++i)
            accepted[i] = accepted_[i] && characters[i].character == proposal_[i].character;
    proposal_ = std::move(characters);
    accepted_ = std::move(accepted);
    text_.clear();
    origins_.clear();
    for (std::size_t i = 0; i < proposal_.size(); ++i) {
        text_.push_back(proposal_[i].character);
        origins_.emplace_back(i);
    }
}

void ProposedText::setTyped(const std::string& text) {
    std::vector<std::string> now = dravik::characters(text);
    const auto [oldStart, newStart] = std::mismatch(text_.begin(), text_.end(), now.begin(), now.end());
    // A first character that is typed over a whole text is typed, whichever it is.
    const bool isTypedAnew = now.size() == 1 && text_.size() > 1;
    const auto start = isTypedAnew ? 0 : static_cast<std::size_t>(newStart - now.begin());
    std::size_t tail = 0;
    while (!isTypedAnew && tail < text_.size() - start && tail < now.size() - start &&
           text_[text_.size() - 1 - tail] == now[now.size() - 1 - tail])
        ++tail;
    std::vector<std::optional<std::size_t>> origins(now.size());
    std::copy_n(origins_.begin(), start, origins.begin());
    std::copy(origins_.end() - static_cast<std::ptrdiff_t>(tail), origins_.end(),
              origins.end() - static_cast<std::ptrdiff_t>(tail));
    text_ = std::move(now);
    origins_ = std::move(origins);
}

void ProposedText::setKnown(const std::string& text) {
    text_ = dravik::characters(text);
    origins_.assign(text_.size(), std::nullopt);
}

std::string ProposedText::proposal() const {
    std::string text;
    for (const ProposedCharacter& one : proposal_) text += one.character;
    return text;
}

bool ProposedText::isDoubtful(std::size_t place) const {
    return place < origins_.size() && origins_[place] == place && !proposal_[place].doubt.empty() &&
           !accepted_[place];
}

std::optional<std::size_t> ProposedText::nextDoubt() const {
    for (std::size_t place = 0; place < origins_.size(); ++place)
        if (isDoubtful(place)) return place;
    return std::nullopt;
}

void ProposedText::accept(std::size_t place) {
    if (place < accepted_.size()) accepted_[place] = true;
}

}  // namespace dravik::trainer
