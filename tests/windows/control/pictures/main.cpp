// Pictures of the control in each of its hosts with a learnt font, for the guide and for whoever wants to
// see: usage control_pictures FOLDER. The scale is the system's (HKCU\Control Panel\Desktop, LogPixels);
// other scales than 96 dpi stand in the pictures' names.
#include <cstdio>
#include <filesystem>

#include "drivers/win32/ImageFile.h"
#include "windows/control/support/Bench.h"
#include "windows/win32/Gdi.h"

namespace dravik::test {
namespace {

void keep(HWND window, const std::filesystem::path& file) {
    RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
    const RECT place = insideOf(window);
    Canvas canvas(place.right, place.bottom);
    HDC dc = GetDC(window);
    BitBlt(canvas.dc(), 0, 0, place.right, place.bottom, dc, 0, 0, SRCCOPY);
    ReleaseDC(window, dc);
    writeImage(file.string(), canvas);
    std::printf("%s\n", file.filename().string().c_str());
}

// A height at which the screen is not mostly empty.
void makeSmaller(Host& host) {
    const RECT place = insideOf(host.frame());
    const int height = place.bottom * 2 / 3;
    host.resize(place.right, height);
    RECT outer{0, 0, place.right, height};
    AdjustWindowRect(&outer, static_cast<DWORD>(GetWindowLongW(host.frame(), GWL_STYLE)), FALSE);
    SetWindowPos(host.frame(), nullptr, 0, 0, outer.right - outer.left, outer.bottom - outer.top,
                 SWP_NOMOVE | SWP_NOZORDER);
    host.pump();
}

void show(const std::string& host, const std::filesystem::path& folder) {
    Bench bench(host);
    if (host != "sheet") makeSmaller(*bench.host);
    bench.bind("HELLO");
    bench.include("HELLO");
    bench.include("LOLO");
    bench.learn();
    bench.press(L"Save Font");
    bench.waitForStatus(L"Saved font");
    bench.type(L"HOLE");
    bench.host->pump();
    const UINT dpi = GetDpiForSystem();
    const std::string scale = dpi == USER_DEFAULT_SCREEN_DPI ? "" : "-" + std::to_string(dpi);
    keep(bench.host->frame(), folder / ("control-" + host + scale + ".png"));
    bench.host->close();
}

}  // namespace
}  // namespace dravik::test

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: control_pictures FOLDER\n");
        return 2;
    }
    SetProcessDpiAwarenessContext(DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE_V2);
    return dravik::test::withRegisteredControl([argv] {
        for (const char* host : {"strict", "atl", "sheet"}) dravik::test::show(host, argv[1]);
        return 0;
    });
}
