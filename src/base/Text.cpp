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
        const bool latin = code >= 0xE0 && code <= 0xFE && code != 0xF7;
        return (code >= 'a' && code <= 'z') || latin ? code - 32 : code;
    });
}

std::string lowerCase(std::string_view text) {
    return mapped(text, [](std::int32_t code) {
        const bool latin = code >= 0xC0 && code <= 0xDE && code != 0xD7;
        return (code >= 'A' && code <= 'Z') || latin ? code + 32 : code;
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
