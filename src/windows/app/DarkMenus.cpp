#include "windows/app/DarkMenus.h"

#include <commctrl.h>
#include <oleacc.h>

#include <algorithm>
#include <array>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "windows/app/DarkSkin.h"
#include "windows/win32/Dpi.h"
#include "windows/win32/Look.h"

namespace dravik::app {
namespace {

// At 96 dpi.
constexpr int kMarkField = 24, kArrowField = 20, kKeyGap = 28, kLinePadding = 6, kBarPadding = 2, kMark = 8,
              kArrow = 4;

// Screen readers take the text of an item that is drawn by its owner from the base.
struct Item : MSAAMENUINFO {
    std::wstring text;  // "" for a separator
    bool inBar = false;
    bool opensMenu = false;
};

// Of the one thread that shows windows.
std::map<HMENU, std::vector<std::unique_ptr<Item>>>& darkItems() {
    static std::map<HMENU, std::vector<std::unique_ptr<Item>>> items;
    return items;
}

win32::Look lookOf(HWND owner) {
    win32::Ambient ambient;
    ambient.skin = &darkSkin();
    return win32::Look(win32::dpiOf(owner), ambient);
}

std::wstring withoutAmpersand(std::wstring text) {
    std::erase(text, L'&');
    return text;
}

void measure(MEASUREITEMSTRUCT& size, HWND owner) {
    const auto& item = *reinterpret_cast<const Item*>(size.itemData);
    win32::Look look = lookOf(owner);
    const HFONT font = look.font();
    const auto width = [&](const std::wstring& text) {
        return static_cast<UINT>(look.textSize(font, withoutAmpersand(text)).cx);
    };
    const std::size_t tab = std::min(item.text.find(L'\t'), item.text.size());
    const auto px = [&](int length) { return static_cast<UINT>(look.px(length)); };
    size.itemHeight =
        item.text.empty() ? px(kLinePadding) : static_cast<UINT>(look.lineHeight(font)) + px(kLinePadding);
    size.itemWidth = width(item.text.substr(0, tab));
    if (item.inBar)
        size.itemWidth += px(kBarPadding);
    else
        size.itemWidth += px(kMarkField + kKeyGap + kArrowField) + width(item.text.substr(tab));
}

void drawMark(HDC dc, const win32::Look& look, const RECT& place, COLORREF ink) {
    const int side = look.px(kMark), left = place.left + look.px(kMarkField - kMark) / 2,
              middle = (place.top + place.bottom) / 2;
    const win32::Pen pen(CreatePen(PS_SOLID, look.px(2), ink));
    const win32::Selected selected(dc, pen.get());
    const std::array<POINT, 3> tick = {
        {{left, middle}, {left + side / 3, middle + side / 3}, {left + side, middle - side / 2}}};
    Polyline(dc, tick.data(), static_cast<int>(tick.size()));
}

void drawArrow(HDC dc, win32::Look& look, const RECT& place, COLORREF ink) {
    const int reach = look.px(kArrow), left = place.right - look.px(kArrowField) / 2,
              middle = (place.top + place.bottom) / 2;
    const win32::Selected pen(dc, GetStockObject(NULL_PEN));
    const win32::Selected brush(dc, look.brush(ink));
    const std::array<POINT, 3> corners = {
        {{left, middle - reach}, {left + reach, middle}, {left, middle + reach}}};
    Polygon(dc, corners.data(), static_cast<int>(corners.size()));
}

void draw(const DRAWITEMSTRUCT& wanted, HWND owner) {
    const auto& item = *reinterpret_cast<const Item*>(wanted.itemData);
    win32::Look look = lookOf(owner);
    RECT place = wanted.rcItem;
    const HDC dc = wanted.hDC;
    const bool isChosen = (wanted.itemState & (ODS_SELECTED | ODS_HOTLIGHT)) != 0;
    const int ground = isChosen ? COLOR_HIGHLIGHT : COLOR_MENU;
    win32::fill(dc, place, look.system(ground));
    if (item.text.empty()) {
        const int middle = (place.top + place.bottom) / 2;
        win32::fill(dc, {place.left, middle, place.right, middle + 1}, look.system(COLOR_BTNSHADOW));
        return;
    }
    const bool isOff = (wanted.itemState & (ODS_GRAYED | ODS_DISABLED)) != 0;
    const COLORREF ink = isOff      ? look.disabledText()
                         : isChosen ? look.system(COLOR_HIGHLIGHTTEXT)
                                    : look.system(COLOR_WINDOWTEXT);
    const win32::Selected font(dc, look.font());
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, ink);
    const auto write = [&](const std::wstring& text, UINT format) {
        const UINT hidden = (wanted.itemState & ODS_NOACCEL) ? DT_HIDEPREFIX : 0u;
        DrawTextW(dc, text.c_str(), static_cast<int>(text.size()), &place,
                  format | hidden | DT_SINGLELINE | DT_VCENTER);
    };
    if (item.inBar) return write(item.text, DT_CENTER);
    if (wanted.itemState & ODS_CHECKED) drawMark(dc, look, place, ink);
    if (item.opensMenu) drawArrow(dc, look, place, ink);
    place.left += look.px(kMarkField);
    place.right -= look.px(kArrowField);
    const std::size_t tab = std::min(item.text.find(L'\t'), item.text.size());
    write(item.text.substr(0, tab), DT_LEFT);
    if (tab < item.text.size()) write(item.text.substr(tab + 1), DT_RIGHT);
    // Else the system draws an arrow of its own over this one.
    ExcludeClipRect(dc, wanted.rcItem.left, wanted.rcItem.top, wanted.rcItem.right, wanted.rcItem.bottom);
}

// Items that are drawn by their owner have no access keys of their own.
std::optional<std::size_t> placeOfKey(HMENU menu, wchar_t key) {
    const auto known = darkItems().find(menu);
    if (known == darkItems().end()) return std::nullopt;
    const auto upper = [](wchar_t letter) {
        return LOWORD(reinterpret_cast<UINT_PTR>(CharUpperW(reinterpret_cast<LPWSTR>(UINT_PTR{letter}))));
    };
    for (std::size_t place = 0; place < known->second.size(); ++place) {
        const std::wstring& text = known->second[place]->text;
        const std::size_t mark = text.find(L'&');
        if (mark + 1 < text.size() && upper(text[mark + 1]) == upper(key)) return place;
    }
    return std::nullopt;
}

// Behind its last item, and the line below it, which the system draws in its own colours.
void coverRestOfBar(HWND window) {
    MENUBARINFO bar{};
    bar.cbSize = sizeof bar;
    const HMENU menu = GetMenu(window);
    RECT whole{}, last{};
    if (!GetMenuBarInfo(window, OBJID_MENU, 0, &bar) || !GetWindowRect(window, &whole) ||
        !GetMenuItemRect(window, menu, static_cast<UINT>(GetMenuItemCount(menu) - 1), &last))
        return;
    RECT behind = bar.rcBar, below = bar.rcBar;
    behind.left = last.right;
    below.top = below.bottom;
    ++below.bottom;
    const HDC dc = GetWindowDC(window);
    for (RECT place : {behind, below}) {
        OffsetRect(&place, -whole.left, -whole.top);
        win32::fill(dc, place, darkSkin().color(COLOR_MENU));
    }
    ReleaseDC(window, dc);
}

LRESULT CALLBACK answer(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id, DWORD_PTR) {
    switch (message) {
        case WM_MEASUREITEM: {
            auto& size = *reinterpret_cast<MEASUREITEMSTRUCT*>(lParam);
            if (size.CtlType != ODT_MENU) break;
            measure(size, window);
            return TRUE;
        }
        case WM_DRAWITEM: {
            const auto& wanted = *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
            if (wanted.CtlType != ODT_MENU) break;
            draw(wanted, window);
            return TRUE;
        }
        case WM_MENUCHAR:
            if (const auto place = placeOfKey(reinterpret_cast<HMENU>(lParam), LOWORD(wParam)))
                return MAKELRESULT(*place, MNC_EXECUTE);
            break;
        case WM_NCPAINT:
        case WM_NCACTIVATE: {
            const LRESULT result = DefSubclassProc(window, message, wParam, lParam);
            if (darkItems().contains(GetMenu(window))) coverRestOfBar(window);
            return result;
        }
        case WM_NCDESTROY:
            RemoveWindowSubclass(window, answer, id);
            break;
        default:
            break;
    }
    return DefSubclassProc(window, message, wParam, lParam);
}

void setGround(HMENU menu, HBRUSH brush) {
    MENUINFO info{};
    info.cbSize = sizeof info;
    info.fMask = MIM_BACKGROUND;
    info.hbrBack = brush;
    SetMenuInfo(menu, &info);
}

MENUITEMINFOW kindOf(HMENU menu, UINT place) {
    MENUITEMINFOW info{};
    info.cbSize = sizeof info;
    info.fMask = MIIM_FTYPE | MIIM_SUBMENU;
    GetMenuItemInfoW(menu, place, TRUE, &info);
    return info;
}

std::wstring textOf(HMENU menu, UINT place) {
    std::wstring text(static_cast<std::size_t>(GetMenuStringW(menu, place, nullptr, 0, MF_BYPOSITION)),
                      L'\0');
    GetMenuStringW(menu, place, text.data(), static_cast<int>(text.size()) + 1, MF_BYPOSITION);
    return text;
}

}  // namespace

void darkenMenu(HMENU menu, HWND owner) {
    static const win32::Brush ground(CreateSolidBrush(darkSkin().color(COLOR_MENU)));
    setGround(menu, ground.get());
    auto& items = darkItems()[menu];
    items.clear();
    const int count = GetMenuItemCount(menu);
    for (UINT place = 0; place < static_cast<UINT>(count); ++place) {
        MENUITEMINFOW info = kindOf(menu, place);
        auto item = std::make_unique<Item>();
        item->text = textOf(menu, place);
        item->inBar = menu == GetMenu(owner);
        item->opensMenu = info.hSubMenu != nullptr;
        item->dwMSAASignature = static_cast<DWORD>(MSAA_MENU_SIG);
        item->cchWText = static_cast<DWORD>(item->text.size());
        item->pszWText = item->text.data();
        info.fMask = MIIM_FTYPE | MIIM_DATA;
        info.fType |= MFT_OWNERDRAW;
        info.dwItemData = reinterpret_cast<ULONG_PTR>(item.get());
        SetMenuItemInfoW(menu, place, TRUE, &info);
        items.push_back(std::move(item));
    }
    SetWindowSubclass(owner, answer, 1, 0);
}

void lightenMenu(HMENU menu) {
    if (darkItems().erase(menu) == 0) return;
    setGround(menu, nullptr);
    const int count = GetMenuItemCount(menu);
    for (UINT place = 0; place < static_cast<UINT>(count); ++place) {
        MENUITEMINFOW info = kindOf(menu, place);
        info.fMask = MIIM_FTYPE;
        info.fType &= ~static_cast<UINT>(MFT_OWNERDRAW);
        SetMenuItemInfoW(menu, place, TRUE, &info);
    }
}

}  // namespace dravik::app
