#include "windows/app/ReadingView.h"

#include <algorithm>
#include <cmath>
#include <cwchar>

#include "windows/win32/Guard.h"
#include "windows/win32/Peer.h"
#include "windows/win32/WinText.h"

namespace dravik::app {
namespace {

constexpr std::size_t kMostLinesAtOnce = 3;
constexpr int kTextHeight = 18;
constexpr int kPadding = 5;
constexpr COLORREF kWeak = RGB(0xB8, 0x3A, 0x00);
constexpr COLORREF kWeakOnDark = RGB(0xFF, 0x9E, 0x57);

COLORREF weakColor() {
    return win32::readableOn(GetSysColor(COLOR_WINDOW)) == 0 ? kWeak : kWeakOnDark;
}

void drawWave(HDC dc, int left, int right, int y, int step) {
    const win32::Pen pen(CreatePen(PS_SOLID, std::max(step / 2, 1), weakColor()));
    const win32::Selected selected(dc, pen.get());
    MoveToEx(dc, left, y, nullptr);
    bool up = true;
    for (int x = left + step; x <= right; x += step, up = !up) LineTo(dc, x, up ? y - step : y);
}

}  // namespace

ReadingView::ReadingView(HWND parent, SharedLook& shared, ui::Platform& platform)
    : DrawnWindow(shared), platform_(platform) {
    create(L"DravikReadingView", "reading", parent, WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_BORDER);
    toolTips_.open(window());
}

HFONT ReadingView::textFont() {
    if (fontDpi_ == look().dpi()) return font_.get();
    fontDpi_ = look().dpi();
    LOGFONTW wanted{};
    wanted.lfHeight = -look().px(kTextHeight);
    wanted.lfCharSet = DEFAULT_CHARSET;
    wanted.lfQuality = CLEARTYPE_QUALITY;
    wanted.lfPitchAndFamily = FIXED_PITCH | FF_MODERN;
    wcscpy(wanted.lfFaceName, L"Consolas");
    font_ = win32::Font(CreateFontIndirectW(&wanted));
    return font_.get();
}

void ReadingView::setReading(const trainer::Reading& reading) {
    reading_ = reading;
    SetWindowTextW(window(), text().c_str());
    NotifyWinEvent(EVENT_OBJECT_NAMECHANGE, window(), OBJID_CLIENT, CHILDID_SELF);
    showToolTips();
    redraw();
}

int ReadingView::preferredHeight() {
    const auto lines = static_cast<int>(std::clamp<std::size_t>(reading_.lines.size(), 1, kMostLinesAtOnce));
    return lines * look().lineHeight(textFont()) + 2 * look().px(kPadding) + 4;
}

std::wstring ReadingView::text() const {
    if (!reading_.available || reading_.lines.empty()) return win32::wide(reading_.note);
    std::string all;
    for (const auto& line : reading_.lines) {
        if (!all.empty()) all += "\r\n";
        for (const auto& character : line) all += engine::shownCharacter(character);
    }
    return win32::wide(all);
}

void ReadingView::showToolTips() {
    for (; shownTips_ > 0; --shownTips_) toolTips_.set(window(), shownTips_, {}, L"");
    if (!reading_.available) return;
    const HFONT font = textFont();
    const int high = look().lineHeight(font);
    int y = look().px(kPadding);
    for (const auto& line : reading_.lines) {
        int x = look().px(kPadding);
        for (const auto& character : line) {
            const std::wstring words = win32::wide(engine::shownCharacter(character));
            const int width = look().textSize(font, words).cx;
            const long percent = std::lround(character.confidence * 100);
            toolTips_.set(window(), ++shownTips_, {x, y, x + width, y + high},
                          win32::wide(character.character) + L": " + std::to_wstring(percent) + L" % sure" +
                              (engine::shownCharacter(character) != character.character ? L" (not taken)"
                               : character.confidence < trainer::kWeakConfidence        ? L" (weak)"
                                                                                        : L""));
            x += width;
        }
        y += high;
    }
}

void ReadingView::paint(HDC dc, const RECT& area) {
    win32::fill(dc, area, GetSysColor(COLOR_WINDOW));
    SetBkMode(dc, TRANSPARENT);
    const int padding = look().px(kPadding);
    const COLORREF ink = GetSysColor(COLOR_WINDOWTEXT);
    if (!reading_.available || reading_.lines.empty()) {
        const win32::Selected font(dc, look().font());
        SetTextColor(dc, win32::blend(GetSysColor(COLOR_WINDOW), ink, 0.55));
        RECT place{padding, 0, area.right - padding, area.bottom};
        const std::wstring note = win32::wide(reading_.note);
        DrawTextW(dc, note.c_str(), static_cast<int>(note.size()), &place,
                  DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS);
    } else {
        const HFONT font = textFont();
        const win32::Selected selected(dc, font);
        const int high = look().lineHeight(font);
        int y = padding;
        for (const auto& line : reading_.lines) {
            int x = padding;
            for (const auto& character : line) {
                const bool weak = character.confidence < trainer::kWeakConfidence;
                const std::wstring words = win32::wide(engine::shownCharacter(character));
                const int width = win32::textExtent(dc, words.c_str(), words.size()).cx;
                SetTextColor(dc, weak ? weakColor() : ink);
                TextOutW(dc, x, y, words.c_str(), static_cast<int>(words.size()));
                if (weak) drawWave(dc, x, x + width, y + high - look().px(1), look().px(2));
                x += width;
            }
            y += high;
        }
    }
    if (GetFocus() == window()) win32::frame(dc, area, GetSysColor(COLOR_HIGHLIGHT), look().px(1));
}

LRESULT ReadingView::answer(UINT message, WPARAM wParam, LPARAM lParam) {
    toolTips_.relay(window(), message, wParam, lParam);
    switch (message) {
        case WM_LBUTTONDOWN:
            SetFocus(window());
            return 0;
        case WM_COPY:
            platform_.setClipboardText(win32::utf8(text()));
            return 0;
        case WM_KEYDOWN:
            if (wParam == 'C' && win32::shiftState() == ui::kCtrlMask) {
                SendMessageW(window(), WM_COPY, 0, 0);
                return 0;
            }
            break;
        default:
            break;
    }
    return DrawnWindow::answer(message, wParam, lParam);
}

}  // namespace dravik::app
