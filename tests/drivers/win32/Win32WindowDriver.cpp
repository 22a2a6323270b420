#include "drivers/win32/Win32WindowDriver.h"

#include <algorithm>
#include <utility>

#include "drivers/win32/ImageFile.h"
#include "windows/win32/Gdi.h"
#include "windows/win32/Peer.h"
#include "windows/win32/WinText.h"

namespace dravik::test {
namespace {

constexpr int kPatience = 20000;  // milliseconds

}  // namespace

HWND Win32WindowDriver::find(const std::string& name) const {
    for (const HWND top : shownWindows())
        if (const HWND found = win32::findWindowNamed(top, name)) return found;
    throw SessionFailure("there is no control named " + name);
}

std::string Win32WindowDriver::show() {
    window_.show();
    if (!waitUntil([&] { return IsWindowVisible(window_.window()) != FALSE; }, kPatience))
        throw SessionFailure("the window did not appear");
    return win32::utf8(win32::windowText(window_.window()));
}

void Win32WindowDriver::closeForms() {
    for (const HWND window : shownWindows())
        if (classOf(window) == L"DravikFormWindow") SendMessageW(window, WM_CLOSE, 0, 0);
    settle();
}

void Win32WindowDriver::click(const std::string& name) {
    if (!canClick(name)) throw SessionFailure(name + " cannot be clicked");
    SendMessageW(find(name), BM_CLICK, 0, 0);
    settle();
}

void Win32WindowDriver::clickTool(const std::string& bar, const std::string& key) {
    const HWND tools = find(bar);
    const auto count = static_cast<WPARAM>(SendMessageW(tools, TB_BUTTONCOUNT, 0, 0));
    for (WPARAM index = 0; index < count; ++index) {
        TBBUTTON button{};
        wchar_t text[64] = {};
        SendMessageW(tools, TB_GETBUTTON, index, reinterpret_cast<LPARAM>(&button));
        SendMessageW(tools, TB_GETBUTTONTEXTW, static_cast<WPARAM>(button.idCommand),
                     reinterpret_cast<LPARAM>(text));
        if (win32::utf8(text) != key) continue;
        RECT place{};
        SendMessageW(tools, TB_GETITEMRECT, index, reinterpret_cast<LPARAM>(&place));
        return clickMiddle(tools, place);
    }
    throw SessionFailure(bar + " has no button " + key);
}

void Win32WindowDriver::type(const std::string& name, const std::string& text) {
    const HWND edit = find(name);
    if (!IsWindowEnabled(edit)) throw SessionFailure(name + " cannot be typed into");
    SetFocus(edit);
    typeOver(edit, win32::wide(text));
    settle();
    if (win32::utf8(win32::windowText(edit)) != text)
        throw SessionFailure("the text was not typed as it should be");
}

std::string Win32WindowDriver::caption(const std::string& name) const {
    return win32::utf8(win32::windowText(find(name)));
}

std::string Win32WindowDriver::message() const {
    return win32::utf8(statusText(find("sbr")));
}

void Win32WindowDriver::pressLeft(const std::string& view) {
    SetFocus(find(view));
    pressKey(VK_LEFT);
}

void Win32WindowDriver::expectForm(const std::string& form, Step step) {
    script_.expect(form, [step = std::move(step)](HWND) { step(); });
}

void Win32WindowDriver::expectBox(Step step) {
    script_.expect(DialogScript::kMessageBox, [step = std::move(step)](HWND box) {
        step();
        SendMessageW(box, WM_CLOSE, 0, 0);
    });
}

void Win32WindowDriver::openMenu(const std::string&, const std::string& at, const std::string& item,
                                 Step step) {
    script_.expect(DialogScript::kMenu, [item, step = std::move(step)](HWND menu) {
        step();
        pickMenuItem(menu, win32::wide(item));
    });
    const HWND top = GetAncestor(find(at), GA_ROOT);
    SetActiveWindow(top);
    win32::focusNamed(top, at);
    pressKey(VK_APPS);
    if (!script_.finished()) throw SessionFailure("the menu of " + at + " did not open");
}

void Win32WindowDriver::answerBoxes(ui::Answer answer) {
    script_.forgetMessages();
    script_.answerOthers(answer == ui::Answer::Yes ? IDYES : IDNO);
}

bool Win32WindowDriver::waitUntil(const std::function<bool()>& condition, int milliseconds) {
    return test::waitUntil(condition, milliseconds);
}

void Win32WindowDriver::picture(const std::string& file) {
    settle();
    for (const HWND window : shownWindows())
        RedrawWindow(window, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    const RECT frame = placeOf(window_.window());
    win32::Canvas all(win32::widthOf(frame), win32::heightOf(frame));
    std::vector<HWND> windows = shownWindows();
    std::reverse(windows.begin(), windows.end());
    std::stable_partition(windows.begin(), windows.end(),
                          [this](HWND window) { return window == window_.window(); });
    for (const HWND window : windows) {
        const RECT place = placeOf(window);
        BitBlt(all.dc(), place.left - frame.left, place.top - frame.top, win32::widthOf(place),
               win32::heightOf(place), test::picture(window)->dc(), 0, 0, SRCCOPY);
    }
    writeImage(file, all);
}

}  // namespace dravik::test
