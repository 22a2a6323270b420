// A form on the screen of Windows in a window of its own that is no dialog, driven by messages as the
// operator's actions make them, and looked at.
#pragma once

#include "drivers/win32/DialogScript.h"
#include "shown/Seen.h"
#include "support/Accessible.h"
#include "windows/win32/Dpi.h"
#include "windows/win32/FormPage.h"
#include "windows/win32/FormWindow.h"
#include "windows/win32/Look.h"
#include "windows/win32/Module.h"
#include "windows/win32/Peer.h"
#include "windows/win32/Win32Platform.h"
#include "windows/win32/WinText.h"

namespace dravik::test {

using namespace win32;

// A plain top-level window to stand in.
class HostWindow {
  public:
    HostWindow(int width, int height);
    HostWindow(const HostWindow&) = delete;
    HostWindow& operator=(const HostWindow&) = delete;
    ~HostWindow();

    HWND window() const noexcept { return window_; }

  private:
    HWND window_;
};

class Shown {
  public:
    Shown() = default;
    explicit Shown(Layout layout, int width = 640, int height = 480) {
        form.setLayout(std::move(layout));
        show(width, height);
    }
    void show(int width = 640, int height = 480) {
        host = std::make_unique<HostWindow>(width, height);
        platform.owner = [this] { return host ? host->window() : nullptr; };
        page = std::make_unique<FormPage>(form, host->window(), platform);
        page->setBounds({0, 0, width, height});
        page->setVisible(true);
        settle();
    }
    // The window of a widget, which a cell shares with others.
    HWND view(const Widget& widget) const;
    // On the screen.
    RECT place(const Widget& widget) const;
    bool focused(const Widget& widget) const;
    // At a place in the widget.
    void mouse(const Widget& widget, UINT message, int x, int y, WPARAM keys = 0) const;
    std::unique_ptr<Canvas> canvas(const Widget& widget) const;

    void click(const Widget& widget, Point place = {5, 5}, int shift = 0) {
        press(widget, kLeftButton, place, shift);
        if (view(widget)) mouse(widget, WM_LBUTTONUP, place.x, place.y);
        settle();
    }
    void press(const Widget& widget, int button, Point place, int shift = 0) {
        const bool right = button == kRightButton;
        const auto keys = (right ? MK_RBUTTON : MK_LBUTTON) | (shift & kShiftMask ? MK_SHIFT : 0) |
                          (shift & kCtrlMask ? MK_CONTROL : 0);
        mouse(widget, right ? WM_RBUTTONDOWN : WM_LBUTTONDOWN, place.x, place.y, static_cast<WPARAM>(keys));
    }
    void drag(const Widget& widget, Point from, Point to) {
        press(widget, kLeftButton, from);
        mouse(widget, WM_MOUSEMOVE, to.x, to.y, MK_LBUTTON);
        mouse(widget, WM_LBUTTONUP, to.x, to.y);
    }
    void key(Key key, int shift = 0) {
        constexpr UINT kKeys[] = {VK_TAB, VK_RETURN, VK_ESCAPE, VK_UP,  VK_DOWN,  VK_LEFT, VK_RIGHT, VK_HOME,
                                  VK_END, VK_DELETE, VK_APPS,   VK_F10, VK_SPACE, 'A',     'C'};
        pressKey(kKeys[static_cast<int>(key)], shift);
    }
    void type(const std::string& text) { typeText(wide(text)); }
    void accessKey(char letter) { page->pressMnemonic(static_cast<wchar_t>(letter)); }
    void focus(const Widget& widget) {
        platform.peerOf(widget)->focus();
        settle();
    }
    void clickEntry(const ListBox& list, int index) {
        RECT place{};
        ask(list, LB_GETITEMRECT, index, reinterpret_cast<LPARAM>(&place));
        clickMiddle(list, place);
    }
    void clickTool(const Toolbar& bar, const std::string& key) {
        RECT place{};
        ask(bar, TB_GETITEMRECT, indexOf(bar.buttons(), key), reinterpret_cast<LPARAM>(&place));
        clickMiddle(bar, place);
    }
    void clickArrow(const UpDown& arrows, bool up) {
        RECT place = insideOf(view(arrows));
        (up ? place.bottom : place.top) = place.bottom / 2;
        clickMiddle(arrows, place);
    }
    void setCursor(const TextBox& box, int position) { ask(box, EM_SETSEL, position, position); }

    bool enabled(const Widget& widget) const { return IsWindowEnabled(view(widget)) != FALSE; }
    bool visible(const Widget& widget) const { return IsWindowVisible(view(widget)) != FALSE; }
    Area area(const Widget& widget) const {
        RECT own = place(widget);
        MapWindowPoints(nullptr, GetParent(view(widget)), reinterpret_cast<POINT*>(&own), 2);
        return {static_cast<int>(own.left), static_cast<int>(own.top), widthOf(own), heightOf(own)};
    }
    int leastWidth() const { return static_cast<int>(page->minimumSize().cx); }
    std::string text(const TextBox& box) const { return utf8(windowText(view(box))); }
    std::string selected(const TextBox& box) const {
        const DWORD range = static_cast<DWORD>(ask(box, EM_GETSEL));
        return utf8(windowText(view(box)).substr(LOWORD(range), HIWORD(range) - LOWORD(range)));
    }
    int cursor(const TextBox& box) const { return HIWORD(ask(box, EM_GETSEL)); }
    bool marked(const Widget& button) const { return ask(button, BM_GETCHECK) == BST_CHECKED; }
    int entries(const ComboBox& list) const { return ask(list, CB_GETCOUNT); }
    int entries(const ListBox& list) const { return ask(list, LB_GETCOUNT); }
    int chosen(const ComboBox& list) const { return ask(list, CB_GETCURSEL); }
    int chosen(const ListBox& list) const { return ask(list, LB_GETCURSEL); }
    std::string panel(const StatusBar& bar, const std::string& key) const {
        return utf8(statusText(view(bar), indexOf(bar.panels(), key)));
    }
    bool pressed(const Toolbar& bar, const std::string& key) const {
        return ask(bar, TB_ISBUTTONCHECKED, indexOf(bar.buttons(), key) + 1) != 0;
    }
    int thousandths(const ProgressBar& bar) const { return ask(bar, PBM_GETPOS); }
    // Where the grid is not scrolled.
    Point middleOf(const Grid& grid, int row, int column) const {
        const RECT cell = AccessibleWindow(view(grid)).place(1 + row * grid.columns() + column);
        const RECT whole = place(grid);
        return {static_cast<int>(cell.left + cell.right) / 2 - static_cast<int>(whole.left),
                static_cast<int>(cell.top + cell.bottom) / 2 - static_cast<int>(whole.top)};
    }
    Picture picture(const Widget& widget) const {
        const auto shows = canvas(widget);
        Picture result{shows->width(), shows->height(), {}};
        for (int y = 0; y < shows->height(); ++y)
            for (int x = 0; x < shows->width(); ++x)
                result.pixels.push_back(static_cast<Color>(colorAt(*shows, x, y)));
        return result;
    }
    // What a screen reader says of it, or of a part of a chart, numbered from 1.
    std::string heard(const Widget& widget, int part = 0) const {
        return utf8(AccessibleWindow(view(widget)).name(partOf(widget) + part));
    }
    std::string role(const Widget& widget) const {
        const LONG role = AccessibleWindow(view(widget)).role(partOf(widget));
        return role == ROLE_SYSTEM_CELL ? "cell" : role == ROLE_SYSTEM_CHART ? "chart" : "";
    }

    void useDark(bool dark) {
        ambient_ = {};
        if (dark) ambient_.backColor = RGB(40, 40, 40);
        if (dark) ambient_.foreColor = RGB(240, 240, 240);
        page->setAmbient(ambient_);
    }
    Color colorOf(Color color) const { return static_cast<Color>(Look(kUsualDpi, ambient_).color(color)); }
    Color ground() const { return static_cast<Color>(Look(kUsualDpi, ambient_).background()); }
    static double contrast(Color a, Color b) {
        return win32::contrast(static_cast<COLORREF>(a), static_cast<COLORREF>(b));
    }

    // What comes up next, one after the other: a box that is answered, or closed; a menu that is typed into,
    // where '!' is Escape; a form that is worked.
    void expectBox(std::optional<Answer> answer) {
        script.expect(DialogScript::kMessageBox, [this, answer](HWND box) {
            boxText_ = test::boxText(box);
            SendMessageW(box, answer ? WM_COMMAND : WM_CLOSE, answer == Answer::Yes ? IDYES : IDNO, 0);
        });
    }
    void expectMenu(const PopupMenu&, const std::string& keys) {
        script.expect(DialogScript::kMenu, [keys](HWND menu) {
            for (const char key : keys)
                PostMessageW(menu, key == '!' ? WM_KEYDOWN : WM_CHAR,
                             key == '!' ? VK_ESCAPE : static_cast<WPARAM>(key), 1);
        });
    }
    void expectForm(const Form& expected, std::function<void()> step) {
        script.expect(expected.name(), [step = std::move(step)](HWND) { step(); });
    }
    std::string boxText() const { return utf8(boxText_); }
    bool allCameUp() const { return script.satisfied(); }
    static bool hasWindow(const std::string& title) { return windowOf(title) != nullptr; }
    static void closeWindow(const std::string& title) { SendMessageW(windowOf(title), WM_CLOSE, 0, 0); }
    static bool hasMenu() {
        for (const HWND window : shownWindows())
            if (classOf(window) == L"#32768") return true;
        return false;
    }

    Win32Platform platform;
    Form form{"form", "Form"};
    std::unique_ptr<HostWindow> host;
    std::unique_ptr<FormPage> page;
    DialogScript script;

  private:
    // 0 for one with a window of its own.
    int partOf(const Widget& widget) const;
    static HWND windowOf(const std::string& title) {
        for (const HWND window : shownWindows())
            if (windowText(window) == wide(title)) return window;
        return nullptr;
    }
    int ask(const Widget& widget, UINT message, int wParam = 0, LPARAM lParam = 0) const {
        return static_cast<int>(SendMessageW(view(widget), message, static_cast<WPARAM>(wParam), lParam));
    }
    void clickMiddle(const Widget& widget, const RECT& place) { test::clickMiddle(view(widget), place); }
    template <class Parts>
    static int indexOf(const Parts& parts, const std::string& key) {
        const auto found =
            std::find_if(parts.begin(), parts.end(), [&](const auto& part) { return part->key == key; });
        return static_cast<int>(found - parts.begin());
    }

    Ambient ambient_;
    std::wstring boxText_;
};

inline std::string clipboardText() {
    return utf8(clipboardContents());
}

}  // namespace dravik::test
