#include "windows/app/DialogScript.h"

#include <algorithm>
#include <chrono>
#include <map>

#include "windows/win32/Guard.h"
#include "windows/win32/Peer.h"
#include "windows/win32/WinText.h"

namespace dravik::app {
namespace {

constexpr UINT kInterval = 30;  // milliseconds
constexpr int kPatience = 600;  // polls
constexpr UINT kGetMenuHandle = 0x01E1;
constexpr int kBoxText = 0xFFFF;

std::map<UINT_PTR, DialogScript*>& scripts() {
    static std::map<UINT_PTR, DialogScript*> known;
    return known;
}

std::wstring classOf(HWND window) {
    wchar_t name[64] = {};
    GetClassNameW(window, name, static_cast<int>(std::size(name)));
    return name;
}

bool isNamed(HWND window, const std::string& name) {
    if (name == DialogScript::kMenu) return classOf(window) == L"#32768";
    // The text tells a box from other dialogs of the system.
    if (name == DialogScript::kMessageBox)
        return classOf(window) == L"#32770" && GetDlgItem(window, kBoxText);
    return IsWindowEnabled(window) && GetPropW(window, win32::nameMark(name).c_str());
}

}  // namespace

void settle() {
    MSG message{};
    for (int i = 0; i < 1000 && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE); ++i) {
        if (message.message == WM_QUIT) {
            PostQuitMessage(static_cast<int>(message.wParam));
            return;
        }
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

bool waitUntil(const std::function<bool()>& condition, int milliseconds) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(milliseconds);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end) return false;
        settle();
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
    }
    return true;
}

void pressKey(HWND window, UINT key) {
    SendMessageW(window, WM_KEYDOWN, key, 1);
    if (IsWindow(window)) SendMessageW(window, WM_KEYUP, key, static_cast<LPARAM>(0xC0000001));
}

void typeOver(HWND edit, const std::wstring& text) {
    SendMessageW(edit, EM_SETSEL, 0, -1);
    if (text.empty()) SendMessageW(edit, WM_CLEAR, 0, 0);
    for (const wchar_t unit : text) SendMessageW(edit, WM_CHAR, unit, 1);
}

namespace {

// A lambda would not have the calling convention of 32-bit Windows.
BOOL CALLBACK addShown(HWND window, LPARAM windows) {
    if (IsWindowVisible(window)) reinterpret_cast<std::vector<HWND>*>(windows)->push_back(window);
    return TRUE;
}

HMENU menuOf(HWND menuWindow) {
    return reinterpret_cast<HMENU>(SendMessageW(menuWindow, kGetMenuHandle, 0, 0));
}

std::wstring itemOf(HMENU menu, int place) {
    wchar_t text[256] = {};
    GetMenuStringW(menu, static_cast<UINT>(place), text, static_cast<int>(std::size(text)), MF_BYPOSITION);
    return text;
}

}  // namespace

std::vector<HWND> shownWindows() {
    std::vector<HWND> windows;
    EnumThreadWindows(GetCurrentThreadId(), addShown, reinterpret_cast<LPARAM>(&windows));
    return windows;
}

DialogScript::~DialogScript() {
    if (timer_) {
        KillTimer(nullptr, timer_);
        scripts().erase(timer_);
    }
}

void DialogScript::expect(std::string name, Step step) {
    steps_.push_back({std::move(name), std::move(step)});
    waited_ = 0;
    schedule();
}

void DialogScript::answerOthers(int button) {
    otherButton_ = button;
    schedule();
}

void DialogScript::schedule() {
    if (timer_) return;
    timer_ = SetTimer(nullptr, 0, kInterval, timerCame);
    scripts()[timer_] = this;
}

void CALLBACK DialogScript::timerCame(HWND, UINT, UINT_PTR id, DWORD) {
    const auto found = scripts().find(id);
    if (found != scripts().end()) win32::guarded([&] { found->second->poll(); });
}

void DialogScript::poll() {
    const std::vector<HWND> windows = shownWindows();
    if (!steps_.empty()) {
        const auto found = std::find_if(windows.begin(), windows.end(), [this](HWND window) {
            return window != lastWorked_ && isNamed(window, steps_.front().name);
        });
        if (found != windows.end()) {
            const Expected step = std::move(steps_.front());
            steps_.pop_front();
            waited_ = 0;
            lastWorked_ = *found;
            try {
                step.step(*found);
            } catch (...) {
                problems_.push_back(currentFailure().description());
                PostMessageW(*found, WM_CLOSE, 0, 0);
            }
            lastWorked_ = nullptr;
            return;
        }
        if (++waited_ > kPatience) {
            problems_.push_back("no window \"" + steps_.front().name + "\" appeared");
            steps_.clear();
        }
        if (!steps_.empty() && steps_.front().name == kMessageBox) return;
    }
    if (otherButton_ == 0) return;
    for (const HWND window : windows) {
        if (isNamed(window, kMenu) && window != lastWorked_ &&
            (steps_.empty() || steps_.front().name != kMenu))
            EndMenu();
        if (!isNamed(window, kMessageBox) || !IsWindowEnabled(window) || window == lastWorked_) continue;
        messages_.push_back(win32::utf8(win32::windowText(GetDlgItem(window, kBoxText))));
        if (GetDlgItem(window, otherButton_))
            SendMessageW(window, WM_COMMAND, static_cast<WPARAM>(otherButton_), 0);
        else
            SendMessageW(window, WM_CLOSE, 0, 0);
        return;
    }
}

std::wstring menuItems(HWND menuWindow) {
    const HMENU menu = menuOf(menuWindow);
    std::wstring items;
    for (int i = 0; i < GetMenuItemCount(menu); ++i) items += (i > 0 ? L"|" : L"") + itemOf(menu, i);
    return items;
}

void pickMenuItem(HWND menuWindow, const std::wstring& caption) {
    const HMENU menu = menuOf(menuWindow);
    int downs = 0;
    for (int i = 0; i < GetMenuItemCount(menu); ++i) {
        if (GetMenuState(menu, static_cast<UINT>(i), MF_BYPOSITION) & MF_SEPARATOR) continue;
        ++downs;
        const std::wstring text = itemOf(menu, i);
        if (caption.empty() || !win32::withoutMnemonic(text).starts_with(caption)) continue;
        for (; downs > 0; --downs) PostMessageW(menuWindow, WM_KEYDOWN, VK_DOWN, 1);
        PostMessageW(menuWindow, WM_KEYDOWN, VK_RETURN, 1);
        return;
    }
    PostMessageW(menuWindow, WM_KEYDOWN, VK_ESCAPE, 1);
}

}  // namespace dravik::app
