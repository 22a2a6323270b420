// The whole training screen in native controls, at another display scale.
#include "screen/context/Screen.h"
#include "windows/win32/support/Shown.h"

namespace dravik::test {

using namespace screen;
namespace {

TEST(WholeScreen, NothingIsCutOffAt144Dpi) {
    const DpiOverride scale(144);
    const int width = scaled(640, 144), height = scaled(760, 144);
    const HostWindow host(width, height);
    Win32Platform platform;
    Screen screen;
    FormPage page(screen.form, host.window(), platform);
    page.setBounds({0, 0, width, height});
    page.setVisible(true);
    settle();
    EXPECT_LE(page.minimumSize().cx, width);
    EXPECT_LE(page.minimumSize().cy, height);
    const auto view = [&](const Widget& widget) { return platform.peerOf(widget)->window(); };
    for (const Widget* widget : std::initializer_list<const Widget*>{
             &screen.font.cmdSelectFont, &screen.sample.cmdInclude, &screen.train.cmdRevert,
             screen.overview.lblChar.back().get(), &screen.sbr})
        EXPECT_TRUE(isInside(placeOf(view(*widget)), placeOf(page.window()))) << widget->name();
    const HWND save = view(screen.train.cmdSaveFont);
    Look look(144, {});
    EXPECT_LT(look.textSize(look.font(), windowText(save)).cx, insideOf(save).right);
}

}  // namespace
}  // namespace dravik::test
