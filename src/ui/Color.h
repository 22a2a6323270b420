// Colours are 32-bit values in blue-green-red order, red in the low byte; with the top bit set the low byte
// is the index of a system colour, which a backend takes from the current theme.
#pragma once

#include <cstdint>

namespace dravik::ui {

using Color = std::uint32_t;

constexpr Color rgb(int red, int green, int blue) {
    return static_cast<Color>(red) | static_cast<Color>(green) << 8 | static_cast<Color>(blue) << 16;
}
constexpr bool isSystemColor(Color color) {
    return (color & 0x80000000u) != 0;
}
constexpr int redOf(Color color) {
    return static_cast<int>(color & 0xFF);
}
constexpr int greenOf(Color color) {
    return static_cast<int>(color >> 8 & 0xFF);
}
constexpr int blueOf(Color color) {
    return static_cast<int>(color >> 16 & 0xFF);
}

constexpr Color kScrollBarColor = 0x80000000u;
constexpr Color kWindowColor = 0x80000005u;
constexpr Color kWindowTextColor = 0x80000008u;
constexpr Color kButtonFaceColor = 0x8000000Fu;
constexpr Color kButtonTextColor = 0x80000012u;

// Text that warns, on light and on dark ground.
constexpr Color kWarningColor = rgb(0xB8, 0x3A, 0x00);
constexpr Color kWarningColorOnDark = rgb(0xFF, 0x9E, 0x57);

}  // namespace dravik::ui
