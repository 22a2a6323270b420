// The operator's work in each of three hosts.
#include "windows/control/support/Bench.h"

namespace dravik::test {
namespace {

class InHosts : public testing::TestWithParam<const char*> {};

INSTANTIATE_TEST_SUITE_P(Control, InHosts, testing::Values("strict", "atl", "sheet"),
                         [](const auto& info) { return std::string(info.param); });

TEST_P(InHosts, ShowsTheScreenAndFollowsItsSize) {
    Bench bench(GetParam());
    ASSERT_TRUE(IsWindowVisible(bench.page()));
    EXPECT_TRUE(IsWindowVisible(bench.button(L"Learn")));
    EXPECT_FALSE(IsWindowEnabled(bench.button(L"Save Font")));
    const auto status = [&] { return placeOf(children(bench.page(), STATUSCLASSNAMEW).front()); };
    const RECT before = status();
    bench.host->resize(800, 1000);
    bench.host->pump();
    EXPECT_EQ(widthOf(placeOf(bench.page())), 800);
    EXPECT_EQ(heightOf(placeOf(bench.page())), 1000);
    EXPECT_GT(status().top, before.top);  // the status bar stays at the foot
    bench.host->resize(200, 150);         // less than the page needs: it scrolls
    bench.host->pump();
    EXPECT_NE(GetWindowLongW(bench.page(), GWL_STYLE) & WS_VSCROLL, 0);
    SendMessageW(bench.page(), WM_VSCROLL, SB_BOTTOM, 0);
    EXPECT_LE(status().bottom, placeOf(bench.page()).bottom);
}

TEST_P(InHosts, IncludesLearnsStopsSavesAndClosesWithoutAQuestion) {
    Bench bench(GetParam(), "HELLO");
    const auto endless = bench.faultyStep();
    endless->endless = true;
    ASSERT_EQ(bench.give(endless), S_OK);
    bench.include("HELLO");
    bench.include("OLEH");
    bench.press(L"Learn");
    ASSERT_TRUE(bench.host->pumpUntil([&] { return IsWindowEnabled(bench.button(L"Stop")) != FALSE; }));
    EXPECT_FALSE(IsWindowEnabled(bench.button(L"Learn")));
    EXPECT_EQ(GetFocus(), bench.button(L"Stop")) << "the next one that can be pressed";
    bench.press(L"Stop");
    EXPECT_TRUE(bench.waitForStatus(L"Stopped training."));
    EXPECT_TRUE(endless->stopped);
    EXPECT_FALSE(IsWindowEnabled(bench.button(L"Stop")));

    endless->endless = false;
    bench.learn();
    bench.press(L"Save Font");
    EXPECT_TRUE(bench.waitForStatus(L"Saved font"));
    bench.host->close();
    EXPECT_THAT(bench.script.messages(), IsEmpty());
}

TEST_P(InHosts, OpensMenusFormsAndBoxesAndCopies) {
    Bench bench(GetParam(), "HELLO");
    bench.include("HELLO");
    bench.include("LOLO");
    bench.learn();

    bench.script.expectMenu(L"Show Character Array for L");
    bench.rightClick(bench.cell(L'L'));
    ASSERT_TRUE(bench.allCame());
    HWND array = nullptr;
    EXPECT_TRUE(bench.host->pumpUntil([&] { return (array = shownForm(L"Array")) != nullptr; }));
    EXPECT_EQ(GetWindow(array, GW_OWNER), GetAncestor(bench.page(), GA_ROOT));
    PostMessageW(array, WM_CLOSE, 0, 0);
    EXPECT_TRUE(bench.host->pumpUntil([&] { return shownForm(L"Array") == nullptr; }));

    bench.script.expectMenu(L"Show Histogram for L");
    bench.rightClick(bench.cell(L'L'));
    HWND histogram = nullptr;
    EXPECT_TRUE(bench.host->pumpUntil([&] { return (histogram = shownForm(L"istogram")) != nullptr; }));

    bench.script.expectMenu(L"Delete Training for O");
    bench.script.expectBox(L"Delete Samples for O", IDNO);
    bench.rightClick(bench.cell(L'O'));
    EXPECT_TRUE(bench.allCame());

    // The table of samples, all of it selected and copied.
    bench.pressTool(1);
    const HWND grid = children(bench.page(), L"DravikGrid").front();
    ASSERT_TRUE(IsWindowVisible(grid));
    SetFocus(grid);
    bench.host->key('A', ui::kCtrlMask);
    bench.host->key(VK_INSERT, ui::kCtrlMask);
    const std::wstring copied = clipboardContents();
    EXPECT_EQ(std::count(copied.begin(), copied.end(), L'\n'), 9) << utf8(copied);  // a row for each sample
    EXPECT_THAT(bench.script.messages(), IsEmpty());
    bench.closeUnsaved();
    EXPECT_FALSE(IsWindow(histogram));  // the viewers go with the control
    EXPECT_TRUE(bench.script.satisfied());
}

TEST_P(InHosts, KeysGoThroughTheScreenAndOutOfIt) {
    Bench bench(GetParam(), "HELLO");
    const auto inside = [&] { return GetFocus() && IsChild(bench.page(), GetFocus()); };
    SetFocus(bench.input());
    bench.host->pump();
    ASSERT_EQ(GetFocus(), bench.input());
    bench.type(L"HELLO");
    bench.host->key('I', ui::kAltMask);
    EXPECT_TRUE(bench.waitForStatus(L"5 samples included.")) << utf8(bench.status());

    SetFocus(bench.input());
    bench.show("HELL");
    bench.type(L"HELL");
    bench.host->key(VK_RETURN);
    EXPECT_TRUE(bench.waitForStatus(L"4 samples included.")) << utf8(bench.status());
    EXPECT_TRUE(IsWindow(bench.host->frame()) && IsWindowVisible(bench.host->frame()));

    // From the first control on, Tab comes to every stop once and then leaves the screen.
    SetFocus(bench.button(L"Select Font"));
    bench.host->pump();
    int stops = 1;
    auto* strict = dynamic_cast<StrictHost*>(bench.host.get());
    const auto left = [&] { return strict ? !strict->site().keys.empty() : !inside(); };
    for (; !left() && stops < 60; ++stops) bench.host->key(VK_TAB);
    EXPECT_TRUE(left());
    EXPECT_GE(stops, 8);
    EXPECT_LT(stops, 40);  // the cells of the overview are one stop
    bench.closeUnsaved();
}

TEST_P(InHosts, TheFocusGoesBackWhenABoxOrAFormIsGone) {
    Bench bench(GetParam(), "HELLO");
    bench.type(L"HELLOOO");
    bench.script.expectBox(L"Difference in character counts", IDOK);
    bench.host->key(VK_RETURN);
    ASSERT_TRUE(bench.allCame());
    EXPECT_TRUE(bench.host->pumpUntil([&] { return GetFocus() == bench.input(); })) << "after a box";

    const auto closeForm = [](HWND form) { PostMessageW(form, WM_KEYDOWN, VK_ESCAPE, 1); };
    bench.script.expect("dlgFontManager", [&](HWND) { closeForm(GetFocus()); });
    SetFocus(bench.button(L"Select Font"));
    bench.host->key(VK_RETURN);
    ASSERT_TRUE(bench.allCame());
    EXPECT_TRUE(bench.host->pumpUntil([&] { return GetFocus() == bench.button(L"Select Font"); }))
        << "after a dialog";

    bench.include("HELLO");
    const Bench::Cell cell = bench.cell(L'L');
    bench.script.expectMenu(L"Show Font Histogram");
    bench.rightClick(cell);
    ASSERT_TRUE(bench.allCame());
    SetFocus(bench.input());
    const auto histogram = [] { return FindWindowW(L"DravikFormWindow", nullptr); };
    ASSERT_TRUE(bench.host->pumpUntil([&] { return IsWindowVisible(histogram()) != FALSE; }));
    SetActiveWindow(histogram());
    ASSERT_TRUE(IsChild(histogram(), GetFocus()));
    closeForm(GetFocus());
    EXPECT_TRUE(bench.host->pumpUntil([&] { return GetFocus() == bench.input(); })) << "after a child form";
    bench.closeUnsaved();
    EXPECT_THAT(bench.script.messages(), IsEmpty());
}

}  // namespace
}  // namespace dravik::test
