// The whole training screen in native controls, at another display scale and in other colours.
#include "screen/context/Screen.h"
#include "windows/win32/support/BlackScheme.h"
#include "windows/win32/support/ShownPage.h"

namespace dravik::test {

using namespace screen;
namespace {

struct ShownScreen {
    explicit ShownScreen(int dpi) : scale(dpi), size{scaled(640, dpi), scaled(760, dpi)} {
        page.setBounds({0, 0, size.cx, size.cy});
        page.setVisible(true);
        settle();
    }
    HWND view(const Widget& widget) { return platform.peerOf(widget)->window(); }

    const DpiOverride scale;
    const SIZE size;
    HostWindow host{size.cx, size.cy};
    Win32Platform platform;
    Screen screen;
    FormPage page{screen.form, host.window(), platform};
};

TEST(WholeScreen, NothingIsCutOffAt144Dpi) {
    ShownScreen shown(144);
    Screen& screen = shown.screen;
    EXPECT_LE(shown.page.minimumSize().cx, shown.size.cx);
    EXPECT_LE(shown.page.minimumSize().cy, shown.size.cy);
    RECT bounds{};
    GetWindowRect(shown.page.window(), &bounds);
    for (const Widget* widget : std::initializer_list<const Widget*>{
             &screen.font.cmdSelectFont, &screen.sample.cmdInclude, &screen.train.cmdRevert,
             screen.overview.lblChar.back().get(), &screen.sbr}) {
        RECT place{};
        RECT inside{};
        GetWindowRect(shown.view(*widget), &place);
        EXPECT_TRUE(IntersectRect(&inside, &place, &bounds) && EqualRect(&inside, &place)) << widget->name();
    }
    const HWND save = shown.view(screen.train.cmdSaveFont);
    RECT client{};
    GetClientRect(save, &client);
    Look look(144, {});
    EXPECT_LT(look.textSize(look.font(), windowText(save)).cx, client.right);
}

TEST(WholeScreen, FollowsTheSystemsColoursWhileItIsShown) {
    ShownScreen shown(96);
    const HWND page = shown.page.window();
    const auto white = [&] { return countOf(*picture(page), RGB(255, 255, 255)); };
    {
        const BlackScheme scheme;
        SendMessageW(page, WM_SYSCOLORCHANGE, 0, 0);
        EXPECT_EQ(colorAt(*picture(page), 1, 1), RGB(0, 0, 0));
        auto label = picture(shown.view(shown.screen.font.lblFontName));
        EXPECT_EQ(colorAt(*label, label->width() - 1, 0), RGB(0, 0, 0));
        EXPECT_GT(countOf(*label, RGB(255, 255, 255)), 20);
    }
    const int before = white();
    SendMessageW(page, WM_SYSCOLORCHANGE, 0, 0);
    EXPECT_NE(colorAt(*picture(page), 1, 1), RGB(0, 0, 0));
    EXPECT_NE(white(), before);
}

}  // namespace
}  // namespace dravik::test
