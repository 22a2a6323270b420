// Tab through a page, and a page that takes no key, as a host hands them over and as they come without one.
#include "windows/win32/support/Shown.h"

namespace dravik::test {
namespace {

class KeysOfAHost : public testing::Test {
  protected:
    KeysOfAHost() {
        frame.setLayout(column({item(box), item(check)}));
        shown.form.setLayout(column({item(frame), item(go), item(stop)}));
        shown.form.defaultButton = &go;
    }
    static MSG key(UINT code) { return {GetFocus(), WM_KEYDOWN, code, 0, 0, {}}; }

    Frame frame{"frame", "Frame"};
    TextBox box{"box"};
    CheckBox check{"check", "&Check"};
    Button go{"go", "&Go"};
    Button stop{"stop", "&Stop"};
    Shown shown;
};

TEST_F(KeysOfAHost, TabGoesThroughFramesAndLeavesAtTheEnds) {
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

TEST_F(KeysOfAHost, AnInertPageTakesNothing) {
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
}

}  // namespace
}  // namespace dravik::test
