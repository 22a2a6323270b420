// Tab through a page, as a host hands it over and as it comes without one.
#include "windows/win32/support/Shown.h"

namespace dravik::test {
namespace {

TEST(KeysOfAHost, TabGoesThroughFramesAndLeavesAtTheEnds) {
    Frame frame("frame", "Frame");
    TextBox box("box");
    CheckBox check("check", "&Check");
    Button go("go", "&Go");
    Button stop("stop", "&Stop");
    frame.setLayout(column({item(box), item(check)}));
    check.setEnabled(false);
    Shown shown(column({item(frame), item(go), item(stop)}));
    const auto tab = [] { return MSG{GetFocus(), WM_KEYDOWN, VK_TAB, 0, 0, {}}; };
    bool left = true;
    ASSERT_TRUE(shown.page->focusFirst());
    EXPECT_EQ(GetFocus(), shown.view(box));
    EXPECT_TRUE(shown.page->translateKey(tab(), left));
    EXPECT_FALSE(left);
    EXPECT_EQ(GetFocus(), shown.view(go)) << "a disabled control is passed over";
    EXPECT_TRUE(shown.page->translateKey(tab(), left));
    EXPECT_FALSE(shown.page->translateKey(tab(), left));
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
}

}  // namespace
}  // namespace dravik::test
