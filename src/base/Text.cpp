#include "base/Text.h"

namespace dravik {
namespace {

// Length in bytes of the character that starts at `position`.
std::size_t characterLength(std::string_view text, std::size_t position) {
    const auto lead = static_cast<unsigned char>(text[position]);
    std::size_t length = 1;
    if (lead >= 0xC2 && lead <= 0xDF) length = 2;
    if (lead >= 0xE0 && lead <= 0xEF) length = 3;
    if (lead >= 0xF0 && lead <= 0xF4) length = 4;
    if (position + length > text.size()) return 1;
    for (std::size_t i = 1; i < length; ++i)
        if ((static_cast<unsigned char>(text[position + i]) & 0xC0) != 0x80) return 1;
    return length;
}

template <class Visit>
void eachCharacter(std::string_view text, Visit visit) {
    for (std::size_t i = 0; i < text.size();) {
        const auto length = characterLength(text, i);
        visit(text.substr(i, length));
        i += length;
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
    const auto length = characterLength(character, 0);
    const auto byte = [&](std::size_t i) {
        return static_cast<std::int32_t>(static_cast<unsigned char>(character[i]));
    };
    if (length == 1) return byte(0);
    std::int32_t code = byte(0) & (0xFF >> (length + 1));
    for (std::size_t i = 1; i < length; ++i) code = (code << 6) | (byte(i) & 0x3F);
    return code;
}

std::string characterOf(std::int32_t code) {
    if (code < 0 || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF)) code = 0xFFFD;
    std::string text;
    const auto put = [&](std::int32_t byte) { text += static_cast<char>(static_cast<unsigned char>(byte)); };
    if (code < 0x80) {
        put(code);
    } else if (code < 0x800) {
        put(0xC0 | (code >> 6));
        put(0x80 | (code & 0x3F));
    } else if (code < 0x10000) {
        put(0xE0 | (code >> 12));
        put(0x80 | ((code >> 6) & 0x3F));
        put(0x80 | (code & 0x3F));
    } else {
        put(0xF0 | (code >> 18));
        put(0x80 | ((code >> 12) & 0x3F));
        put(0x80 | ((code >> 6) & 0x3F));
        put(0x80 | (code & 0x3F));
    }
    return text;
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
