// What crossing COM costs: a font of 10,000 samples read directly, through the font tool's interface and
// called by names; and an include. Median of several runs, in milliseconds.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <memory>
#include <vector>

#include "windows/com/ComFontTool.h"
#include "windows/com/ComStep.h"
#include "windows/com/ToolValues.h"
// Behind the Windows headers
#include "contract/DrawnText.h"
#include "engine/embedded/EmbeddedTool.h"
#include "support/TemporaryFolder.h"
#include "tool/Samples.h"

namespace {

using namespace dravik;
using namespace dravik::com;
using namespace dravik::engine;
using namespace dravik::tool;

constexpr int kRuns = 9;
constexpr int kSamples = 10'000;

double median(const std::function<void()>& work) {
    std::vector<double> times;
    for (int run = 0; run < kRuns; ++run) {
        const auto start = std::chrono::steady_clock::now();
        work();
        times.push_back(
            std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count());
    }
    std::nth_element(times.begin(), times.begin() + kRuns / 2, times.end());
    return times[kRuns / 2];
}

// As the histogram and the statistics do: two columns, and every cell once.
double readColumns(const RecordTable& table) {
    double sum = 0;
    for (const auto code : table.codes()) sum += code;
    for (const auto value : table.values()) sum += value;
    return sum;
}

double readCells(const RecordTable& table) {
    double sum = 0;
    for (int row = 1; row <= table.upperRow(); ++row)
        for (int column = 0; column <= table.upperColumn(); ++column) sum += table.number(row, column);
    return sum;
}

}  // namespace

int main() {
    if (FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) return 2;
    {
        const TemporaryFolder folder;
        const auto tool = std::make_shared<EmbeddedTool>(JobFolder(folder.path()));
        tool->CreateFont("F");
        const std::vector<std::string> lines(50, "0123456789ABCEHLT0123456789");
        tool->setImage(drawn(lines));
        std::string text;
        for (const std::string& line : lines) text += line;
        int samples = 0;
        while (samples < kSamples) {
            tool->IncludeSamples(text);
            samples += static_cast<int>(text.size());
            tool->CommitNewSamples();
        }
        const auto object = comFromStep(tool);
        const auto typed = fontToolOf(object.get());
        const auto lateBound = lateBoundFontToolOf(object.get());
        double sum = 0;
        std::printf("%d samples          query  two columns  every cell\n", samples);
        for (const auto& [name, one] : {std::pair<const char*, FontTool*>{"direct", tool.get()},
                                        {"typed", typed.get()},
                                        {"late bound", lateBound.get()}}) {
            RecordTablePtr table;
            const double query = median([&] { table = one->GetSampleData(kAllCommitted, kSampleFields); });
            const double columns = median([&] {
                const auto fresh = one->GetSampleData(kAllCommitted, kSampleFields);
                sum += readColumns(*fresh);
            });
            const double cells = median([&] { sum += readCells(*table); });
            std::printf("%-18s %10.3f %12.3f %11.3f\n", name, query, columns, cells);
        }
        tool->setImage(drawn({"0123456789ABCEHLT"}));
        for (const auto& [name, one] : {std::pair<const char*, FontTool*>{"direct", tool.get()},
                                        {"typed", typed.get()},
                                        {"late bound", lateBound.get()}}) {
            const double include = median([&] {
                one->IncludeSamples("0123456789ABCEHLT");
                for (int call = 0; call <= 17; ++call) one->DeleteSample(200000);
            });
            std::printf("include and delete, %-10s %8.3f\n", name, include);
        }
        if (sum < 0) return 1;
    }
    CoUninitialize();
    return 0;
}
