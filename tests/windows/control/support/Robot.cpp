#include "windows/control/support/Robot.h"

#include "support/Testing.h"
#include "windows/win32/WinText.h"

namespace dravik::test {

using namespace win32;

void Robot::expectBox(std::wstring title, int button) {
    script_.expect(DialogScript::kMessageBox, [title = std::move(title), button](HWND box) {
        EXPECT_EQ(windowText(box), title);
        PostMessageW(box, WM_COMMAND, static_cast<WPARAM>(button), 0);
    });
}

void Robot::expectMenu(std::wstring item) {
    script_.expect(DialogScript::kMenu, [item = std::move(item)](HWND menu) { pickMenuItem(menu, item); });
}

std::vector<HWND> children(HWND parent, const std::wstring& className) {
    std::vector<HWND> found;
    for (HWND window = GetWindow(parent, GW_CHILD); window; window = GetWindow(window, GW_HWNDNEXT)) {
        // The control's own windows of the system's kinds have classes of the control's.
        std::wstring kind = classOf(window);
        if (kind.starts_with(L"Dravik") && !className.starts_with(L"Dravik")) kind.erase(0, 6);
        if (CompareStringOrdinal(kind.c_str(), -1, className.c_str(), -1, TRUE) == CSTR_EQUAL)
            found.push_back(window);
        const auto inside = children(window, className);
        found.insert(found.end(), inside.begin(), inside.end());
    }
    return found;
}

HWND shownForm(const std::wstring& part) {
    for (const HWND window : shownWindows())
        if (windowText(window).find(part) != std::wstring::npos) return window;
    return nullptr;
}

HWND child(HWND parent, const std::wstring& className, const std::wstring& text) {
    for (HWND window : children(parent, className))
        if (windowText(window) == text) return window;
    return nullptr;
}

}  // namespace dravik::test
