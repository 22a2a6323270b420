// What the surroundings change while a page is shown: the display scale and the system's colours.
#include "windows/win32/support/Shown.h"

#include "windows/control/ControlWindow.h"
#include "windows/win32/support/BlackScheme.h"

namespace dravik::test {

using namespace control;
namespace {

constexpr UINT kDpiChangedAfterParent = 0x02E3;

class ShownControl : public testing::Test {
  protected:
    ShownControl() {
        form.setLayout(column({item(label), item(button)}));
        control.emplace(moduleInstance(), host.window(), RECT{0, 0, 300, 80}, form, platform, Ambient{});
        control->show(true);
        settle();
    }
    bool scrolls(DWORD bar) const {
        return (static_cast<DWORD>(GetWindowLongW(control->window(), GWL_STYLE)) & bar) != 0;
    }

    Button button{"button", "Button"};
    Label label{"label", "Text"};
    Win32Platform platform;
    Form form{"form", "Form"};
    HostWindow host{300, 80};
    std::optional<ControlWindow> control;
};

TEST_F(ShownControl, AnotherDisplayScaleLaysItOutAnew) {
    const HWND view = findWindowNamed(control->window(), "button");
    const auto place = [&] {
        RECT rect = placeOf(view);
        MapWindowPoints(nullptr, control->window(), reinterpret_cast<POINT*>(&rect), 2);
        return rect;
    };
    const RECT before = place();
    EXPECT_FALSE(scrolls(WS_VSCROLL));
    {
        const DpiOverride scale(192);
        SendMessageW(control->window(), kDpiChangedAfterParent, 0, 0);
        settle();
        EXPECT_EQ(control->page().dpi(), 192);
        EXPECT_NEAR(heightOf(place()), 2 * heightOf(before), 6);
        EXPECT_NEAR(place().top, 2 * before.top, 6);
        EXPECT_TRUE(scrolls(WS_VSCROLL)) << "the same room is too little now";
    }
    SendMessageW(control->window(), kDpiChangedAfterParent, 0, 0);
    settle();
    const RECT after = place();
    EXPECT_TRUE(EqualRect(&after, &before));
    EXPECT_FALSE(scrolls(WS_VSCROLL));
}

TEST_F(ShownControl, ScrollsWhileItNeedsMoreRoom) {
    button.setCaption(std::string(80, 'W'));
    settle();
    EXPECT_TRUE(scrolls(WS_HSCROLL));
    button.setCaption("W");
    settle();
    EXPECT_FALSE(scrolls(WS_HSCROLL));
}

TEST(Surroundings, NothingThatIsDrawnGetsLostUnderHighContrast) {
    Label white("white", "A");
    Label plain("plain", "B");
    for (Label* cell : {&white, &plain}) cell->setCell(true);
    white.setBackColor(rgb(255, 255, 255));
    plain.setBackColor(kScrollBarColor);
    Chart chart("chart");
    chart.setScale({0, 100, 100, 0});
    ChartScene scene;
    scene.bars.push_back({0, 50, 20, 50, rgb(0, 0, 0), true, "bar"});
    scene.lines.push_back({50, 0, 50, 100, 1, rgb(0, 0, 0), true});
    chart.setScene(scene);
    Shown shown(column({row({item(white), item(plain), space()}), item(chart)}), 400, 300);
    const HWND page = shown.page->window();
    std::optional<BlackScheme> scheme(std::in_place);
    SendMessageW(page, WM_SYSCOLORCHANGE, 0, 0);
    EXPECT_EQ(colorAt(*picture(page), 1, 1), RGB(0, 0, 0));
    auto cell = shown.canvas(white);
    EXPECT_EQ(colorAt(*cell, 0, 0), RGB(0, 0, 0)) << "the frame stands out from the cell";
    EXPECT_EQ(colorAt(*cell, 3, 3), RGB(255, 255, 255)) << "what a cell tells by its colour stays";
    cell = shown.canvas(plain);
    EXPECT_EQ(colorAt(*cell, 0, 0), RGB(255, 255, 255));
    EXPECT_GT(countOf(*cell, RGB(255, 255, 255)), 2 * (cell->width() + cell->height()))
        << "and so does the text";
    auto bars = picture(shown.view(chart));
    EXPECT_EQ(colorAt(*bars, bars->width() / 2, bars->height() / 2), RGB(255, 255, 255)) << "a black line";
    EXPECT_EQ(colorAt(*bars, bars->width() / 10, bars->height() / 2), RGB(255, 255, 255)) << "a black bar";
    scheme.reset();
    SendMessageW(page, WM_SYSCOLORCHANGE, 0, 0);
    EXPECT_NE(colorAt(*picture(page), 1, 1), RGB(0, 0, 0));
}

}  // namespace
}  // namespace dravik::test
