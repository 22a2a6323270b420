#include "windows/app/DarkSkin.h"

#include <algorithm>
#include <array>

#include "ui/Bars.h"
#include "ui/Button.h"
#include "ui/ListControls.h"
#include "windows/app/DarkMenus.h"
#include "windows/win32/Look.h"
#include "windows/win32/WinText.h"

namespace dravik::app {
namespace {

using ui::WidgetKind;
using win32::Look;

constexpr COLORREF kGround = RGB(0x38, 0x3A, 0x3F), kField = RGB(0x25, 0x27, 0x2A),
                   kFace = RGB(0x4B, 0x4E, 0x54), kText = RGB(0xE8, 0xE8, 0xE8),
                   kAccent = RGB(0x4C, 0x8D, 0xF0);
constexpr double kLineShare = 0.4;
// At 96 dpi.
constexpr int kMarkSide = 13, kMarkGap = 6, kArrow = 4, kArrowField = 18, kPadding = 4;

struct Drawing {
    HDC dc;
    HWND window;
    Look& look;
    bool enabled = IsWindowEnabled(window) != FALSE;
    bool focused = GetFocus() == window;

    COLORREF line() const { return win32::blend(kGround, kText, enabled ? kLineShare : kLineShare / 2); }
    void field(const RECT& place, COLORREF ground, COLORREF edge) const {
        win32::fill(dc, place, ground);
        win32::frame(dc, place, edge, look.px(1));
    }
    void text(RECT place, const std::wstring& words, UINT format) const {
        const win32::Selected font(dc, reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0)));
        SetBkMode(dc, TRANSPARENT);
        SetTextColor(dc, enabled ? kText : look.disabledText());
        const bool hides = (SendMessageW(window, WM_QUERYUISTATE, 0, 0) & UISF_HIDEACCEL) != 0;
        DrawTextW(dc, words.c_str(), static_cast<int>(words.size()), &place,
                  format | DT_SINGLELINE | DT_VCENTER | (hides ? DT_HIDEPREFIX : 0u));
    }
    void shape(std::initializer_list<POINT> corners) const {
        const COLORREF ink = enabled ? kText : look.disabledText();
        const win32::Pen pen(CreatePen(PS_SOLID, 1, ink));
        const win32::Selected selectedPen(dc, pen.get());
        const win32::Selected selectedBrush(dc, look.brush(ink));
        Polygon(dc, corners.begin(), static_cast<int>(corners.size()));
    }
    // In the middle of the place.
    void arrow(const RECT& place, bool up) const {
        const int reach = look.px(kArrow), x = (place.left + place.right) / 2,
                  y = (place.top + place.bottom) / 2, tip = up ? -reach / 2 : reach / 2;
        shape({{x - reach, y - tip}, {x + reach, y - tip}, {x, y + tip}});
    }
};

void paintButton(const Drawing& to, const RECT& client) {
    const bool pressed = (SendMessageW(to.window, BM_GETSTATE, 0, 0) & BST_PUSHED) != 0;
    const bool isDefault = (GetWindowLongPtrW(to.window, GWL_STYLE) & BS_TYPEMASK) == BS_DEFPUSHBUTTON;
    win32::fill(to.dc, client, kGround);
    to.field(client,
             !to.enabled ? kGround
             : pressed   ? kField
                         : kFace,
             to.enabled && (isDefault || to.focused) ? kAccent : to.line());
    RECT inside = client;
    InflateRect(&inside, -to.look.px(2), -to.look.px(2));
    if (to.focused) win32::frame(to.dc, inside, kText, to.look.px(1));
    to.text(inside, win32::windowText(to.window), DT_CENTER);
}

void paintMarked(const Drawing& to, const RECT& client, bool round, bool marked) {
    win32::fill(to.dc, client, kGround);
    const int side = to.look.px(kMarkSide), top = (client.top + client.bottom - side) / 2;
    const RECT box{client.left, top, client.left + side, top + side};
    RECT mark = box;
    InflateRect(&mark, -side / 4, -side / 4);
    if (round) {
        const win32::Pen pen(CreatePen(PS_SOLID, to.look.px(1), to.line()));
        const win32::Selected selectedPen(to.dc, pen.get());
        const win32::Selected selectedBrush(to.dc, to.look.brush(kField));
        Ellipse(to.dc, box.left, box.top, box.right, box.bottom);
    } else {
        to.field(box, kField, to.line());
    }
    if (marked && round) {
        const win32::Selected noPen(to.dc, GetStockObject(NULL_PEN));
        const win32::Selected brush(to.dc, to.look.brush(to.enabled ? kText : to.look.disabledText()));
        Ellipse(to.dc, mark.left, mark.top, mark.right + 1, mark.bottom + 1);
    } else if (marked) {
        const win32::Pen pen(CreatePen(PS_SOLID, to.look.px(2), to.enabled ? kText : to.look.disabledText()));
        const win32::Selected selected(to.dc, pen.get());
        const std::array<POINT, 3> tick = {{{mark.left, (mark.top + mark.bottom) / 2},
                                            {mark.left + win32::widthOf(mark) / 3, mark.bottom - 1},
                                            {mark.right, mark.top}}};
        Polyline(to.dc, tick.data(), static_cast<int>(tick.size()));
    }
    const RECT words{box.right + to.look.px(kMarkGap), client.top, client.right, client.bottom};
    to.text(words, win32::windowText(to.window), DT_LEFT);
    if (to.focused)
        win32::frame(to.dc, {words.left - to.look.px(2), client.top, client.right, client.bottom}, to.line(),
                     to.look.px(1));
}

void paintComboBox(const Drawing& to, const RECT& client, const ui::ComboBox& model) {
    to.field(client, to.enabled ? kField : kGround, to.focused ? kAccent : to.line());
    RECT words = client;
    words.left += to.look.px(kPadding);
    words.right -= to.look.px(kArrowField);
    const int chosen = static_cast<int>(SendMessageW(to.window, CB_GETCURSEL, 0, 0));
    if (chosen >= 0 && chosen < model.count())
        to.text(words, win32::wide(model.items()[static_cast<std::size_t>(chosen)]),
                DT_LEFT | DT_NOPREFIX | DT_END_ELLIPSIS);
    to.arrow({words.right, client.top, client.right, client.bottom}, false);
}

void paintProgress(const Drawing& to, const RECT& client, const ui::ProgressBar& model) {
    to.field(client, kField, to.line());
    RECT done = client;
    InflateRect(&done, -to.look.px(1), -to.look.px(1));
    done.right = done.left + static_cast<int>(static_cast<float>(win32::widthOf(done)) * model.value() / 100);
    win32::fill(to.dc, done, kAccent);
}

void paintStatus(const Drawing& to, const RECT& client, const ui::StatusBar& model) {
    win32::fill(to.dc, client, kGround);
    for (std::size_t i = 0; i < model.panels().size(); ++i) {
        RECT place{};
        if (!SendMessageW(to.window, SB_GETRECT, i, reinterpret_cast<LPARAM>(&place))) continue;
        win32::frame(to.dc, place, to.line(), 1);
        const auto length = LOWORD(SendMessageW(to.window, SB_GETTEXTLENGTHW, i, 0));
        std::wstring shown(length + 1u, L'\0');
        SendMessageW(to.window, SB_GETTEXTW, i, reinterpret_cast<LPARAM>(shown.data()));
        shown.resize(length);
        InflateRect(&place, -to.look.px(kPadding), 0);
        to.text(place, shown, DT_LEFT | DT_NOPREFIX);
    }
}

void paintUpDown(const Drawing& to, const RECT& client) {
    const int middle = (client.top + client.bottom) / 2;
    const RECT upper{client.left, client.top, client.right, middle},
        lower{client.left, middle, client.right, client.bottom};
    for (const RECT& half : {upper, lower}) to.field(half, kFace, to.focused ? kAccent : to.line());
    to.arrow(upper, true);
    to.arrow(lower, false);
}

class DarkSkin : public win32::Skin {
  public:
    COLORREF color(int system) const override {
        switch (system) {
            case COLOR_WINDOW:
                return kField;
            case COLOR_WINDOWTEXT:
            case COLOR_BTNTEXT:
                return kText;
            case COLOR_HIGHLIGHT:
                return kAccent;
            case COLOR_HIGHLIGHTTEXT:
                return win32::readableOn(kAccent);
            case COLOR_GRAYTEXT:
                return win32::blend(kGround, kText, 0.45);
            case COLOR_WINDOWFRAME:
            case COLOR_BTNSHADOW:
            case COLOR_SCROLLBAR:
                return win32::blend(kGround, kText, 0.2);
            default:
                return kGround;
        }
    }

    bool paints(const ui::Widget& model) const override {
        switch (model.kind()) {
            case WidgetKind::Button:
            case WidgetKind::CheckBox:
            case WidgetKind::OptionButton:
            case WidgetKind::ComboBox:
            case WidgetKind::ProgressBar:
            case WidgetKind::StatusBar:
            case WidgetKind::UpDown:
                return true;
            default:
                return false;
        }
    }

    void dressMenu(HMENU menu, HWND owner) const override { darkenMenu(menu, owner); }

    void paint(HDC dc, const RECT& client, const ui::Widget& model, HWND window, Look& look) const override {
        const Drawing to{dc, window, look};
        switch (model.kind()) {
            case WidgetKind::Button:
                return paintButton(to, client);
            case WidgetKind::CheckBox:
                return paintMarked(to, client, false, static_cast<const ui::CheckBox&>(model).checked());
            case WidgetKind::OptionButton:
                return paintMarked(to, client, true, static_cast<const ui::OptionButton&>(model).chosen());
            case WidgetKind::ComboBox:
                return paintComboBox(to, client, static_cast<const ui::ComboBox&>(model));
            case WidgetKind::ProgressBar:
                return paintProgress(to, client, static_cast<const ui::ProgressBar&>(model));
            case WidgetKind::StatusBar:
                return paintStatus(to, client, static_cast<const ui::StatusBar&>(model));
            case WidgetKind::UpDown:
                return paintUpDown(to, client);
            default:
                return;
        }
    }
};

}  // namespace

const win32::Skin& darkSkin() {
    static const DarkSkin skin;
    return skin;
}

bool desktopIsDark() {
    DWORD light = 1, size = sizeof light;
    RegGetValueW(HKEY_CURRENT_USER, L"Software\\Microsoft\\Windows\\CurrentVersion\\Themes\\Personalize",
                 L"AppsUseLightTheme", RRF_RT_REG_DWORD, nullptr, &light, &size);
    return light == 0;
}

}  // namespace dravik::app
