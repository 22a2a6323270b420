// What the surroundings ask of a page: the font, colours of the window that it stands
// in. Left empty, the page takes the system's own message font and colours.
#pragma once

#include <cstring>
#include <optional>

namespace dravik::win32 {

class Skin;

struct Ambient {
    std::optional<LOGFONTW> font;  // heights are those at 96 dpi
    std::optional<COLORREF> backColor;
    std::optional<COLORREF> foreColor;
    const Skin* skin = nullptr;  // outlives the page

    bool operator==(const Ambient& other) const {
        const bool sameFont = font.has_value() == other.font.has_value() &&
                              (!font || std::memcmp(&*font, &*other.font, sizeof(LOGFONTW)) == 0);
        return sameFont && backColor == other.backColor && foreColor == other.foreColor && skin == other.skin;
    }
};

}  // namespace dravik::win32
