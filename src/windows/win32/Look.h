// How a page looks at its display scale in its surroundings: fonts, colours of the models, sizes of texts.
#pragma once

#include <map>
#include <string_view>
#include <utility>

#include "ui/Color.h"
#include "windows/win32/Ambient.h"
#include "windows/win32/Dpi.h"
#include "windows/win32/Gdi.h"
#include "windows/win32/HighContrast.h"

namespace dravik::win32 {

// 1 (the same) to 21 (black on white).
double contrast(COLORREF a, COLORREF b);
// Black or white, whichever is easier to read on the colour.
COLORREF readableOn(COLORREF background);
// `share` 0 is all `a`, 1 all `b`.
COLORREF blend(COLORREF a, COLORREF b, double share);

class Look {
  public:
    Look(int dpi, const Ambient& ambient);

    int dpi() const noexcept { return dpi_; }
    const Ambient& ambient() const noexcept { return ambient_; }
    // Pixels of a length at 96 dpi.
    int px(int length) const noexcept { return scaled(length, dpi_); }

    // Kept by this object. 0 points is the page's own size.
    HFONT font(bool bold = false, int points = 0);
    // The same font at another size in pixels.
    HFONT fontOfHeight(bool bold, int height);
    SIZE textSize(HFONT font, std::wstring_view text) const;
    int lineHeight(HFONT font) const;
    int averageWidth(HFONT font) const;

    // A colour of Windows, or what stands for it in the surroundings.
    COLORREF system(int index) const;
    // Null when the system draws its own controls.
    const Skin* skin() const noexcept { return ambient_.skin; }
    // System colours of the models are those of the surroundings or of Windows; the scroll bar colour always
    // differs from the page and from white.
    COLORREF color(ui::Color color) const;
    // The colour to write with: the fore colour itself when it is explicit, else the system's unless the
    // background is explicit, which then decides.
    COLORREF textColorOn(ui::Color background, ui::Color foreground) const;
    COLORREF background() const { return color(ui::kButtonFaceColor); }
    COLORREF disabledText() const;
    // Of a thin line on the ground: `share` of the way to black or white, all of it under high contrast.
    COLORREF line(COLORREF ground, double share) const;
    bool highContrast() const noexcept { return highContrast_; }
    // Kept by this object.
    HBRUSH brush(COLORREF color);

  private:
    LOGFONTW baseFont() const;
    HFONT keep(LOGFONTW wanted);

    int dpi_;
    Ambient ambient_;
    bool highContrast_ = isHighContrast();
    LOGFONTW base_{};
    Canvas measuring_{1, 1};
    std::map<std::pair<bool, LONG>, Font> fonts_;
    std::map<COLORREF, Brush> brushes_;
};

}  // namespace dravik::win32
