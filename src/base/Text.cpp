#include "base/Text.h"

#include "base/Utf.h"

namespace dravik {
namespace {

template <class Visit>
void eachCharacter(std::string_view text, Visit visit) {
    while (!text.empty()) {
        const Utf8Character first = firstCharacter(text);
        const std::size_t bytes = first.valid ? first.bytes : 1;
        visit(text.substr(0, bytes));
        text.remove_prefix(bytes);
    }
}

template <class Map>
std::string mapped(std::string_view text, Map map) {
    std::string result;
    eachCharacter(text, [&](std::string_view character) {
        const auto code = codeOf(character);
        const auto other = map(code);
        result += other == code ? std::string(character) : characterOf(other);
    });
    return result;
}

// Small letters whose capitals stand `distance` before them: every one from first to last, or with a step of
// 2 every second one, its capital between.
struct SmallLetters {
    std::int32_t first;
    std::int32_t last;
    std::int32_t distance;
    std::int32_t step = 1;

    constexpr bool have(std::int32_t code) const {
        return first <= code && code <= last && (code - first) % step == 0;
    }
};

constexpr SmallLetters kSmallLetters[] = {
    // Latin
    {'a', 'z', 32},
    {0xE0, 0xF6, 32},
    {0xF8, 0xFE, 32},
    {0xFF, 0xFF, -121},
    {0x101, 0x12F, 1, 2},
    {0x133, 0x137, 1, 2},
    {0x13A, 0x148, 1, 2},
    {0x14B, 0x177, 1, 2},
    {0x17A, 0x17E, 1, 2},
    {0x1E01, 0x1E95, 1, 2},
    {0x1EA1, 0x1EFF, 1, 2},
    // Greek
    {0x3AC, 0x3AC, 38},
    {0x3AD, 0x3AF, 37},
    {0x3B1, 0x3C1, 32},
    {0x3C3, 0x3CB, 32},
    {0x3CC, 0x3CC, 64},
    {0x3CD, 0x3CE, 63},
    // Cyrillic
    {0x430, 0x44F, 32},
    {0x450, 0x45F, 80},
    {0x461, 0x481, 1, 2},
    {0x48B, 0x4BF, 1, 2},
    {0x4C2, 0x4CE, 1, 2},
    {0x4D1, 0x52F, 1, 2},
    // Armenian
    {0x561, 0x586, 48},
};
constexpr std::int32_t kFinalSigma = 0x3C2;
constexpr std::int32_t kCapitalSigma = 0x3A3;

}  // namespace

std::vector<std::string> characters(std::string_view text) {
    std::vector<std::string> result;
    eachCharacter(text, [&](std::string_view character) { result.emplace_back(character); });
    return result;
}

std::size_t characterCount(std::string_view text) {
    std::size_t count = 0;
    eachCharacter(text, [&](std::string_view) { ++count; });
    return count;
}

std::string withoutLast(std::string_view text, std::size_t count) {
    auto all = characters(text);
    std::string result;
    for (std::size_t i = 0; i + count < all.size(); ++i) result += all[i];
    return result;
}

std::int32_t codeOf(std::string_view character) {
    if (character.empty()) return 0;
    const Utf8Character first = firstCharacter(character);
    return first.valid ? static_cast<std::int32_t>(first.code) : static_cast<unsigned char>(character[0]);
}

std::string characterOf(std::int32_t code) {
    return utf8Of(static_cast<char32_t>(code));
}

bool isInvisible(std::int32_t code) {
    const auto within = [&](std::int32_t first, std::int32_t last) { return code >= first && code <= last; };
    return code == 0xAD || code == 0xFEFF || within(0x200B, 0x200F) || within(0x2028, 0x202E) ||
           within(0x2060, 0x2064);
}

bool isPrintable(std::string_view text) {
    bool all = true;
    eachCharacter(text, [&](std::string_view character) {
        const Utf8Character first = firstCharacter(character);
        all &= first.valid && first.code >= 0x20 && (first.code < 0x7F || first.code >= 0xA0);
    });
    return all;
}

std::string upperCase(std::string_view text) {
    return mapped(text, [](std::int32_t code) {
        if (code == kFinalSigma) return kCapitalSigma;
        for (const auto& letters : kSmallLetters)
            if (letters.have(code)) return code - letters.distance;
        return code;
    });
}

std::string lowerCase(std::string_view text) {
    return mapped(text, [](std::int32_t code) {
        for (const auto& letters : kSmallLetters)
            if (letters.have(code + letters.distance)) return code + letters.distance;
        return code;
    });
}

std::string trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) return {};
    return std::string(text.substr(first, text.find_last_not_of(' ') - first + 1));
}

bool contains(std::string_view text, std::string_view part) {
    return !text.empty() && text.find(part) != std::string_view::npos;
}

}  // namespace dravik
