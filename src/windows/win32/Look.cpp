#include "windows/win32/Look.h"

#include <algorithm>
#include <cmath>
#include <cwchar>

#include "windows/win32/Skin.h"

namespace dravik::win32 {
namespace {

constexpr int kPointsPerInch = 72;
constexpr int kLeastHeight = 12;  // 9 points at 96 dpi
constexpr double kLeastContrast = 1.25;

double luminance(COLORREF color) {
    const auto linear = [](int part) {
        const double value = part / 255.0;
        return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(GetRValue(color)) + 0.7152 * linear(GetGValue(color)) +
           0.0722 * linear(GetBValue(color));
}

int CALLBACK found(const LOGFONTW*, const TEXTMETRICW*, DWORD, LPARAM result) {
    *reinterpret_cast<bool*>(result) = true;
    return 0;
}

bool isInstalled(const wchar_t* face) {
    LOGFONTW wanted{};
    wanted.lfCharSet = DEFAULT_CHARSET;
    wcsncpy(wanted.lfFaceName, face, LF_FACESIZE - 1);
    bool result = false;
    const HDC screen = GetDC(nullptr);
    EnumFontFamiliesExW(screen, &wanted, found, reinterpret_cast<LPARAM>(&result), 0);
    ReleaseDC(nullptr, screen);
    return result;
}

int systemDpi() {
    const HDC screen = GetDC(nullptr);
    const int dpi = GetDeviceCaps(screen, LOGPIXELSY);
    ReleaseDC(nullptr, screen);
    return dpi > 0 ? dpi : kUsualDpi;
}

// The user's font for messages when it can be scaled, else the best one there is. At 96 dpi.
LOGFONTW messageFont() {
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    LOGFONTW font{};
    if (SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0)) {
        font = metrics.lfMessageFont;
        font.lfHeight = MulDiv(font.lfHeight, kUsualDpi, systemDpi());
    }
    font.lfHeight = -std::max<LONG>(std::labs(font.lfHeight), kLeastHeight);
    font.lfWidth = 0;
    font.lfWeight = FW_NORMAL;
    if (!isInstalled(L"Segoe UI"))
        for (const wchar_t* face : {L"DejaVu Sans", L"Tahoma", L"Arial"})
            if (isInstalled(face)) {
                wcsncpy(font.lfFaceName, face, LF_FACESIZE - 1);
                break;
            }
    return font;
}

}  // namespace

double contrast(COLORREF a, COLORREF b) {
    const double x = luminance(a) + 0.05;
    const double y = luminance(b) + 0.05;
    return x > y ? x / y : y / x;
}

COLORREF readableOn(COLORREF background) {
    const COLORREF white = RGB(255, 255, 255);
    return contrast(background, white) > contrast(background, 0) ? white : 0;
}

COLORREF blend(COLORREF a, COLORREF b, double share) {
    const auto mix = [share](int x, int y) { return static_cast<BYTE>(std::lround(x + (y - x) * share)); };
    return RGB(mix(GetRValue(a), GetRValue(b)), mix(GetGValue(a), GetGValue(b)),
               mix(GetBValue(a), GetBValue(b)));
}

Look::Look(int dpi, const Ambient& ambient) : dpi_(dpi), ambient_(ambient), base_(baseFont()) {}

LOGFONTW Look::baseFont() const {
    LOGFONTW font = ambient_.font ? *ambient_.font : messageFont();
    font.lfHeight = MulDiv(font.lfHeight, dpi_, kUsualDpi);
    font.lfWidth = 0;
    font.lfQuality = CLEARTYPE_QUALITY;
    return font;
}

HFONT Look::keep(LOGFONTW wanted) {
    Font& font = fonts_[{wanted.lfWeight >= FW_BOLD, wanted.lfHeight}];
    if (!font) font = Font(CreateFontIndirectW(&wanted));
    return font.get();
}

HFONT Look::font(bool bold, int points) {
    return fontOfHeight(bold, points > 0 ? -MulDiv(points, dpi_, kPointsPerInch) : base_.lfHeight);
}

HFONT Look::fontOfHeight(bool bold, int height) {
    LOGFONTW wanted = base_;
    wanted.lfHeight = height;
    if (bold) wanted.lfWeight = FW_BOLD;
    return keep(wanted);
}

// In memory: asking for the screen's context means asking another process.
SIZE Look::textSize(HFONT font, std::wstring_view text) const {
    const Selected selected(measuring_.dc(), font);
    SIZE size = textExtent(measuring_.dc(), text.data(), text.size());
    if (text.empty()) size.cy = textExtent(measuring_.dc(), L"X", 1).cy;
    return size;
}

int Look::lineHeight(HFONT font) const {
    return textSize(font, L"Xg").cy;
}

int Look::averageWidth(HFONT font) const {
    constexpr std::wstring_view kLetters = L"abcdefghijklmnopqrstuvwxyz";
    return textSize(font, kLetters).cx / static_cast<int>(kLetters.size()) + 1;
}

COLORREF Look::system(int index) const {
    return skin() ? skin()->color(index) : GetSysColor(index);
}

COLORREF Look::color(ui::Color color) const {
    if (!ui::isSystemColor(color)) return static_cast<COLORREF>(color & 0xFFFFFF);
    const COLORREF face = ambient_.backColor.value_or(system(COLOR_BTNFACE));
    const COLORREF text = ambient_.foreColor.value_or(system(COLOR_BTNTEXT));
    if (color == ui::kButtonFaceColor) return face;
    // Text on the page, not on a window of the system: a light page in a dark theme needs dark letters.
    if (color == ui::kWindowTextColor || color == ui::kButtonTextColor) return text;
    const COLORREF own = system(static_cast<int>(color & 0xFF));
    if (color != ui::kScrollBarColor) return own;
    const bool stands =
        contrast(own, face) >= kLeastContrast && contrast(own, RGB(255, 255, 255)) >= kLeastContrast;
    return stands ? own : blend(face, readableOn(face), 0.22);
}

COLORREF Look::textColorOn(ui::Color background, ui::Color foreground) const {
    if (!ui::isSystemColor(foreground)) return color(foreground);
    if (!ui::isSystemColor(background)) return readableOn(color(background));
    if (background == ui::kWindowColor) return system(COLOR_WINDOWTEXT);
    return contrast(color(background), color(foreground)) < 3 ? readableOn(color(background))
                                                              : color(foreground);
}

COLORREF Look::disabledText() const {
    const COLORREF grey = system(COLOR_GRAYTEXT);
    return contrast(grey, background()) >= 1.8 ? grey : blend(background(), readableOn(background()), 0.45);
}

COLORREF Look::line(COLORREF ground, double share) const {
    return blend(ground, readableOn(ground), highContrast_ ? 1 : share);
}

HBRUSH Look::brush(COLORREF color) {
    Brush& brush = brushes_[color];
    if (!brush) brush = Brush(CreateSolidBrush(color));
    return brush.get();
}

}  // namespace dravik::win32
