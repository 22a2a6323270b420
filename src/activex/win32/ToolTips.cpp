#include "activex/win32/ToolTips.h"

#include <windows.h>

#include <commctrl.h>

#include "activex/win32/Module.h"

namespace dravik {
namespace {

constexpr int kWidestTip = 480;

TTTOOLINFOW toolOf(HWND page, HWND window, UINT part) {
    TTTOOLINFOW tool{};
    // The size of the oldest version, which every one accepts.
    tool.cbSize = TTTOOLINFOW_V1_SIZE;
    tool.hwnd = part == 0 ? page : window;
    tool.uId = part == 0 ? reinterpret_cast<UINT_PTR>(window) : part;
    tool.uFlags = TTF_SUBCLASS | (part == 0 ? TTF_IDISHWND : 0u);
    return tool;
}

}  // namespace

ToolTips::~ToolTips() {
    close();
}

void ToolTips::close() noexcept {
    if (window_ && IsWindow(window_)) DestroyWindow(window_);
    if (tracked_ && IsWindow(tracked_)) DestroyWindow(tracked_);
    window_ = tracked_ = nullptr;
    texts_.clear();
}

void ToolTips::create(HWND page) {
    page_ = page;
    const Styles styles;
    window_ = CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr,
                              WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX, CW_USEDEFAULT, CW_USEDEFAULT,
                              CW_USEDEFAULT, CW_USEDEFAULT, page, nullptr, moduleInstance(), nullptr);
    SendMessageW(window_, TTM_SETMAXTIPWIDTH, 0, kWidestTip);
}

void ToolTips::set(HWND window, const std::wstring& text) {
    set(window, 0, RECT{}, text);
}

void ToolTips::set(HWND window, UINT part, const RECT& place, const std::wstring& text) {
    if (!window_ || !window) return;
    const auto key = std::make_pair(window, part);
    TTTOOLINFOW tool = toolOf(page_, window, part);
    tool.rect = place;
    const bool known = texts_.count(key) > 0;
    if (text.empty()) {
        if (known) SendMessageW(window_, TTM_DELTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
        texts_.erase(key);
        return;
    }
    std::wstring& kept = texts_[key] = text;
    tool.lpszText = kept.data();
    SendMessageW(window_, known ? TTM_UPDATETIPTEXTW : TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
    if (known && part > 0) SendMessageW(window_, TTM_NEWTOOLRECTW, 0, reinterpret_cast<LPARAM>(&tool));
}

void ToolTips::remove(HWND window) {
    for (auto tip = texts_.lower_bound({window, 0}); tip != texts_.end() && tip->first.first == window;) {
        TTTOOLINFOW tool = toolOf(page_, window, tip->first.second);
        if (window_ && IsWindow(window_))
            SendMessageW(window_, TTM_DELTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
        tip = texts_.erase(tip);
    }
}

void ToolTips::setFont(HFONT font) {
    if (window_) SendMessageW(window_, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    if (tracked_) SendMessageW(tracked_, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
}

void ToolTips::showBelow(HWND window, const std::wstring& text) {
    hide();
    if (text.empty() || !page_) return;
    TTTOOLINFOW tool{};
    tool.cbSize = TTTOOLINFOW_V1_SIZE;
    tool.hwnd = page_;
    tool.uFlags = TTF_TRACK | TTF_ABSOLUTE;
    std::wstring shown = text;
    tool.lpszText = shown.data();
    const Styles styles;
    tracked_ =
        CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX, 0,
                        0, 0, 0, page_, nullptr, moduleInstance(), nullptr);
    SendMessageW(tracked_, WM_SETFONT, static_cast<WPARAM>(SendMessageW(window_, WM_GETFONT, 0, 0)), FALSE);
    SendMessageW(tracked_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
    RECT place{};
    GetWindowRect(window, &place);
    SendMessageW(tracked_, TTM_TRACKPOSITION, 0, MAKELPARAM(place.left, place.bottom + 2));
    SendMessageW(tracked_, TTM_TRACKACTIVATE, TRUE, reinterpret_cast<LPARAM>(&tool));
}

void ToolTips::hide() {
    if (tracked_ && IsWindow(tracked_)) DestroyWindow(tracked_);
    tracked_ = nullptr;
}

}  // namespace dravik
