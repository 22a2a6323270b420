// What native controls do beyond what those of every window system do.
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
    EXPECT_GT(countOf(*picture(shown.view(data)), RGB(255, 255, 255)), 5) << "readable on its ground";
    const auto endOfInk = [&] {
        const auto shows = picture(shown.view(data));
        for (int x = shows->width() - 1; x > 0; --x)
            for (int y = 0; y < shows->height(); ++y)
                if (colorAt(*shows, x, y) != RGB(0, 0, 0)) return x;
        return 0;
    };
    const int end = endOfInk();
    data.setCaption("RD");
    EXPECT_GT(end, endOfInk() + 3) << "the sign is a character of its own";
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

}  // namespace
}  // namespace dravik::test
