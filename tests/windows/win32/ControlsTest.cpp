// What native controls and cells do beyond what those of every window system do, and Tab through a page.
#include "windows/win32/support/Shown.h"

namespace dravik::test {
namespace {

TEST(TextBoxes, TakeOneLine) {
    TextBox box("box");
    Shown shown(column({item(box)}));
    SetFocus(shown.view(box));
    typeText(L"A\tB\r");
    EXPECT_EQ(box.text(), "AB");
}

TEST(Lists, ThatAreDroppedDownLookByArrowKeysAndTakeByEnter) {
    ComboBox combo("combo", {"one", "two", "three"});
    Shown shown(column({item(combo)}));
    combo.setListIndex(0);
    int picks = 0;
    combo.click.subscribe([&] { ++picks; });
    SetFocus(shown.view(combo));
    SendMessageW(shown.view(combo), CB_SHOWDROPDOWN, TRUE, 0);
    pressKey(VK_DOWN);
    EXPECT_EQ(combo.listIndex(), 0);
    pressKey(VK_RETURN);
    EXPECT_EQ(combo.listIndex(), 1);
    EXPECT_EQ(picks, 1);
}

TEST(Options, AreOneTabStopAndChosenByArrowKeys) {
    OptionButton one("one", "One");
    OptionButton two("two", "Two");
    Frame frame("frame", "Choice");
    frame.setLayout(column({item(one), item(two)}));
    Button after("after", "After");
    Shown shown(column({item(frame), item(after)}));
    EXPECT_EQ(AccessibleWindow(shown.view(frame)).name(), L"Choice");
    for (auto* option : {&one, &two})
        option->click.subscribe([&, option] { (option == &one ? two : one).setChosen(false); });
    two.setChosen(true);
    ASSERT_TRUE(shown.page->focusFirst());
    EXPECT_EQ(GetFocus(), shown.view(two));
    pressKey(VK_UP);
    EXPECT_TRUE(one.chosen());
    EXPECT_FALSE(two.chosen());
    EXPECT_EQ(SendMessageW(shown.view(two), BM_GETCHECK, 0, 0), BST_UNCHECKED);
    pressKey(VK_TAB);
    EXPECT_EQ(GetFocus(), shown.view(after));
    pressKey(VK_TAB, kShiftMask);
    EXPECT_EQ(GetFocus(), shown.view(one));
    EXPECT_EQ(GetParent(shown.view(one)), shown.view(frame));
}

TEST(Toolbars, AreWorkedByKey) {
    Toolbar bar("bar");
    bar.add("one", "One");
    bar.add("log", "Log", ToolButton::Style::Check);
    bar.add("none", "None").setEnabled(false);
    Shown shown(column({item(bar)}), 400, 100);
    std::string pressed;
    bar.buttonClick.subscribe([&](ToolButton& button) { pressed += button.key + ' '; });
    const HWND view = shown.view(bar);
    SetFocus(view);
    pressKey(VK_HOME);
    pressKey(VK_SPACE);
    pressKey(VK_RIGHT);
    pressKey(VK_RIGHT);  // the last one is disabled
    pressKey(VK_RETURN);
    EXPECT_EQ(pressed, "one log ");
}

TEST(Labels, AreCutWithAnEllipsisAndNameTheNextControl) {
    Label caption("caption", "&Name");
    TextBox box("box");
    Label data("data", "R&D");
    data.setUsesMnemonic(false);
    Label filler("filler", std::string(200, 'i'));
    Shown shown(
        column({row({item(caption), item(box).stretched()}), item(data), row({item(filler).stretched()})}),
        300, 200);
    EXPECT_EQ(shown.page->mnemonics(), std::vector<wchar_t>{L'N'});
    EXPECT_EQ(shown.area(filler).width, 300 - 18);
    EXPECT_LT(shown.page->minimumSize().cx, 300);
    EXPECT_EQ(AccessibleWindow(shown.view(caption)).name(), L"Name");
    EXPECT_TRUE(SendMessageW(shown.view(caption), WM_GETDLGCODE, 0, 0) & DLGC_STATIC)
        << "a screen reader takes it for the caption of what follows";
    data.setBackColor(rgb(0, 0, 0));
    const auto ink = [&] {
        const auto shows = picture(shown.view(data));
        return shows->width() * shows->height() - countOf(*shows, RGB(0, 0, 0));
    };
    const int all = ink();
    data.setCaption("RD");
    EXPECT_GT(all, ink() + 20) << "the sign is a character of its own, readable on its ground";
}

TEST(NativeControls, AreToAScreenReaderWhatTheyAre) {
    Button button("button", "&Go");
    TextBox box("box");
    ComboBox combo("combo", {"one"});
    Shown shown(column({item(button), item(box), item(combo)}));
    EXPECT_EQ(AccessibleWindow(shown.view(box)).role(), ROLE_SYSTEM_TEXT);
    EXPECT_EQ(AccessibleWindow(shown.view(button)).name(), L"Go");
    // By these numbers the system knows controls whose class has another name than its own.
    for (const auto& [widget, kind] : std::initializer_list<std::pair<const Widget*, LRESULT>>{
             {&button, 0x10002}, {&box, 0x10004}, {&combo, 0x10005}})
        EXPECT_EQ(SendMessageW(shown.view(*widget), WM_GETOBJECT, 0, OBJID_QUERYCLASSNAMEIDX), kind);
}

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

HWND shownTip() {
    for (const HWND window : shownWindows())
        if (classOf(window) == TOOLTIPS_CLASSW) return window;
    return nullptr;
}

TEST(ToolTips, ComeUpWhereThePointerRests) {
    Button button("button", "Button");
    Shown shown(column({item(button), space()}), 300, 200);
    button.setToolTip("tip");
    const RECT place = placeOf(shown.view(button));
    SetCursorPos(place.left + 5, place.top + 5);
    mouse(shown.view(button), WM_MOUSEMOVE, 5, 5);
    ASSERT_TRUE(waitUntil([] { return shownTip() != nullptr; }));
    EXPECT_EQ(windowText(shownTip()), L"tip");
    click(shown.view(button), 5, 5);
    EXPECT_FALSE(shownTip()) << "a press takes the tip away";
}

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
