// What the surroundings change while a page is shown: the display scale and the system's colours.
#include "windows/win32/support/Shown.h"

#include "windows/control/ControlWindow.h"
#include "windows/win32/HighContrast.h"

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

// The operator's wish for high contrast with white on black, while the object lives.
class BlackScheme {
  public:
    BlackScheme() {
        for (std::size_t i = 0; i < kElements.size(); ++i) before_[i] = GetSysColor(kElements[i]);
        set({0, 0xFFFFFF, 0, 0xFFFFFF, 0, 0xFFFFFF});
    }
    BlackScheme(const BlackScheme&) = delete;
    BlackScheme& operator=(const BlackScheme&) = delete;
    ~BlackScheme() { set(before_); }

  private:
    static constexpr std::array<int, 6> kElements{COLOR_BTNFACE,    COLOR_BTNTEXT,   COLOR_WINDOW,
                                                  COLOR_WINDOWTEXT, COLOR_SCROLLBAR, COLOR_WINDOWFRAME};
    static void set(const std::array<COLORREF, 6>& colors) {
        SetSysColors(static_cast<int>(colors.size()), kElements.data(), colors.data());
    }

    HighContrastOverride wish_;
    std::array<COLORREF, 6> before_{};
};

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
    const BlackScheme scheme;
    SendMessageW(shown.page->window(), WM_SYSCOLORCHANGE, 0, 0);
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
}

}  // namespace
}  // namespace dravik::test
