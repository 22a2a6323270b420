#include "drivers/win32/DialogScript.h"

#include <algorithm>
#include <map>
#include <stdexcept>

#include "windows/win32/Guard.h"
#include "windows/win32/Peer.h"
#include "windows/win32/WinText.h"

namespace dravik::test {
namespace {

constexpr UINT kInterval = 30;  // milliseconds
constexpr int kPatience = 600;  // polls
constexpr UINT kGetMenuHandle = 0x01E1;

std::map<UINT_PTR, DialogScript*>& scripts() {
    static std::map<UINT_PTR, DialogScript*> known;
    return known;
}

bool isNamed(HWND window, const std::string& name) {
    if (name == DialogScript::kMenu) return classOf(window) == L"#32768";
    // The text tells a box from other dialogs of the system.
    if (name == DialogScript::kMessageBox) return classOf(window) == L"#32770" && GetDlgItem(window, 0xFFFF);
    return IsWindowEnabled(window) && GetPropW(window, win32::nameMark(name).c_str());
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

void DialogScript::expectBox(std::wstring title, int button) {
    expect(kMessageBox, [title = std::move(title), button](HWND box) {
        const std::wstring own = win32::windowText(box);
        PostMessageW(box, WM_COMMAND, static_cast<WPARAM>(button), 0);
        if (own != title) throw std::runtime_error("a box \"" + win32::utf8(own) + "\" came up");
    });
}

void DialogScript::expectMenu(std::wstring item) {
    expect(kMenu, [item = std::move(item)](HWND menu) { pickMenuItem(menu, item); });
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
        messages_.push_back(win32::utf8(boxText(window)));
        if (GetDlgItem(window, otherButton_))
            SendMessageW(window, WM_COMMAND, static_cast<WPARAM>(otherButton_), 0);
        else
            SendMessageW(window, WM_CLOSE, 0, 0);
        return;
    }
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

}  // namespace dravik::test
