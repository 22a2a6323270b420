#include "windows/app/PartView.h"

#include <algorithm>
#include <cmath>

#include "windows/app/GreyPicture.h"
#include "windows/win32/ScrollBar.h"
#include "windows/win32/WinText.h"

namespace dravik::app {
namespace {

constexpr double kLeastScale = 0.02;
constexpr double kMostScale = 32;
constexpr double kZoomStep = 1.25;
constexpr double kMostFittingScale = 4;  // a tiny image is not blown up further by itself
constexpr int kFitMargin = 12;
constexpr int kTagRoom = 18;  // below the image, for the labels of its last line
constexpr COLORREF kLabelled = RGB(0x1E, 0x6F, 0xD9);
constexpr COLORREF kWarning = RGB(0xD8, 0x43, 0x15);

}  // namespace

PartView::PartView(HWND parent, SharedLook& shared) : DrawnWindow(shared) {
    create(L"DravikPartView", "partView", parent, WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_BORDER);
    SetWindowTextW(window(), L"Part image");
}

void PartView::setImage(const engine::GreyImage* image, std::string message) {
    image_ = image;
    message_ = std::move(message);
    if (fits_) scale_ = fittingScale();
    showScrollBars();
    redraw();
    tell();
}

void PartView::setCharacters(std::vector<trainer::LabelledCharacter> characters, int mismatch) {
    characters_ = std::move(characters);
    mismatch_ = mismatch;
    redraw();
}

double PartView::fittingScale() const {
    if (!isShown()) return 1;
    RECT whole{};
    GetWindowRect(window(), &whole);
    const double wide = std::max(win32::widthOf(whole) - 2 * look().px(kFitMargin), 16);
    const double high =
        std::max(win32::heightOf(whole) - 2 * look().px(kFitMargin) - look().px(kTagRoom), 16);
    return std::clamp(std::min(wide / image_->width(), high / image_->height()), kLeastScale,
                      kMostFittingScale * look().dpi() / win32::kUsualDpi);
}

void PartView::fit() {
    fits_ = true;
    scale_ = fittingScale();
    showScrollBars();
    redraw();
    tell();
}

void PartView::setScale(double scale) {
    const RECT area = client();
    zoomAround(scale, {area.right / 2, area.bottom / 2});
}

void PartView::zoomIn() {
    setScale(scale_ * kZoomStep);
}

void PartView::zoomOut() {
    setScale(scale_ / kZoomStep);
}

void PartView::zoomAround(double scale, POINT place) {
    if (!isShown()) return;
    const POINT before = origin();
    const double x = (place.x - before.x) / scale_;
    const double y = (place.y - before.y) / scale_;
    fits_ = false;
    scale_ = std::clamp(scale, kLeastScale, kMostScale);
    showScrollBars();
    const POINT now = origin();
    scrollTo(scroll_.x + static_cast<int>(std::lround(now.x + x * scale_ - place.x)),
             scroll_.y + static_cast<int>(std::lround(now.y + y * scale_ - place.y)));
    tell();
}

SIZE PartView::contentSize() const {
    if (!isShown()) return {0, 0};
    return {std::lround(image_->width() * scale_) + 2 * look().px(kFitMargin),
            std::lround(image_->height() * scale_) + 2 * look().px(kFitMargin) + look().px(kTagRoom)};
}

// A fitted image needs no scroll bars; showing them would change what fits.
void PartView::showScrollBars() {
    if (showingBars_) return;
    showingBars_ = true;
    const SIZE content = fits_ ? SIZE{0, 0} : contentSize();
    for (int pass = 0; pass < 2; ++pass) {  // one bar takes room from the other direction
        const RECT area = client();
        scroll_.x = win32::setScrollBar(window(), SB_HORZ, content.cx, area.right, scroll_.x);
        scroll_.y = win32::setScrollBar(window(), SB_VERT, content.cy, area.bottom, scroll_.y);
    }
    showingBars_ = false;
}

void PartView::scrollTo(int x, int y) {
    scroll_ = {x, y};
    showScrollBars();
    redraw();
}

// Where the image's left-top corner stands.
POINT PartView::origin() const {
    const RECT area = client();
    const SIZE content = contentSize();
    const int margin = look().px(kFitMargin);
    return {content.cx <= area.right ? (area.right - content.cx) / 2 + margin : margin - scroll_.x,
            content.cy <= area.bottom ? (area.bottom - content.cy) / 2 + margin : margin - scroll_.y};
}

RECT PartView::boxOf(const engine::FoundCharacter& place) const {
    const POINT corner = origin();
    const auto at = [this](int value) { return std::lround(value * scale_); };
    return {corner.x + at(place.left) - 2, corner.y + at(place.top) - 2, corner.x + at(place.right) + 2,
            corner.y + at(place.bottom) + 2};
}

void PartView::paint(HDC dc, const RECT& area) {
    win32::fill(dc, area, win32::blend(look().background(), 0, 0.08));
    SetBkMode(dc, TRANSPARENT);
    if (!isShown()) {
        const win32::Selected font(dc, look().font(false, 10));
        SetTextColor(dc, look().color(ui::kWindowTextColor));
        const std::wstring words = win32::wide(message_);
        RECT place = area;
        InflateRect(&place, -look().px(24), -look().px(24));
        RECT needed = place;
        DrawTextW(dc, words.c_str(), -1, &needed, DT_CENTER | DT_WORDBREAK | DT_NOPREFIX | DT_CALCRECT);
        place.top += std::max((win32::heightOf(place) - win32::heightOf(needed)) / 2, 0);
        DrawTextW(dc, words.c_str(), -1, &place, DT_CENTER | DT_WORDBREAK | DT_NOPREFIX);
    } else {
        const POINT corner = origin();
        drawGrey(dc, *image_,
                 {corner.x, corner.y, corner.x + std::max(1L, std::lround(image_->width() * scale_)),
                  corner.y + std::max(1L, std::lround(image_->height() * scale_))});
        paintCharacters(dc);
    }
    if (GetFocus() == window()) win32::frame(dc, area, GetSysColor(COLOR_HIGHLIGHT), look().px(1));
}

void PartView::paintCharacters(HDC dc) {
    RECT seen = client();
    InflateRect(&seen, 40, 40);
    const int hair = look().px(1);
    const auto isSeen = [&](const RECT& box) {
        RECT both{};
        return IntersectRect(&both, &box, &seen) != FALSE;
    };
    for (const auto& character : characters_) {
        RECT box = boxOf(character.place);
        if (!isSeen(box)) continue;
        const bool warning = mismatch_ != 0 && character.label.empty();
        // A pale line around makes the box visible on dark and on light parts.
        InflateRect(&box, hair, hair);
        win32::frame(dc, box, RGB(190, 214, 245), hair);
        InflateRect(&box, -hair, -hair);
        win32::frame(dc, box, warning ? kWarning : kLabelled, warning ? 2 * hair : hair);
    }
    for (const auto& character : characters_) {
        const RECT box = boxOf(character.place);
        if (!isSeen(box)) continue;
        if (!character.label.empty())
            paintTag(dc, box, win32::wide(character.label), false);
        else if (mismatch_ != 0)
            paintTag(dc, box, L"?", true);
    }
    if (mismatch_ > 0 && !characters_.empty()) {
        // Typed characters that no box is left for.
        RECT last = boxOf(characters_.back().place);
        OffsetRect(&last, win32::widthOf(last) + look().px(8), 0);
        paintTag(dc, last, L"+" + std::to_wstring(mismatch_), true);
    }
}

void PartView::paintTag(HDC dc, const RECT& box, const std::wstring& text, bool warning) {
    const int height = std::clamp(static_cast<int>(win32::heightOf(box) * 0.45), look().px(9), look().px(14));
    const HFONT font = look().fontOfHeight(true, -height);
    const SIZE size = look().textSize(font, text);
    const int wide = std::max<int>(size.cx + look().px(5), size.cy * 4 / 5);
    const int left = (box.left + box.right - wide) / 2;
    RECT tag{left, box.bottom + look().px(2), left + wide, box.bottom + look().px(2) + size.cy};
    const COLORREF color = warning ? kWarning : kLabelled;
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
    const POINT place{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    const RECT area = client();
    const auto move = [this](int x, int y) { scrollTo(scroll_.x + x, scroll_.y + y); };
    switch (message) {
        case WM_SIZE:
            if (fits_ && isShown())
                fit();
            else
                showScrollBars();
            redraw();
            return 0;
        case WM_HSCROLL:
            scrollTo(win32::scrolledTo(window(), SB_HORZ, LOWORD(wParam), area.right / 12), scroll_.y);
            return 0;
        case WM_VSCROLL:
            scrollTo(scroll_.x, win32::scrolledTo(window(), SB_VERT, LOWORD(wParam), area.bottom / 12));
            return 0;
        case WM_MOUSEWHEEL: {
            const double steps = static_cast<short>(HIWORD(wParam)) / double{WHEEL_DELTA};
            POINT inside = place;
            ScreenToClient(window(), &inside);
            if (LOWORD(wParam) & MK_CONTROL)
                zoomAround(scale_ * std::pow(kZoomStep, steps), inside);
            else
                move(0, static_cast<int>(-steps * area.bottom / 6));
            return 0;
        }
        case WM_LBUTTONDOWN:
            SetFocus(window());
            if (!isShown()) return 0;
            dragging_ = true;
            dragFrom_ = place;
            SetCapture(window());
            return 0;
        case WM_MOUSEMOVE:
            if (!dragging_) return 0;
            move(dragFrom_.x - place.x, dragFrom_.y - place.y);
            dragFrom_ = place;
            return 0;
        case WM_LBUTTONUP:
            if (dragging_) ReleaseCapture();
            return 0;
        case WM_CAPTURECHANGED:
            dragging_ = false;
            return 0;
        case WM_SETCURSOR:
            if (LOWORD(lParam) != HTCLIENT || !isShown()) break;
            SetCursor(LoadCursorW(nullptr, dragging_ ? IDC_SIZEALL : IDC_HAND));
            return TRUE;
        case WM_KEYDOWN:
            if (wParam == VK_LEFT || wParam == VK_RIGHT)
                move((wParam == VK_LEFT ? -1 : 1) * area.right / 12, 0);
            else if (wParam == VK_UP || wParam == VK_DOWN)
                move(0, (wParam == VK_UP ? -1 : 1) * area.bottom / 12);
            else
                break;
            return 0;
        default:
            break;
    }
    return DrawnWindow::answer(message, wParam, lParam);
}

}  // namespace dravik::app
