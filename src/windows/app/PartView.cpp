#include "windows/app/PartView.h"

#include <algorithm>
#include <utility>

#include "windows/app/GreyPicture.h"
#include "windows/win32/ScrollBar.h"
#include "windows/win32/WinText.h"

namespace dravik::app {
namespace {

constexpr int kLinesOfWheelStep = 3;
constexpr COLORREF kPale = RGB(190, 214, 245);

void showScroll(HWND window, int bar, const trainer::ScrollState& state) {
    win32::setScrollBar(window, bar, state.most > 0 ? state.most + state.page : 0, state.page,
                        state.position);
}

}  // namespace

PartView::PartView(HWND parent, SharedLook& shared, trainer::TrainerWindow& model)
    : DrawnWindow(shared), all_(model), model_(model.view) {
    create(L"DravikPartView", "partView", parent, WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_BORDER);
    changed_ = model_.changed.connect([this] { showState(); });
    model_.setDisplay(shared.display());
}

std::wstring PartView::name() const {
    return win32::wide(trainer::kPartViewName);
}

std::wstring PartView::description() const {
    return win32::wide(all_.viewDescription());
}

// A bar that comes or goes makes the window tell its new size, by which all of this comes again.
void PartView::showState() {
    redraw();
    if (std::exchange(showing_, true)) return;
    for (int pass = 0; pass < 2; ++pass) {
        showScroll(window(), SB_HORZ, model_.horizontal());
        showScroll(window(), SB_VERT, model_.vertical());
    }
    showing_ = false;
}

void PartView::paint(HDC dc, const RECT& area) {
    win32::fill(dc, area, win32::blend(look().background(), 0, 0.08));
    SetBkMode(dc, TRANSPARENT);
    if (const engine::GreyImage* image = model_.image()) {
        RECT place = rectOf(model_.imagePlace());
        place.right = std::max(place.right, place.left + 1);
        place.bottom = std::max(place.bottom, place.top + 1);
        drawGrey(dc, *image, place);
        paintCharacters(dc);
    } else {
        paintMessage(dc, area);
    }
    paintFocus(dc, area);
}

void PartView::paintMessage(HDC dc, const RECT& area) {
    const win32::Selected font(dc, look().font(false, 10));
    SetTextColor(dc, look().color(ui::kWindowTextColor));
    const std::wstring words = win32::wide(model_.message());
    RECT place = area;
    InflateRect(&place, -look().px(24), -look().px(24));
    RECT needed = place;
    DrawTextW(dc, words.c_str(), -1, &needed, DT_CENTER | DT_WORDBREAK | DT_NOPREFIX | DT_CALCRECT);
    place.top += std::max((win32::heightOf(place) - win32::heightOf(needed)) / 2, 0);
    DrawTextW(dc, words.c_str(), -1, &place, DT_CENTER | DT_WORDBREAK | DT_NOPREFIX);
}

void PartView::paintCharacters(HDC dc) {
    const int hair = look().px(1);
    const auto marks = model_.marks();
    for (const trainer::CharacterMark& mark : marks) {
        if (!mark.framed) continue;
        // A pale line around makes the box visible on dark and on light parts.
        RECT box = rectOf(mark.box);
        InflateRect(&box, hair, hair);
        win32::frame(dc, box, kPale, hair);
        InflateRect(&box, -hair, -hair);
        win32::frame(dc, box, look().color(mark.color()), mark.warns ? 2 * hair : hair);
    }
    for (const trainer::CharacterMark& mark : marks)
        if (!mark.tag.empty()) paintTag(dc, mark);
}

void PartView::paintTag(HDC dc, const trainer::CharacterMark& mark) {
    const std::wstring text = win32::wide(mark.tag);
    const HFONT font = look().fontOfHeight(true, -model_.tagTextHeight(mark));
    const SIZE size = look().textSize(font, text);
    RECT tag = rectOf(model_.tagPlace(mark, size.cx, size.cy));
    const COLORREF color = look().color(mark.color());
    const win32::Pen pen(CreatePen(PS_SOLID, 1, color));
    const win32::Selected selectedPen(dc, pen.get());
    const win32::Selected selectedBrush(dc, look().brush(color));
    const win32::Selected selectedFont(dc, font);
    RoundRect(dc, tag.left, tag.top, tag.right, tag.bottom, look().px(5), look().px(5));
    SetTextColor(dc, RGB(255, 255, 255));
    DrawTextW(dc, text.c_str(), static_cast<int>(text.size()), &tag,
              DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX | DT_NOCLIP);
}

LRESULT PartView::answer(UINT message, WPARAM wParam, LPARAM lParam) {
    const POINT pixel{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    const trainer::ViewPoint place{double(pixel.x), double(pixel.y)};
    const trainer::ScrollState across = model_.horizontal();
    const trainer::ScrollState down = model_.vertical();
    switch (message) {
        case WM_SIZE:
            model_.setViewport(client().right, client().bottom);
            redraw();
            return 0;
        case WM_HSCROLL:
            model_.scrollTo(win32::scrolledTo(window(), SB_HORZ, LOWORD(wParam), across.line), down.position);
            return 0;
        case WM_VSCROLL:
            model_.scrollTo(across.position, win32::scrolledTo(window(), SB_VERT, LOWORD(wParam), down.line));
            return 0;
        case WM_MOUSEWHEEL: {
            const double steps = static_cast<short>(HIWORD(wParam)) / double{WHEEL_DELTA};
            POINT inside = pixel;
            ScreenToClient(window(), &inside);
            if (LOWORD(wParam) & MK_CONTROL)
                model_.zoomBy(steps, {double(inside.x), double(inside.y)});
            else
                model_.scrollBy(0, static_cast<int>(-steps * down.line * kLinesOfWheelStep));
            return 0;
        }
        case WM_LBUTTONDOWN:
            SetFocus(window());
            if (model_.beginDrag(place)) SetCapture(window());
            return 0;
        case WM_MOUSEMOVE:
            model_.dragTo(place);
            return 0;
        case WM_LBUTTONUP:
            if (model_.isDragging()) ReleaseCapture();
            return 0;
        case WM_CAPTURECHANGED:
            model_.endDrag();
            return 0;
        case WM_SETCURSOR:
            if (LOWORD(lParam) != HTCLIENT || !model_.image()) break;
            SetCursor(LoadCursorW(nullptr, model_.isDragging() ? IDC_SIZEALL : IDC_HAND));
            return TRUE;
        case WM_KEYDOWN:
            if (wParam == VK_LEFT || wParam == VK_RIGHT)
                model_.scrollBy(wParam == VK_LEFT ? -across.line : across.line, 0);
            else if (wParam == VK_UP || wParam == VK_DOWN)
                model_.scrollBy(0, wParam == VK_UP ? -down.line : down.line);
            else
                break;
            return 0;
        default:
            break;
    }
    return DrawnWindow::answer(message, wParam, lParam);
}

}  // namespace dravik::app
