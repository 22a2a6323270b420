#include "windows/win32/ToolTips.h"

#include "windows/win32/Module.h"

namespace dravik::win32 {
namespace {

constexpr int kWidestTip = 480;

TTTOOLINFOW toolOf(HWND page, HWND window, UINT part) {
    TTTOOLINFOW tool{};
    // The size of the oldest version, which every one accepts.
    tool.cbSize = TTTOOLINFOW_V1_SIZE;
    tool.hwnd = part == 0 ? page : window;
    tool.uId = part == 0 ? reinterpret_cast<UINT_PTR>(window) : part;
    tool.uFlags = part == 0 ? TTF_IDISHWND : 0u;
    return tool;
}

}  // namespace

ToolTips::~ToolTips() {
    close();
}

void ToolTips::close() noexcept {
    if (window_ && IsWindow(window_)) DestroyWindow(window_);
    if (tracked_ && IsWindow(tracked_)) DestroyWindow(tracked_);
    window_ = tracked_ = page_ = nullptr;
    tips_.clear();
}

void ToolTips::open(HWND page) {
    page_ = page;
}

void ToolTips::create() {
    if (window_ || !page_) return;
    {
        const Styles styles;
        window_ = CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr,
                                  WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX, CW_USEDEFAULT, CW_USEDEFAULT,
                                  CW_USEDEFAULT, CW_USEDEFAULT, page_, nullptr, moduleInstance(), nullptr);
    }
    SendMessageW(window_, TTM_SETMAXTIPWIDTH, 0, kWidestTip);
    SendMessageW(window_, WM_SETFONT, reinterpret_cast<WPARAM>(font_), FALSE);
    for (auto& [key, tip] : tips_) add(key, tip);
}

void ToolTips::add(const Key& key, Tip& tip) {
    TTTOOLINFOW tool = toolOf(page_, key.first, key.second);
    tool.rect = tip.place;
    tool.lpszText = tip.text.data();
    SendMessageW(window_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
}

void ToolTips::set(HWND window, const std::wstring& text) {
    set(window, 0, RECT{}, text);
}

void ToolTips::set(HWND window, UINT part, const RECT& place, const std::wstring& text) {
    if (!page_ || !window) return;
    const Key key{window, part};
    const bool known = tips_.count(key) > 0;
    if (text.empty()) {
        if (known) forget(key);
        tips_.erase(key);
        return;
    }
    Tip& tip = tips_[key] = {text, place};
    if (!window_) return;
    if (!known) return add(key, tip);
    TTTOOLINFOW tool = toolOf(page_, window, part);
    tool.rect = place;
    tool.lpszText = tip.text.data();
    SendMessageW(window_, TTM_UPDATETIPTEXTW, 0, reinterpret_cast<LPARAM>(&tool));
    if (part > 0) SendMessageW(window_, TTM_NEWTOOLRECTW, 0, reinterpret_cast<LPARAM>(&tool));
}

void ToolTips::forget(const Key& key) {
    TTTOOLINFOW tool = toolOf(page_, key.first, key.second);
    if (window_ && IsWindow(window_)) SendMessageW(window_, TTM_DELTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
}

void ToolTips::remove(HWND window) {
    for (auto tip = tips_.lower_bound({window, 0}); tip != tips_.end() && tip->first.first == window;) {
        forget(tip->first);
        tip = tips_.erase(tip);
    }
}

void ToolTips::relay(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message < WM_MOUSEFIRST || message > WM_MOUSELAST) return;
    const auto tip = tips_.lower_bound({window, 0});
    if (tip == tips_.end() || tip->first.first != window) return;
    create();
    MSG event{window, message, wParam, lParam, static_cast<DWORD>(GetMessageTime()), {}};
    const DWORD place = GetMessagePos();
    event.pt = {GET_X_LPARAM(place), GET_Y_LPARAM(place)};
    SendMessageW(window_, TTM_RELAYEVENT, 0, reinterpret_cast<LPARAM>(&event));
}

void ToolTips::setFont(HFONT font) {
    font_ = font;
    for (const HWND shown : {window_, tracked_})
        if (shown) SendMessageW(shown, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
}

void ToolTips::showBelow(HWND window, RECT place, const std::wstring& text) {
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
    SendMessageW(tracked_, WM_SETFONT, reinterpret_cast<WPARAM>(font_), FALSE);
    SendMessageW(tracked_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
    MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&place), 2);
    SendMessageW(tracked_, TTM_TRACKPOSITION, 0, MAKELPARAM(place.left, place.bottom + 2));
    SendMessageW(tracked_, TTM_TRACKACTIVATE, TRUE, reinterpret_cast<LPARAM>(&tool));
}

void ToolTips::hide() {
    if (tracked_ && IsWindow(tracked_)) DestroyWindow(tracked_);
    tracked_ = nullptr;
}

}  // namespace dravik::win32
