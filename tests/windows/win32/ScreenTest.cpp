// The whole training screen in native controls, at another display scale.
#include "screen/context/Screen.h"
#include "windows/win32/support/Shown.h"

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
    const RECT page = placeOf(shown.page.window());
    for (const Widget* widget : std::initializer_list<const Widget*>{
             &screen.font.cmdSelectFont, &screen.sample.cmdInclude, &screen.train.cmdRevert,
             screen.overview.lblChar.back().get(), &screen.sbr})
        EXPECT_TRUE(isInside(placeOf(shown.view(*widget)), page)) << widget->name();
    const HWND save = shown.view(screen.train.cmdSaveFont);
    Look look(144, {});
    EXPECT_LT(look.textSize(look.font(), windowText(save)).cx, insideOf(save).right);
}

}  // namespace
}  // namespace dravik::test
