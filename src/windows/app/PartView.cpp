#include "windows/app/PartView.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <utility>

#include "windows/app/GreyPicture.h"
#include "windows/win32/ScrollBar.h"
#include "windows/win32/Win32Platform.h"
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

PartView::PartView(HWND parent, SharedLook& shared, trainer::TrainerWindow& model,
                   win32::Win32Platform& platform)
    : DrawnWindow(shared), all_(model), model_(model.view) {
    create(L"DravikPartView", "partView", parent, WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_BORDER);
    changed_ = model_.changed.connect([this] { showState(); });
    focusWanted_ = model_.focusWanted.connect([this] { SetFocus(window()); });
    model_.setDisplay(shared.display());
    toolTips_.open(window());
    model_.popUp = [this, &platform](ui::PopupMenu& menu, trainer::ViewPoint place) {
        platform.popUpMenu(menu, window(), {std::lround(place.x), std::lround(place.y)});
    };
}

PartView::~PartView() {
    toolTips_.close();
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
    for (const trainer::ViewFrame& frame : model_.frames()) paintFrame(dc, frame);
    for (const trainer::ViewTag& tag : model_.tags()) paintTag(dc, tag);
}

void PartView::paintFrame(HDC dc, const trainer::ViewFrame& frame) {
    std::array<POINT, 5> corners{};
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const trainer::ViewPoint& corner = frame.corners[i % frame.corners.size()];
        corners[i] = {std::lround(corner.x), std::lround(corner.y)};
    }
    const int hair = look().px(1);
    const COLORREF color = look().color(frame.color);
    if (frame.filled) {
        const win32::Pen pen(CreatePen(PS_SOLID, 1, color));
        const win32::Selected selectedPen(dc, pen.get());
        const win32::Selected selectedBrush(dc, look().brush(color));
        Polygon(dc, corners.data(), 4);
        return;
    }
    // A pale line below makes the frame visible on dark and on light parts.
    const int width = frame.heavy ? 2 * hair : hair;
    const auto draw = [&](int penWidth, COLORREF penColor, DWORD style) {
        const LOGBRUSH brush{BS_SOLID, penColor, 0};
        const win32::Pen pen(ExtCreatePen(PS_GEOMETRIC | PS_JOIN_MITER | style, static_cast<DWORD>(penWidth),
                                          &brush, 0, nullptr));
        const win32::Selected selected(dc, pen.get());
        Polyline(dc, corners.data(), static_cast<int>(corners.size()));
    };
    draw(width + 2 * hair, kPale, PS_SOLID);
    draw(width, color, frame.dashed ? PS_DASH : PS_SOLID);
}

void PartView::paintTag(HDC dc, const trainer::ViewTag& tag) {
    const std::wstring text = win32::wide(tag.text);
    const HFONT font = look().fontOfHeight(true, -tag.textHeight);
    const SIZE size = look().textSize(font, text);
    RECT place = rectOf(model_.tagPlace(tag, size.cx, size.cy));
    const COLORREF color = look().color(tag.color), white = RGB(255, 255, 255);
    const win32::Pen pen(CreatePen(PS_SOLID, 1, color));
    const win32::Selected selectedPen(dc, pen.get());
    const win32::Selected selectedBrush(dc, look().brush(tag.outlined ? white : color));
    const win32::Selected selectedFont(dc, font);
    RoundRect(dc, place.left, place.top, place.right, place.bottom, look().px(5), look().px(5));
    SetTextColor(dc, tag.outlined ? color : white);
    DrawTextW(dc, text.c_str(), static_cast<int>(text.size()), &place,
              DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX | DT_NOCLIP);
}

// Of the character under the pointer.
void PartView::showTip(trainer::ViewPoint place) {
    const int character = model_.characterAt(place);
    if (std::exchange(tipOf_, character) == character) return;
    if (character < 0)
        toolTips_.set(window(), 1, {}, {});
    else
        toolTips_.set(window(), 1, rectOf(model_.characterBox(character)), win32::wide(model_.tipAt(place)));
}

bool PartView::takesKey(WPARAM virtualKey) {
    using Name = trainer::ViewKey::Name;
    static const std::map<WPARAM, Name> kNames = {
        {VK_LEFT, Name::Left},     {VK_RIGHT, Name::Right},  {VK_UP, Name::Up},
        {VK_DOWN, Name::Down},     {VK_HOME, Name::Home},    {VK_END, Name::End},
        {VK_TAB, Name::Tab},       {VK_RETURN, Name::Enter}, {VK_ESCAPE, Name::Escape},
        {VK_DELETE, Name::Delete}, {VK_BACK, Name::Delete},  {VK_APPS, Name::Menu}};
    trainer::ViewKey key;
    if (const auto name = kNames.find(virtualKey); name != kNames.end()) key.name = name->second;
    if (virtualKey >= 'A' && virtualKey <= 'Z') key.letter = static_cast<char>(virtualKey);
    key.shift = GetKeyState(VK_SHIFT) < 0;
    key.ctrl = GetKeyState(VK_CONTROL) < 0;
    return model_.key(key);
}

HCURSOR PartView::cursor() const {
    POINT at{};
    GetCursorPos(&at);
    ScreenToClient(window(), &at);
    const auto standard = [](auto name) { return LoadCursorW(nullptr, name); };
    switch (model_.cursorAt({double(at.x), double(at.y)})) {
        case trainer::ViewCursor::OpenHand:
            return standard(IDC_HAND);
        case trainer::ViewCursor::ClosedHand:
        case trainer::ViewCursor::Move:
            return standard(IDC_SIZEALL);
        case trainer::ViewCursor::Cross:
            return standard(IDC_CROSS);
        case trainer::ViewCursor::SizeAcross:
            return standard(IDC_SIZEWE);
        case trainer::ViewCursor::SizeDown:
            return standard(IDC_SIZENS);
        case trainer::ViewCursor::SizeFalling:
            return standard(IDC_SIZENWSE);
        case trainer::ViewCursor::SizeRising:
            return standard(IDC_SIZENESW);
        case trainer::ViewCursor::Arrow:
            break;
    }
    return standard(IDC_ARROW);
}

LRESULT PartView::answer(UINT message, WPARAM wParam, LPARAM lParam) {
    const POINT pixel{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    const trainer::ViewPoint place{double(pixel.x), double(pixel.y)};
    const trainer::ScrollState across = model_.horizontal();
    const trainer::ScrollState down = model_.vertical();
    toolTips_.relay(window(), message, wParam, lParam);
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
            if (model_.press(place)) SetCapture(window());
            return 0;
        case WM_MOUSEMOVE:
            model_.moveTo(place);
            showTip(place);
            return 0;
        case WM_LBUTTONUP:
            // The capture goes first: what is released may open a menu.
            if (model_.isDragging()) {
                releasing_ = true;
                ReleaseCapture();
                releasing_ = false;
                model_.release(place);
            }
            return 0;
        case WM_CAPTURECHANGED:
            if (!releasing_) model_.cancelDrag();
            return 0;
        case WM_RBUTTONUP:
            SetFocus(window());
            model_.pickAt(place);
            return 0;
        case WM_SETCURSOR:
            if (LOWORD(lParam) != HTCLIENT || !model_.image()) break;
            SetCursor(cursor());
            return TRUE;
        case WM_KEYDOWN:
            if (!takesKey(wParam)) break;
            return 0;
        default:
            break;
    }
    return DrawnWindow::answer(message, wParam, lParam);
}

}  // namespace dravik::app
