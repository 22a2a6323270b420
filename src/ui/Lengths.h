// Lengths on the screen: twips (1/1440 inch), lengths at the usual scale of 96 dots per inch, and pixels at
// any scale. Pixels are rounded.
#pragma once

namespace dravik::ui {

constexpr int kUsualDpi = 96;

constexpr int scaled(int length, int dpi) {
    return (length * dpi + (length < 0 ? -kUsualDpi : kUsualDpi) / 2) / kUsualDpi;
}
constexpr int pixels(int twips, int dpi = kUsualDpi) {
    return (twips * dpi + 720) / 1440;
}
constexpr double twips(double pixels, int dpi = kUsualDpi) {
    return pixels * 1440.0 / dpi;
}

}  // namespace dravik::ui
