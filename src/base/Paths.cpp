#include "base/Paths.h"

#include <cstdint>

namespace dravik {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

// The character at `place`, which goes on to the next one.
char32_t characterAt(const std::string& utf8, std::size_t& place) {
    const auto byte = [&](std::size_t at) {
        return at < utf8.size() ? static_cast<std::uint8_t>(utf8[at]) : std::uint8_t{0};
    };
    const std::uint8_t lead = byte(place++);
    if (lead < 0x80) return lead;
    const int following = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : 1;
    if (lead < 0xC2 || lead > 0xF4) return kReplacement;
    char32_t character = lead & (0x3Fu >> following);
    for (int i = 0; i < following; ++i) {
        if ((byte(place) & 0xC0) != 0x80) return kReplacement;
        character = character << 6 | (byte(place++) & 0x3F);
    }
    constexpr char32_t kLeast[] = {0, 0x80, 0x800, 0x10000};
    const bool surrogate = character >= 0xD800 && character < 0xE000;
    return character < kLeast[following] || surrogate || character > 0x10FFFF ? kReplacement : character;
}

}  // namespace

std::wstring wideName(const std::string& utf8) {
    std::wstring wide;
    wide.reserve(utf8.size());
    for (std::size_t place = 0; place < utf8.size();) {
        const char32_t character = characterAt(utf8, place);
        if (sizeof(wchar_t) == 2 && character >= 0x10000) {
            wide += static_cast<wchar_t>(0xD800 + ((character - 0x10000) >> 10));
            wide += static_cast<wchar_t>(0xDC00 + (character & 0x3FF));
        } else {
            wide += static_cast<wchar_t>(character);
        }
    }
    return wide;
}

}  // namespace dravik
