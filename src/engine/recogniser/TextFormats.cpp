#include "engine/recogniser/TextFormats.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "base/Text.h"

namespace dravik::engine {
namespace {

constexpr std::size_t kTexts = 12;
// As many texts as are assumed to have had every kind of character at a place, and every character of a kind.
constexpr double kAnyKind = 1, kAnyCharacter = 3;
// The places of a text are no sample of what it may be: a code changes its kind now and then.
constexpr double kTrust = 0.8;
// What makes a format: so many texts, of which so large a part has the same kind at so large a part of the
// places; and at how large a part a text has to have it too.
constexpr std::size_t kFewestTexts = 3;
constexpr double kSameKind = 0.8, kSettled = 0.9, kFits = 0.75;

enum Kind : std::size_t { Capital, Small, Digit, Other };
constexpr std::size_t kKinds = 4;
constexpr std::array<double, kKinds> kCharacters = {26, 26, 10, 40};

Kind kindOf(std::string_view character) {
    if (character.size() != 1) return Other;
    const char c = character.front();
    return c >= 'A' && c <= 'Z'   ? Capital
           : c >= 'a' && c <= 'z' ? Small
           : c >= '0' && c <= '9' ? Digit
                                  : Other;
}

}  // namespace

void TextFormats::add(std::string_view text) {
    Text one = characters(text);
    if (one.empty()) return;
    auto& texts = texts_[one.size()];
    texts.push_back(std::move(one));
    if (texts.size() > kTexts) texts.pop_front();
}

const std::deque<TextFormats::Text>& TextFormats::texts(std::size_t length) const {
    static const std::deque<Text> none;
    const auto found = texts_.find(length);
    return found == texts_.end() ? none : found->second;
}

double TextFormats::kindWeight(std::size_t length, std::size_t place, std::string_view character) const {
    const auto& known = texts(length);
    if (known.empty() || place >= length) return 1;
    const auto ofKind = std::count_if(known.begin(), known.end(), [&](const Text& text) {
        return kindOf(text[place]) == kindOf(character);
    });
    // Against a place where all kinds are as likely.
    return std::pow((static_cast<double>(ofKind) + kAnyKind / kKinds) /
                        (static_cast<double>(known.size()) + kAnyKind) * kKinds,
                    kTrust);
}

double TextFormats::weight(std::size_t length, std::size_t place, std::string_view character) const {
    const auto& known = texts(length);
    if (known.empty() || place >= length) return 1;
    const Kind kind = kindOf(character);
    double ofKind = 0, same = 0;
    for (const Text& text : known) {
        if (kindOf(text[place]) == kind) ++ofKind;
        if (text[place] == character) ++same;
    }
    // Against a place where all characters of the kind are as likely.
    const double factor =
        (same + kAnyCharacter / kCharacters[kind]) / (ofKind + kAnyCharacter) * kCharacters[kind];
    return kindWeight(length, place, character) * std::pow(factor, kTrust);
}

bool TextFormats::fit(std::span<const std::string> text) const {
    const auto& known = texts(text.size());
    if (known.size() < kFewestTexts) return false;
    double settled = 0, fitting = 0;
    for (std::size_t place = 0; place < text.size(); ++place) {
        std::array<double, kKinds> ofKinds{};
        for (const Text& one : known) ++ofKinds[kindOf(one[place])];
        const double most = kSameKind * static_cast<double>(known.size());
        if (*std::max_element(ofKinds.begin(), ofKinds.end()) >= most) ++settled;
        if (ofKinds[kindOf(text[place])] >= most) ++fitting;
    }
    const double places = static_cast<double>(text.size());
    return settled >= kSettled * places && fitting >= kFits * places;
}

}  // namespace dravik::engine
