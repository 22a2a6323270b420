#include "base/Utf.h"

namespace dravik {
namespace {

constexpr char32_t kReplacement = 0xFFFD;
constexpr char32_t kLast = 0x10FFFF;
constexpr char32_t kHighSurrogates = 0xD800;
constexpr char32_t kLowSurrogates = 0xDC00;
constexpr char32_t kBehindSurrogates = 0xE000;
constexpr char32_t kSupplementary = 0x10000;
constexpr bool kIsUtf16 = sizeof(wchar_t) == 2;

constexpr bool isCharacter(char32_t code) {
    return code <= kLast && (code < kHighSurrogates || code >= kBehindSurrogates);
}

}  // namespace

Utf8Character firstCharacter(std::string_view text) {
    const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(text[at]); };
    const unsigned lead = byte(0);
    if (lead < 0x80) return {lead, 1, true};
    if (lead < 0xC2 || lead > 0xF4) return {kReplacement, 1, false};
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    char32_t code = lead & (0x7Fu >> length);
    for (std::size_t i = 1; i < length; ++i) {
        if (i == text.size() || (byte(i) & 0xC0) != 0x80) return {kReplacement, i, false};
        code = code << 6 | (byte(i) & 0x3F);
    }
    constexpr char32_t kLeast[] = {0, 0, 0x80, 0x800, kSupplementary};
    if (code < kLeast[length] || !isCharacter(code)) return {kReplacement, length, false};
    return {code, length, true};
}

std::string utf8Of(char32_t code) {
    if (!isCharacter(code)) code = kReplacement;
    const auto byte = [](char32_t bits) { return static_cast<char>(static_cast<unsigned char>(bits)); };
    const auto following = [&](int shift) { return byte(0x80 | (code >> shift & 0x3F)); };
    if (code < 0x80) return {byte(code)};
    if (code < 0x800) return {byte(0xC0 | code >> 6), following(0)};
    if (code < kSupplementary) return {byte(0xE0 | code >> 12), following(6), following(0)};
    return {byte(0xF0 | code >> 18), following(12), following(6), following(0)};
}

std::wstring wide(std::string_view utf8) {
    std::wstring result;
    result.reserve(utf8.size());
    while (!utf8.empty()) {
        const auto [code, bytes, valid] = firstCharacter(utf8);
        if (kIsUtf16 && code >= kSupplementary) {
            result += static_cast<wchar_t>(kHighSurrogates + ((code - kSupplementary) >> 10));
            result += static_cast<wchar_t>(kLowSurrogates + (code & 0x3FF));
        } else {
            result += static_cast<wchar_t>(code);
        }
        utf8.remove_prefix(bytes);
    }
    return result;
}

std::string utf8(std::wstring_view wide) {
    std::string result;
    result.reserve(wide.size());
    for (std::size_t i = 0; i < wide.size(); ++i) {
        auto code = static_cast<char32_t>(wide[i]);
        if (kIsUtf16 && code >= kHighSurrogates && code < kLowSurrogates && i + 1 < wide.size()) {
            const auto low = static_cast<char32_t>(wide[i + 1]);
            if (low >= kLowSurrogates && low < kBehindSurrogates) {
                code = kSupplementary + ((code - kHighSurrogates) << 10) + (low - kLowSurrogates);
                ++i;
            }
        }
        result += utf8Of(code);
    }
    return result;
}

}  // namespace dravik
