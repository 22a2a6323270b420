// The window that cells share: who of them a click and a screen reader find.
#include "windows/win32/support/Shown.h"

namespace dravik::test {
namespace {

TEST(CellBoard, FindsTheCellUnderAClickAndTellsAScreenReader) {
    Label a("a", "A");
    Label b("b", "B");
    for (Label* cell : {&a, &b}) cell->setCell(true);
    Shown shown(fixed({{&a, {300, 300, 345, 345}}, {&b, {700, 300, 345, 345}}}));
    int downs = 0;
    a.mouseDown.subscribe([&](const MouseEvent&) { ++downs; });
    shown.page->focusFirst();
    pressKey(VK_RIGHT);
    const AccessibleWindow board(GetFocus());
    EXPECT_EQ(board.parts(), 2);
    EXPECT_EQ(board.focused(), 2);
    EXPECT_EQ(board.state(2), STATE_SYSTEM_FOCUSABLE | STATE_SYSTEM_FOCUSED);
    EXPECT_EQ(board.state(1), STATE_SYSTEM_FOCUSABLE);
    board.focus(1);
    EXPECT_TRUE(shown.focused(a));

    shown.mouse(a, WM_RBUTTONDOWN, 3, 3, MK_RBUTTON);
    EXPECT_EQ(downs, 1);
    shown.mouse(a, WM_RBUTTONDOWN, 25, 3, MK_RBUTTON);  // beside it
    a.setEnabled(false);
    shown.mouse(a, WM_RBUTTONDOWN, 3, 3, MK_RBUTTON);
    EXPECT_EQ(downs, 1);
    settle();
    EXPECT_TRUE(shown.focused(b)) << "the focus must not stay on what is disabled";
    EXPECT_EQ(board.state(1), STATE_SYSTEM_FOCUSABLE | STATE_SYSTEM_UNAVAILABLE);
    const RECT place = shown.place(a);
    EXPECT_EQ(board.at(place.left + 3, place.top + 3), 1);
    EXPECT_EQ(board.at(place.left + 25, place.top + 3), 0);
    a.setVisible(false);
    EXPECT_NE(board.at(place.left + 3, place.top + 3), 1) << "hidden";
}

}  // namespace
}  // namespace dravik::test
