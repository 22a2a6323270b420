// What native controls do beyond what those of every window system do.
#include "windows/win32/support/Shown.h"

namespace dravik::test {
namespace {

TEST(TextBoxes, HaveNoFrameAsResultsAndTakeOneLine) {
    TextBox box("box", "one");
    Shown shown(column({item(box)}));
    const HWND view = shown.view(box);
    SetFocus(view);
    box.setLocked(true);
    EXPECT_NE(GetWindowLongPtrW(view, GWL_EXSTYLE) & WS_EX_CLIENTEDGE, 0);
    box.setBackColor(kButtonFaceColor);
    EXPECT_EQ(GetWindowLongPtrW(view, GWL_EXSTYLE) & WS_EX_CLIENTEDGE, 0) << "a result has no frame";
    box.setLocked(false);
    box.setText("");
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

TEST(Bars, CutLongTextsAndTurnByWheel) {
    StatusBar status("status");
    status.add("Message", "", 1500, true);
    status.add("Last", "", 1500);
    UpDown arrows("arrows", 0, 10, 1);
    Shown shown(column({item(arrows), item(status)}), 400, 200);
    const HWND bar = shown.view(status);
    int edges[2] = {};
    EXPECT_EQ(SendMessageW(bar, SB_GETPARTS, 2, reinterpret_cast<LPARAM>(edges)), 2);
    EXPECT_EQ(edges[0], 400 - 18 - 100);
    // A long text in the panel at the end takes no more than half as much again, and is cut.
    status.panel("Last").setText(std::string(60, 'W'));
    settle();
    SendMessageW(bar, SB_GETPARTS, 2, reinterpret_cast<LPARAM>(edges));
    EXPECT_EQ(edges[0], 400 - 18 - 150);
    const std::wstring cut = statusText(bar, 1);
    EXPECT_LT(cut.size(), 30u);
    EXPECT_EQ(cut.back(), L'\u2026');

    arrows.setValue(1);
    for (int i = 0; i < 2; ++i)
        mouse(shown.view(arrows), WM_MOUSEWHEEL, 0, 0, static_cast<WPARAM>(-WHEEL_DELTA) << 16 & 0xFFFF0000);
    EXPECT_EQ(arrows.value(), 0);
}

TEST(Toolbars, AreWorkedByKeyAndDrawnAtTheirScale) {
    Toolbar bar("bar");
    PictureShape square{
        PictureShape::Kind::Polygon, {{2, 2}, {14, 2}, {14, 14}, {2, 14}}, true, 0, rgb(255, 0, 0)};
    bar.add("one", "One", ToolButton::Style::Push, {square});
    bar.add("log", "Log", ToolButton::Style::Check);
    bar.add("none", "None").setEnabled(false);
    Shown shown(column({item(bar)}), 400, 100);
    std::string pressed;
    bar.buttonClick.subscribe([&](ToolButton& button) { pressed += button.key + ' '; });
    const HWND view = shown.view(bar);
    bar.button("one").setEnabled(false);
    EXPECT_FALSE(SendMessageW(view, TB_ISBUTTONENABLED, 1, 0));
    bar.button("one").setEnabled(true);
    SetFocus(view);
    pressKey(VK_HOME);
    pressKey(VK_SPACE);
    pressKey(VK_RIGHT);
    pressKey(VK_RIGHT);  // the last one is disabled
    pressKey(VK_RETURN);
    EXPECT_EQ(pressed, "one log ");
    // The picture at its display scale, in its colour.
    const auto red = [&] { return countOf(*picture(view), RGB(255, 0, 0)); };
    const int small = red();
    EXPECT_GT(small, 100);
    shown.page->setDpi(192);
    shown.page->setBounds({0, 0, 400, 100});
    EXPECT_NEAR(red(), small * 4, small);
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
    EXPECT_EQ(windowText(shown.view(data)), L"R&D");
    EXPECT_EQ(shown.area(filler).width, 300 - 18);
    EXPECT_LT(shown.page->minimumSize().cx, 300);
    EXPECT_EQ(AccessibleWindow(shown.view(caption)).name(), L"Name");
    EXPECT_TRUE(SendMessageW(shown.view(caption), WM_GETDLGCODE, 0, 0) & DLGC_STATIC)
        << "a screen reader takes it for the caption of what follows";
    data.setBackColor(rgb(0, 0, 0));
    auto image = picture(shown.view(data));
    EXPECT_EQ(colorAt(*image, image->width() - 1, 0), RGB(0, 0, 0));
    EXPECT_GT(countOf(*image, RGB(255, 255, 255)), 5) << "readable on its ground";
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
    CheckBox check("check", "Check");
    OptionButton option("option", "Option");
    TextBox box("box");
    ComboBox combo("combo", {"one"});
    ListBox list("list", {"one"});
    ProgressBar bar("bar");
    StatusBar status("status");
    Toolbar tools("tools");
    Shown shown(column({item(tools), item(button), item(check), item(option), item(box), item(combo),
                        item(list), item(bar), item(status)}));
    EXPECT_EQ(AccessibleWindow(shown.view(box)).role(), ROLE_SYSTEM_TEXT);
    EXPECT_EQ(AccessibleWindow(shown.view(button)).name(), L"Go");
    // By these numbers the system knows controls whose class has another name than its own.
    const std::vector<std::pair<const Widget*, LRESULT>> kinds = {
        {&list, 0x10000},  {&button, 0x10002}, {&check, 0x10002}, {&option, 0x10002}, {&box, 0x10004},
        {&combo, 0x10005}, {&status, 0x1000B}, {&tools, 0x1000C}, {&bar, 0x1000D}};
    for (const auto& [widget, kind] : kinds)
        EXPECT_EQ(SendMessageW(shown.view(*widget), WM_GETOBJECT, 0, OBJID_QUERYCLASSNAMEIDX), kind)
            << widget->name();
}

HWND shownTip() {
    for (const HWND window : shownWindows())
        if (classOf(window) == TOOLTIPS_CLASSW) return window;
    return nullptr;
}

TEST(ToolTips, ComeUpWherePointerRestsAndFollowTheModel) {
    Label label("label", "Text");
    Button button("button", "Button");
    button.setToolTip("before");
    Shown shown(column({item(label), item(button), space()}), 300, 200);
    const auto rest = [&](const Widget& widget) {
        const RECT place = placeOf(shown.view(widget));
        SetCursorPos(place.left + 5, place.top + 5);
        mouse(shown.view(widget), WM_MOUSEMOVE, 5, 5);
    };
    rest(label);
    rest(button);
    ASSERT_TRUE(waitUntil([] { return shownTip() != nullptr; }));
    EXPECT_EQ(windowText(shownTip()), L"before");
    mouse(shown.view(button), WM_LBUTTONDOWN, 5, 5);
    EXPECT_FALSE(shownTip()) << "a press takes the tip away";
    mouse(shown.view(button), WM_LBUTTONUP, 5, 5);
    button.setToolTip("");
    label.setToolTip("after");
    rest(label);
    ASSERT_TRUE(waitUntil([] { return shownTip() != nullptr; }));
    EXPECT_EQ(windowText(shownTip()), L"after");
}

}  // namespace
}  // namespace dravik::test
