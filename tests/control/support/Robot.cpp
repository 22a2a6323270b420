#include "control/support/Robot.h"

#include <algorithm>
#include <map>

namespace dravik {
namespace {

constexpr UINT kInterval = 20;
constexpr UINT kGetMenu = 0x01E1;

std::map<UINT_PTR, Robot*>& robots() {
    static std::map<UINT_PTR, Robot*> all;
    return all;
}

std::vector<HWND> threadWindows() {
    std::vector<HWND> windows;
    EnumThreadWindows(
        GetCurrentThreadId(),
        [](HWND window, LPARAM list) -> BOOL {
            if (IsWindowVisible(window)) reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&windows));
    return windows;
}

}  // namespace

std::wstring textOfWindow(HWND window) {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
    text.resize(static_cast<std::size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
    return text;
}

std::wstring classOfWindow(HWND window) {
    wchar_t name[256] = {};
    GetClassNameW(window, name, 256);
    return name;
}

std::vector<HWND> children(HWND parent, const std::wstring& className) {
    std::vector<HWND> found;
    for (HWND window = GetWindow(parent, GW_CHILD); window; window = GetWindow(window, GW_HWNDNEXT)) {
        if (CompareStringOrdinal(classOfWindow(window).c_str(), -1, className.c_str(), -1, TRUE) ==
            CSTR_EQUAL)
            found.push_back(window);
        const auto inside = children(window, className);
        found.insert(found.end(), inside.begin(), inside.end());
    }
    return found;
}

HWND child(HWND parent, const std::wstring& className, const std::wstring& text) {
    for (HWND window : children(parent, className))
        if (textOfWindow(window) == text) return window;
    return nullptr;
}

Robot::Robot() : timer_(SetTimer(nullptr, 0, kInterval, &Robot::tick)) {
    robots()[timer_] = this;
}

Robot::~Robot() {
    KillTimer(nullptr, timer_);
    robots().erase(timer_);
}

void Robot::expectBox(std::wstring title, int button) {
    expected_.push_back({Expected::Kind::Box, std::move(title), button, {}});
}

void Robot::expectForm(std::wstring title, std::function<void(HWND)> act) {
    expected_.push_back({Expected::Kind::Form, std::move(title), 0, std::move(act)});
}

void Robot::expectMenu(std::wstring item) {
    expected_.push_back({Expected::Kind::Menu, std::move(item), 0, {}});
}

void CALLBACK Robot::tick(HWND, UINT, UINT_PTR id, DWORD) {
    const auto found = robots().find(id);
    if (found != robots().end()) found->second->look();
}

void Robot::look() {
    if (looking_) return;
    looking_ = true;
    std::erase_if(answered_, [](HWND window) { return !IsWindow(window) || !IsWindowVisible(window); });
    for (HWND window : threadWindows()) {
        if (answered_.contains(window)) continue;
        const std::wstring kind = classOfWindow(window);
        const bool isForm = !expected_.empty() && expected_.front().kind == Expected::Kind::Form &&
                            textOfWindow(window) == expected_.front().text && IsWindowEnabled(window);
        if (kind == L"#32768") {
            answered_.insert(window);
            menu(window);
        } else if (isForm) {
            answered_.insert(window);
            const auto act = expected_.front().act;
            expected_.pop_front();
            looking_ = false;  // the form may ask something itself
            act(window);
            return;
        } else if (kind == L"#32770" && !children(window, L"Button").empty() && GetDlgItem(window, 0xFFFF)) {
            answered_.insert(window);
            box(window);
        }
    }
    looking_ = false;
}

void Robot::box(HWND window) {
    const std::wstring title = textOfWindow(window);
    seen.push_back(textOfWindow(GetDlgItem(window, 0xFFFF)));
    if (!expected_.empty() && expected_.front().kind == Expected::Kind::Box &&
        expected_.front().text == title) {
        const int button = expected_.front().button;
        expected_.pop_front();
        PostMessageW(window, WM_COMMAND, static_cast<WPARAM>(button), 0);
        return;
    }
    surprises.push_back(L"box " + title + L": " + seen.back());
    PostMessageW(window, WM_COMMAND, static_cast<WPARAM>(IDOK), 0);
    PostMessageW(window, WM_CLOSE, 0, 0);
}

void Robot::menu(HWND window) {
    const auto handle = reinterpret_cast<HMENU>(SendMessageW(window, kGetMenu, 0, 0));
    int wanted = -1;
    const bool expected = !expected_.empty() && expected_.front().kind == Expected::Kind::Menu;
    std::wstring items;
    for (int i = 0; i < GetMenuItemCount(handle); ++i) {
        wchar_t text[256] = {};
        GetMenuStringW(handle, static_cast<UINT>(i), text, 256, MF_BYPOSITION);
        const bool disabled =
            (GetMenuState(handle, static_cast<UINT>(i), MF_BYPOSITION) & (MF_GRAYED | MF_DISABLED)) != 0;
        items +=
            (items.empty() ? L"" : L"|") + (disabled ? L"[" + std::wstring(text) + L"]" : std::wstring(text));
        if (expected && !expected_.front().text.empty() && expected_.front().text == text) wanted = i;
    }
    seen.push_back(items);
    if (expected) expected_.pop_front();
    if (!expected) surprises.push_back(L"menu " + items);
    if (wanted < 0) {
        EndMenu();
        return;
    }
    // The menu's own loop takes keys from the queue of the thread.
    int downs = 0;
    for (int i = 0; i <= wanted; ++i)
        if ((GetMenuState(handle, static_cast<UINT>(i), MF_BYPOSITION) & MF_SEPARATOR) == 0) ++downs;
    for (int i = 0; i < downs; ++i) PostMessageW(window, WM_KEYDOWN, VK_DOWN, 0);
    PostMessageW(window, WM_KEYDOWN, VK_RETURN, 0);
}

}  // namespace dravik
