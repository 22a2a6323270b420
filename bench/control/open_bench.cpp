// How long the control takes to come up in a host: made, activated, laid out and painted, without and with a
// step. Median of several runs after a first one, in milliseconds.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>
#include "windows/control/support/Bench.h"

int main() {
    using namespace dravik;
    using namespace dravik::test;
    constexpr int kRuns = 15;
    using Clock = std::chrono::steady_clock;
    const auto since = [](Clock::time_point start) {
        return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
    };
    OleInitialize(nullptr);
    {
        const auto& module = controlModule();
        std::vector<double> opened;
        std::vector<double> closed;
        for (int run = 0; run <= kRuns; ++run) {
            auto start = Clock::now();
            StrictHost host(module.make(CLSID_DravikDlg));
            RedrawWindow(host.window(), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
            GdiFlush();
            if (run > 0) opened.push_back(since(start));
            start = Clock::now();
            host.close();
            if (run > 0) closed.push_back(since(start));
        }
        std::sort(opened.begin(), opened.end());
        std::sort(closed.begin(), closed.end());
        std::printf("open and paint %8.1f ms (best %.1f)\nclose          %8.1f ms\n", opened[kRuns / 2],
                    opened.front(), closed[kRuns / 2]);
    }
    OleUninitialize();
    return 0;
}
