// A grid of small grey pictures, of which only those in view are asked for and drawn.
#include <algorithm>
#include <array>
#include <cmath>

#include "windows/win32/Accessible.h"
#include "windows/win32/DrawnPeer.h"
#include "windows/win32/Page.h"
#include "windows/win32/Peers.h"
#include "windows/win32/ScrollBar.h"
#include "windows/win32/WinText.h"

namespace dravik::win32 {
namespace {

using ui::PictureGrid;

// Over all of `place`, smoothed.
void drawLevels(HDC dc, const ui::GreyPicture& picture, const RECT& place) {
    struct {
        BITMAPINFOHEADER head{};
        std::array<RGBQUAD, 256> colors{};
    } info;
    info.head.biSize = sizeof info.head;
    info.head.biWidth = picture.width;
    info.head.biHeight = -picture.height;
    info.head.biPlanes = 1;
    info.head.biBitCount = 8;
    for (std::size_t i = 0; i < info.colors.size(); ++i) {
        const auto level = static_cast<BYTE>(i);
        info.colors[i] = {level, level, level, 0};
    }
    // Rows of such a picture are multiples of 4 bytes.
    const int stride = (picture.width + 3) / 4 * 4;
    std::vector<std::uint8_t> rows(static_cast<std::size_t>(stride) *
                                   static_cast<std::size_t>(picture.height));
    for (int y = 0; y < picture.height; ++y)
        std::copy_n(picture.levels.begin() + y * picture.width, picture.width, rows.begin() + y * stride);
    SetStretchBltMode(dc, HALFTONE);
    SetBrushOrgEx(dc, 0, 0, nullptr);
    StretchDIBits(dc, place.left, place.top, widthOf(place), heightOf(place), 0, 0, picture.width,
                  picture.height, rows.data(), reinterpret_cast<const BITMAPINFO*>(&info), DIB_RGB_COLORS,
                  SRCCOPY);
}

class PictureGridPeer : public PeerOf<PictureGrid, DrawnPeer>, private AccessibleContent {
  public:
    using PeerOf::PeerOf;

    bool takesFocus() const override { return true; }
    bool wantsKey(UINT key) const override { return ui::keyMove(static_cast<int>(key)).has_value(); }
    bool pressEnter() override {
        act([&] { model_.opened(); });
        return true;
    }

  protected:
    HWND make(HWND parent) override {
        return makeDrawn(L"DravikPictureGrid", parent, WS_TABSTOP | WS_VSCROLL | WS_BORDER);
    }

    ui::Measure ask() override {
        const int bar = GetSystemMetrics(SM_CXVSCROLL) + 2;
        return {{look().px(2 * PictureGrid::kItemWidth) + bar, look().px(PictureGrid::kItemHeight) + 2},
                {look().px(6 * PictureGrid::kItemWidth) + bar, look().px(2 * PictureGrid::kItemHeight) + 2},
                true,
                true,
                true,
                true};
    }

    void show(ui::Change change) override {
        if (change == ui::Change::Items || change == ui::Change::Selection) {
            showScroll();
            redraw();
            if (hasFocus()) NotifyWinEvent(EVENT_OBJECT_FOCUS, window(), OBJID_CLIENT, focusedChild());
        } else {
            DrawnPeer::show(change);
        }
    }

    void lookChanged() override {
        DrawnPeer::lookChanged();
        sized();
    }

    LRESULT message(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (!attached()) return DrawnPeer::message(message, wParam, lParam);
        switch (message) {
            case WM_SIZE:
                sized();
                return 0;
            case WM_GETDLGCODE:
                return DLGC_WANTARROWS | DLGC_WANTCHARS;
            case WM_VSCROLL:
                scrollTo(scrolledTo(window(), SB_VERT, LOWORD(wParam), model_.scroll().line));
                return 0;
            case WM_MOUSEWHEEL:
                turnWheel(static_cast<short>(HIWORD(wParam)));
                return 0;
            case WM_LBUTTONDOWN:
                press(itemAt(lParam));
                return 0;
            case WM_LBUTTONDBLCLK:
                open(itemAt(lParam));
                return 0;
            case WM_CHAR:
                type(static_cast<wchar_t>(wParam));
                return 0;
            default:
                return DrawnPeer::message(message, wParam, lParam);
        }
    }

    void keyPressed(UINT key) override {
        if (const auto move = ui::keyMove(static_cast<int>(key)))
            act([&] { model_.move(*move, shiftState()); });
    }

    void paint(HDC dc, const RECT& client, const RECT&) override {
        fill(dc, client, look().system(COLOR_WINDOW));
        if (!attached()) return;
        SetBkMode(dc, TRANSPARENT);
        act([&] {
            const PictureGrid::Range seen = model_.seen();
            for (int index = seen.first; index < seen.end; ++index) paintItem(dc, index);
        });
        if (hasFocus()) frame(dc, client, look().system(COLOR_HIGHLIGHT), look().px(1));
    }

    AccessibleContent* accessibleContent() override { return this; }

  private:
    void scrollTo(int position) {
        act([&] { model_.scrollTo(position); });
    }

    void turnWheel(int delta) {
        const PictureGrid::Scroll scroll = model_.scroll();
        scrollTo(scroll.position - delta * scroll.line / WHEEL_DELTA);
    }

    void press(int index) {
        const auto self = shared_from_this();
        SetFocus(window());
        act([&] { model_.choose(index, shiftState()); });
    }

    void open(int index) {
        if (index == model_.current()) act([&] { model_.opened(); });
    }

    void type(wchar_t character) {
        constexpr wchar_t kControlA = 1, kBlank = 32, kDelete = 127;
        if (character == kControlA)
            act([&] { model_.selectAll(); });
        else if (character > kBlank && character != kDelete)
            act([&] { model_.typed(utf8(std::wstring(1, character))); });
    }

    void sized() {
        RECT client{};
        GetClientRect(window(), &client);
        act([&] { model_.setView(client.right, client.bottom, double(look().px(96)) / 96); });
    }

    void showScroll() {
        const PictureGrid::Scroll scroll = model_.scroll();
        SCROLLINFO info{sizeof info,
                        SIF_RANGE | SIF_PAGE | SIF_POS | SIF_DISABLENOSCROLL,
                        0,
                        scroll.most + scroll.page - 1,
                        static_cast<UINT>(scroll.page),
                        scroll.position,
                        0};
        SetScrollInfo(window(), SB_VERT, &info, TRUE);
    }

    int itemAt(LPARAM place) const {
        return model_.itemAt(static_cast<short>(LOWORD(place)), static_cast<short>(HIWORD(place)));
    }

    RECT placeOf(int index) const {
        const PictureGrid::Place place = model_.itemPlace(index);
        return {std::lround(place.left), std::lround(place.top), std::lround(place.left + place.width),
                std::lround(place.top + place.height)};
    }

    void paintItem(HDC dc, int index) {
        const ui::PictureItem item = model_.item(index);
        RECT cell = placeOf(index);
        InflateRect(&cell, -look().px(1), -look().px(1));
        const bool selected = model_.isSelected(index);
        const COLORREF ground = look().system(selected ? COLOR_HIGHLIGHT : COLOR_WINDOW);
        const COLORREF ink = look().system(selected ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT);
        if (selected) fill(dc, cell, ground);

        const int side = look().px(PictureGrid::kPictureSide);
        const int left = (cell.left + cell.right - side) / 2;
        const int top = cell.top + look().px(PictureGrid::kPadding - 1);
        RECT box{left, top, left + side, top + side};
        const std::wstring caption = wide(item.caption), note = wide(item.note);
        if (item.picture.levels.empty()) {
            const Selected font(dc, look().fontOfHeight(false, -side / 2));
            SetTextColor(dc, blend(ground, ink, 0.45));
            DrawTextW(dc, caption.c_str(), -1, &box, DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
        } else {
            const double scale =
                std::min(double(side) / item.picture.width, double(side) / item.picture.height);
            const int wide = std::max(static_cast<int>(item.picture.width * scale), 1);
            const int high = std::max(static_cast<int>(item.picture.height * scale), 1);
            const int x = left + (side - wide) / 2, y = top + (side - high) / 2;
            drawLevels(dc, item.picture, {x, y, x + wide, y + high});
        }
        RECT words{cell.left + look().px(3), box.bottom, cell.right - look().px(3), cell.bottom};
        constexpr UINT kFlags = DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX;
        const bool onLight = readableOn(look().system(COLOR_WINDOW)) == 0;
        const COLORREF warning = look().color(onLight ? ui::kWarningColor : ui::kWarningColorOnDark);
        {
            const Selected font(dc, look().font());
            SetTextColor(dc, item.warns && !selected ? warning : ink);
            DrawTextW(dc, note.c_str(), -1, &words, kFlags | DT_RIGHT);
        }
        {
            const Selected font(dc, look().font(true));
            SetTextColor(dc, ink);
            DrawTextW(dc, caption.c_str(), -1, &words, kFlags);
        }
        if (index == model_.current() && hasFocus()) DrawFocusRect(dc, &cell);
    }

    // For a screen reader: one child for each picture that is seen.
    LONG role() const override { return ROLE_SYSTEM_LIST; }
    LONG childRole(int) const override { return ROLE_SYSTEM_LISTITEM; }
    std::wstring name() const override { return wide(model_.accessibleName()); }
    int children() const override { return model_.seen().end - model_.seen().first; }
    std::wstring childName(int child) const override {
        return wide(model_.item(model_.seen().first + child - 1).tip);
    }
    RECT childPlace(int child) const override { return placeOf(model_.seen().first + child - 1); }
    LONG childState(int child) const override {
        return STATE_SYSTEM_SELECTABLE | STATE_SYSTEM_FOCUSABLE |
               (model_.isSelected(model_.seen().first + child - 1) ? STATE_SYSTEM_SELECTED : 0);
    }
    int focusedChild() const override {
        const PictureGrid::Range seen = model_.seen();
        const int current = model_.current();
        return current >= seen.first && current < seen.end ? current - seen.first + 1 : 0;
    }
};

}  // namespace

std::shared_ptr<Peer> make(ui::PictureGrid& model, Page& page) {
    return std::make_shared<PictureGridPeer>(model, page);
}

}  // namespace dravik::win32
