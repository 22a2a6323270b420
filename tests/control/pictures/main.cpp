// Pictures of the control in each of its hosts with a learnt font, for the guide and for whoever wants to
// see: usage control_pictures FOLDER. The scale is the system's (HKCU\Control Panel\Desktop, LogPixels).
#include "control/support/Bench.h"
// Behind the Windows headers
#include <cstdio>
#include <exception>
#include <filesystem>

#include "activex/host/PngFile.h"
#include "activex/win32/Gdi.h"

namespace dravik {
namespace {

void keep(HWND window, const std::filesystem::path& file) {
    RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
    RECT place{};
    GetClientRect(window, &place);
    Canvas canvas(place.right, place.bottom);
    HDC dc = GetDC(window);
    BitBlt(canvas.dc(), 0, 0, place.right, place.bottom, dc, 0, 0, SRCCOPY);
    ReleaseDC(window, dc);
    writePng(file.string(), canvas);
    std::printf("%s\n", file.filename().string().c_str());
}

void show(const char* host, const std::filesystem::path& folder) {
    Bench bench(host);
    bench.bind("HELLO");
    bench.include(L"HELLO", 5);
    bench.show("LOLO");
    bench.include(L"LOLO", 4);
    bench.learn();
    bench.press(L"Save Font");
    bench.waitForStatus(L"Saved font");
    bench.type(L"HOLE");
    bench.host->pump();
    keep(bench.host->frame(), folder / (std::string("control-") + host + ".png"));
    bench.host->close();
}

}  // namespace
}  // namespace dravik

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: control_pictures FOLDER\n");
        return 2;
    }
    SetProcessDpiAwarenessContext(DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE_V2);
    OleInitialize(nullptr);
    int result = 0;
    try {
        const auto& module = dravik::controlModule();
        module.registerServer();
        for (const char* host : {"strict", "atl", "sheet"}) dravik::show(host, argv[1]);
        module.unregisterServer();
    } catch (const std::exception& exception) {
        std::fprintf(stderr, "%s\n", exception.what());
        result = 1;
    }
    OleUninitialize();
    return result;
}
