// Keys of a page: Tab, Enter, Escape and access keys, as a host hands them over and as they come without one.
#include "widgets/Button.h"
#include "widgets/Label.h"
#include "widgets/ListControls.h"
#include "widgets/TextBox.h"
#include "win32/support/ShownPage.h"

namespace dravik::test {
namespace {

class Keyboard : public testing::Test {
  protected:
    Keyboard() {
        frame.setLayout(column({item(box), item(check)}));
        shown.form.setLayout(column({item(frame), item(go), item(stop)}));
        shown.form.defaultButton = &go;
        go.click.subscribe([this] { pressed += "go "; });
        stop.click.subscribe([this] { pressed += "stop "; });
    }
    MSG key(UINT code, UINT message = WM_KEYDOWN) {
        MSG result{};
        result.hwnd = GetFocus();
        result.message = message;
        result.wParam = code;
        return result;
    }

    Frame frame{"frame", "Frame"};
    TextBox box{"box"};
    CheckBox check{"check", "&Check"};
    Button go{"go", "&Go"};
    Button stop{"stop", "&Stop"};
    std::string pressed;
    ShownPage shown;
};

TEST_F(Keyboard, TabGoesThroughFramesAndLeavesAtTheEnds) {
    shown.show();
    check.setEnabled(false);
    bool left = true;
    ASSERT_TRUE(shown.page->focusFirst());
    EXPECT_EQ(GetFocus(), shown.view(box));
    EXPECT_TRUE(shown.page->translateKey(key(VK_TAB), left));
    EXPECT_FALSE(left);
    EXPECT_EQ(GetFocus(), shown.view(go)) << "a disabled control is passed over";
    EXPECT_TRUE(shown.page->translateKey(key(VK_TAB), left));
    EXPECT_FALSE(shown.page->translateKey(key(VK_TAB), left));
    EXPECT_TRUE(left);
    EXPECT_EQ(GetFocus(), shown.view(stop));
    // Without a host that takes the focus elsewhere it goes round.
    pressKey(VK_TAB);
    EXPECT_EQ(GetFocus(), shown.view(box));
    pressKey(VK_TAB, kShiftMask);
    EXPECT_EQ(GetFocus(), shown.view(stop));
    stop.setVisible(false);
    settle();
    EXPECT_EQ(GetFocus(), shown.view(box)) << "the focus must not stay on a hidden control";
    MSG other = key(VK_TAB);
    other.hwnd = shown.host->window();
    EXPECT_FALSE(shown.page->translateKey(other, left)) << "not a window of the page";
}

TEST_F(Keyboard, EnterAndEscapePressTheirButtons) {
    shown.show();
    bool left = false;
    SetFocus(shown.view(box));
    EXPECT_TRUE(shown.page->translateKey(key(VK_RETURN), left));
    EXPECT_EQ(pressed, "go ");
    EXPECT_FALSE(shown.page->translateKey(key(VK_ESCAPE), left)) << "the host may close something";
    SetFocus(shown.view(stop));
    EXPECT_EQ(SendMessageW(shown.view(stop), WM_GETDLGCODE, 0, 0) & DLGC_DEFPUSHBUTTON, DLGC_DEFPUSHBUTTON);
    EXPECT_TRUE(shown.page->translateKey(key(VK_RETURN), left));
    EXPECT_EQ(pressed, "go stop ");
    shown.form.cancelButton = &stop;
    SetFocus(shown.view(box));
    pressKey(VK_ESCAPE);
    EXPECT_EQ(pressed, "go stop stop ");
    go.setEnabled(false);
    pressKey(VK_RETURN);
    EXPECT_EQ(pressed, "go stop stop ");
}

TEST_F(Keyboard, AccessKeysAnswerOnlyForTheirOwnControls) {
    shown.show();
    bool left = false;
    SetFocus(shown.view(box));
    EXPECT_EQ(shown.page->mnemonics(), (std::vector<wchar_t>{L'C', L'G', L'S'}));
    EXPECT_TRUE(shown.page->translateKey(key('s', WM_SYSCHAR), left));
    EXPECT_EQ(pressed, "stop ");
    EXPECT_TRUE(shown.page->translateKey(key('c', WM_SYSCHAR), left));
    EXPECT_TRUE(check.checked());
    EXPECT_FALSE(shown.page->translateKey(key('x', WM_SYSCHAR), left));
    stop.setEnabled(false);
    EXPECT_FALSE(shown.page->pressMnemonic(L'S'));
}

TEST_F(Keyboard, AnInertPageTakesNothing) {
    Timer timer("timer", 10);
    shown.form.timers = {&timer};
    int ticks = 0;
    timer.tick.subscribe([&] { ++ticks; });
    shown.show();
    timer.setEnabled(true);
    EXPECT_TRUE(waitUntil([&] { return ticks > 1; }));
    shown.page->setInert(true);
    settle();
    const int before = ticks;
    bool left = false;
    SetFocus(shown.view(box));
    EXPECT_FALSE(shown.page->translateKey(key(VK_RETURN), left));
    EXPECT_FALSE(shown.page->focusFirst());
    EXPECT_FALSE(IsWindowEnabled(shown.page->window()));
    Sleep(50);
    settle();
    EXPECT_EQ(ticks, before);
    shown.page->setInert(false);
    EXPECT_TRUE(waitUntil([&] { return ticks > before; }));
    timer.setEnabled(false);
    settle();
    const int stopped = ticks;
    Sleep(50);
    settle();
    EXPECT_EQ(ticks, stopped);
}

TEST_F(Keyboard, FocusIsToldAndAskedFor) {
    shown.show();
    std::string told;
    box.gotFocus.subscribe([&] { told += "+box "; });
    box.lostFocus.subscribe([&] { told += "-box "; });
    int entered = 0;
    shown.page->focusEntered = [&] { ++entered; };
    SetFocus(shown.view(go));
    box.setFocus();
    SetFocus(shown.view(go));
    EXPECT_EQ(told, "+box -box ");
    EXPECT_EQ(entered, 3);
    EXPECT_TRUE(shown.page->hasFocusInside());
    // Asked for by a procedure that shows the control only later.
    check.setVisible(false);
    check.setFocus();
    check.setVisible(true);
    settle();
    EXPECT_EQ(GetFocus(), shown.view(check));
    std::vector<int> keys;
    box.keyDown.subscribe([&](int code, int) { keys.push_back(code); });
    SetFocus(shown.view(box));
    pressKey(VK_DELETE);
    EXPECT_EQ(keys, std::vector<int>{kKeyDelete});
}

}  // namespace
}  // namespace dravik::test
