// The whole screen with the embedded tool: a font is made, taught and learnt through what the operator sees.
#include "shell/DravikDlg.h"
#include "win32/support/ShownPage.h"

namespace dravik::test {
namespace {

TEST(WholeScreen, IsShown) {
    for (const int dpi : {96, 144}) {
        const DpiOverride scale(dpi);
        Win32Platform platform;
        HostWindow host(scaled(640, dpi), scaled(780, dpi));
        platform.owner = [&] { return host.window(); };
        DravikDlg control(platform);
        FormPage page(control.form(), host.window(), platform);
        page.setBounds({0, 0, scaled(640, dpi), scaled(780, dpi)});
        page.setVisible(true);
        settle();
        keepPicture(page.window(), "screen-" + std::to_string(dpi));
        page.detach();
    }
}

}  // namespace
}  // namespace dravik::test
