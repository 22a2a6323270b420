#include "trainer/labels/LabelFormat.h"

#include <cmath>

#include "base/Text.h"

namespace dravik::trainer {
namespace {

constexpr std::size_t kTexts = 12;
// As many texts as are assumed to have had every kind of character at a place, and every character of a kind.
constexpr double kAnyKind = 1, kAnyCharacter = 3;
// The places of a text are no sample of what it may be: a code changes its kind now and then.
constexpr double kTrust = 0.8;

struct Kind {
    char name;
    double characters;
};

Kind kindOf(std::string_view character) {
    if (character.size() != 1) return {'o', 40};
    const char c = character.front();
    if (c >= 'A' && c <= 'Z') return {'A', 26};
    if (c >= 'a' && c <= 'z') return {'a', 26};
    if (c >= '0' && c <= '9') return {'0', 10};
    return {'o', 40};
}
constexpr double kKinds = 4;

}  // namespace

void LabelFormat::add(std::string_view text) {
    auto one = characters(text);
    if (one.empty()) return;
    auto& texts = texts_[one.size()];
    texts.push_back(std::move(one));
    if (texts.size() > kTexts) texts.pop_front();
}

double LabelFormat::weight(std::size_t length, std::size_t place, std::string_view character) const {
    const auto found = texts_.find(length);
    if (found == texts_.end() || place >= length) return 1;
    const Kind kind = kindOf(character);
    double ofKind = 0, same = 0;
    for (const auto& text : found->second) {
        if (kindOf(text[place]).name == kind.name) ++ofKind;
        if (text[place] == character) ++same;
    }
    const double texts = static_cast<double>(found->second.size());
    // Against a place where all kinds are as likely, and all characters of a kind.
    const double kindFactor = (ofKind + kAnyKind / kKinds) / (texts + kAnyKind) * kKinds;
    const double characterFactor =
        (same + kAnyCharacter / kind.characters) / (ofKind + kAnyCharacter) * kind.characters;
    return std::pow(kindFactor * characterFactor, kTrust);
}

}  // namespace dravik::trainer
