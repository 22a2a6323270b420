// What crossing COM costs: a font of 10,000 samples read directly, through the font tool's interface and
// called by names; and an include. Median of several runs, in milliseconds.
#include <cstdio>
#include <filesystem>
#include <memory>
#include <vector>

#include "Median.h"
#include "contract/DrawnText.h"
#include "engine/embedded/EmbeddedTool.h"
#include "support/TemporaryFolder.h"
#include "tool/Samples.h"
#include "windows/com/ComFontTool.h"
#include "windows/com/ComStep.h"
#include "windows/com/ToolValues.h"

namespace {

using namespace dravik;
using namespace dravik::com;
using namespace dravik::engine;
using namespace dravik::tool;

constexpr int kSamples = 10'000;

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
            const double query =
                medianTime([&] { table = one->GetSampleData(kAllCommitted, kSampleFields); });
            const double columns = medianTime([&] {
                const auto fresh = one->GetSampleData(kAllCommitted, kSampleFields);
                sum += readColumns(*fresh);
            });
            const double cells = medianTime([&] { sum += readCells(*table); });
            std::printf("%-18s %10.3f %12.3f %11.3f\n", name, query, columns, cells);
        }
        tool->setImage(drawn({"0123456789ABCEHLT"}));
        for (const auto& [name, one] : {std::pair<const char*, FontTool*>{"direct", tool.get()},
                                        {"typed", typed.get()},
                                        {"late bound", lateBound.get()}}) {
            const double include = medianTime([&] {
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
