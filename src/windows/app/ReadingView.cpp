#include "windows/app/ReadingView.h"

#include <algorithm>
#include <cwchar>

#include "windows/win32/Peer.h"
#include "windows/win32/WinText.h"

namespace dravik::app {
namespace {

constexpr int kTextHeight = 18;
constexpr int kPadding = 5;

void drawWave(HDC dc, COLORREF color, int left, int right, int y, int step) {
    const win32::Pen pen(CreatePen(PS_SOLID, std::max(step / 2, 1), color));
    const win32::Selected selected(dc, pen.get());
    MoveToEx(dc, left, y, nullptr);
    bool up = true;
    for (int x = left + step; x <= right; x += step, up = !up) LineTo(dc, x, up ? y - step : y);
}

}  // namespace

ReadingView::ReadingView(HWND parent, SharedLook& shared, trainer::ReadingModel& model,
                         ui::Platform& platform)
    : DrawnWindow(shared), model_(model), platform_(platform) {
    create(L"DravikReadingView", "reading", parent, WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_BORDER);
    toolTips_.open(window());
    changed_ = model.changed.connect([this] { showReading(); });
    showReading();
}

std::wstring ReadingView::name() const {
    return win32::wide(std::string(trainer::kReadingName) + ": " + model_.text(", "));
}

std::wstring ReadingView::description() const {
    return win32::wide(model_.description());
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

void ReadingView::showReading() {
    SetWindowTextW(window(), win32::wide(model_.text("\r\n")).c_str());
    NotifyWinEvent(EVENT_OBJECT_NAMECHANGE, window(), OBJID_CLIENT, CHILDID_SELF);
    showToolTips();
    redraw();
}

int ReadingView::preferredHeight() {
    return model_.shownLines() * look().lineHeight(textFont()) + 2 * look().px(kPadding) + 4;
}

template <class Body>
void ReadingView::forSpans(Body&& body) {
    const HFONT font = textFont();
    const int high = look().lineHeight(font);
    int y = look().px(kPadding);
    for (const auto& line : model_.lines()) {
        int x = look().px(kPadding);
        for (const trainer::ReadingSpan& span : line) {
            const std::wstring text = win32::wide(span.text);
            const int width = look().textSize(font, text).cx;
            body(span, text, RECT{x, y, x + width, y + high});
            x += width;
        }
        y += high;
    }
}

void ReadingView::showToolTips() {
    for (; shownTips_ > 0; --shownTips_) toolTips_.set(window(), shownTips_, {}, {});
    forSpans([this](const trainer::ReadingSpan& span, const std::wstring&, const RECT& place) {
        toolTips_.set(window(), ++shownTips_, place, win32::wide(span.tip));
    });
}

void ReadingView::paint(HDC dc, const RECT& area) {
    win32::fill(dc, area, look().system(COLOR_WINDOW));
    SetBkMode(dc, TRANSPARENT);
    const COLORREF ink = look().system(COLOR_WINDOWTEXT);
    if (model_.lines().empty()) {
        const win32::Selected font(dc, look().font());
        SetTextColor(dc, win32::blend(look().system(COLOR_WINDOW), ink, 0.55));
        RECT place{look().px(kPadding), 0, area.right - look().px(kPadding), area.bottom};
        const std::wstring note = win32::wide(model_.note());
        DrawTextW(dc, note.c_str(), static_cast<int>(note.size()), &place,
                  DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS);
    }
    const COLORREF weak = look().color(
        win32::readableOn(look().system(COLOR_WINDOW)) == 0 ? ui::kWarningColor : ui::kWarningColorOnDark);
    const win32::Selected selected(dc, textFont());
    forSpans([&](const trainer::ReadingSpan& span, const std::wstring& text, const RECT& place) {
        SetTextColor(dc, span.weak ? weak : ink);
        TextOutW(dc, place.left, place.top, text.c_str(), static_cast<int>(text.size()));
        if (span.weak) drawWave(dc, weak, place.left, place.right, place.bottom - look().px(1), look().px(2));
    });
    paintFocus(dc, area);
}

LRESULT ReadingView::answer(UINT message, WPARAM wParam, LPARAM lParam) {
    toolTips_.relay(window(), message, wParam, lParam);
    switch (message) {
        case WM_LBUTTONDOWN:
            SetFocus(window());
            return 0;
        case WM_COPY:
            platform_.setClipboardText(model_.text("\r\n"));
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
