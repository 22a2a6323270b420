// How well Distance finds planted wrong labels, beside other ways of finding them, on the same samples.
//
//     dravik_distance [DIGITS_FOLDER]      (a folder of handwritten digits as IDX files)
#include <chrono>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <functional>
#include <thread>

#include "Peers.h"
#include "Ranking.h"
#include "SampleSets.h"
#include "engine/embedded/EmbeddedTool.h"
#include "engine/font/FontFile.h"
#include "engine/font/FontVersions.h"
#include "engine/font/SampleStore.h"
#include "tool/Samples.h"

namespace dravik {

using namespace engine;
using namespace tool;
namespace {

constexpr std::uint32_t kRepeats = 5;

std::vector<double> distances(const std::vector<Sample>& samples) {
    SampleStore store;
    store.include(samples);
    store.commit();
    return store.columns(SampleKind::Committed)->distances;
}

// After a run without a time limit.
std::vector<double> distancesAfterRun(const std::vector<Sample>& samples, const std::string& jobs) {
    const JobFolder folder(jobs);
    FontRecord font;
    font.samples = samples;
    for (Sample& sample : font.samples) sample.serial = font.nextSerial++;
    font.distances.assign(samples.size(), 0);
    EmbeddedTool tool{folder};
    tool.CreateFont("planted");
    writeFont(font, folder.fontFile("planted"));
    tool.LoadFont("planted");
    tool.SetTrainTimeout(0);
    tool.StartTraining();
    while (!tool.IsTrainingDone()) std::this_thread::sleep_for(std::chrono::milliseconds(2));
    const auto values = tool.GetSampleData(kAllCommitted, kSampleFields)->values();
    return {values.begin(), values.end()};
}

using Finder = std::function<std::vector<double>(const std::vector<Sample>&)>;

void measure(const std::vector<SampleSet>& sets, const std::string& jobs) {
    const std::vector<std::pair<const char*, Finder>> finders = {
        {"Distance", distances},
        {"Distance after run", [&jobs](const auto& samples) { return distancesAfterRun(samples, jobs); }},
        {"class-mean ratio", classMeanRatios},
        {"5 nearest neighbours", [](const auto& samples) { return neighbourShares(samples, 5); }},
        {"network margin", [](const auto& samples) { return networkMargins(samples, 20); }},
    };
    std::printf("%-28s %7s %6s  %-22s %8s %12s %9s\n", "samples", "count", "wrong", "by", "area", "precision",
                "seconds");
    for (const SampleSet& set : sets)
        for (const double share : {0.02, 0.05})
            for (const auto& [name, finder] : finders) {
                Ranking mean;
                const auto start = std::chrono::steady_clock::now();
                for (std::uint32_t repeat = 0; repeat < kRepeats; ++repeat) {
                    const Planted labels = planted(set.samples, share, 100 + repeat);
                    const Ranking one = ranking(finder(labels.samples), labels);
                    mean.area += one.area / kRepeats;
                    mean.precision += one.precision / kRepeats;
                }
                const double seconds =
                    std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
                std::printf("%-28s %7zu %4.0f %%  %-22s %8.5f %12.4f %9.3f\n", set.name.c_str(),
                            set.samples.size(), 100 * share, name, mean.area, mean.precision,
                            seconds / kRepeats);
                std::fflush(stdout);
            }
}

}  // namespace
}  // namespace dravik

int main(int argc, char** argv) {
    using namespace dravik;
    const auto jobs =
        std::filesystem::temp_directory_path() /
        ("dravik-distance-" + std::to_string(std::chrono::steady_clock::now().time_since_epoch().count()));
    int result = 0;
    try {
        std::vector<OutlineFont> fonts;
        for (const std::string& file : installedFonts()) fonts.emplace_back(file);
        std::vector<SampleSet> sets;
        for (std::size_t i = 0; i < fonts.size(); ++i)
            sets.push_back(renderedSamples(fonts[i], 12, 1000 * static_cast<std::uint32_t>(i + 1), 1));
        sets.push_back(mixedSamples(fonts, 6, 50'000, 1));
        SampleSet digits =
            digitSamples(argc > 1 ? argv[1] : std::string(DRAVIK_SOURCE_DIR) + "/../shared/data/mnist2000");
        if (digits.samples.empty())
            std::printf("no handwritten digits: not measured\n");
        else
            sets.push_back(std::move(digits));
        measure(sets, jobs.string());
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        result = 1;
    }
    std::error_code ignored;
    std::filesystem::remove_all(jobs, ignored);
    return result;
}
