// How fast the engine is: finding characters, features, training, storing, and queries of the largest font.
#include <benchmark/benchmark.h>

#include <cmath>
#include <memory>
#include <random>

#include "base/Text.h"
#include "contract/DrawnText.h"
#include "engine/PngFile.h"
#include "engine/classifier/DistanceMeasure.h"
#include "engine/classifier/Network.h"
#include "engine/classifier/Reading.h"
#include "engine/embedded/SeenImage.h"
#include "engine/font/FontFile.h"
#include "engine/font/SampleOrigin.h"
#include "engine/font/SampleStore.h"
#include "engine/font/SampleTable.h"
#include "engine/recogniser/BaseReader.h"
#include "engine/scene/Scene.h"

namespace dravik {

using namespace engine;
using namespace tool;
namespace {

const std::string kParts = std::string(DRAVIK_SOURCE_DIR) + "/data/parts/";

void findLine(benchmark::State& state) {
    const auto image = std::make_shared<GreyImage>(readPng(kParts + "rendered_lines/hack_000.png"));
    for (auto _ : state) benchmark::DoNotOptimize(findScene(image));
}
BENCHMARK(findLine)->Unit(benchmark::kMillisecond);

void findCharset(benchmark::State& state) {
    const auto image = std::make_shared<GreyImage>(readPng(kParts + "rendered_charset/hack_000.png"));
    for (auto _ : state) benchmark::DoNotOptimize(findScene(image));
}
BENCHMARK(findCharset)->Unit(benchmark::kMillisecond);

// A line of print in the middle of a part of so many megapixels, turned by 20 degrees.
GreyImage part(std::int64_t megapixels) {
    const GreyImage line = readPng(kParts + "rendered_lines/hack_000.png");
    const int height = static_cast<int>(std::sqrt(static_cast<double>(megapixels) * 1e6 / 1.25)),
              width = static_cast<int>(1.25 * height);
    GreyImage result(width, height, line(0, 0));
    const float c = std::cos(0.35f), s = std::sin(0.35f);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const float dx = static_cast<float>(x - width / 2), dy = static_cast<float>(y - height / 2);
            const float u = c * dx + s * dy + 0.5f * static_cast<float>(line.width()),
                        v = c * dy - s * dx + 0.5f * static_cast<float>(line.height());
            if (u > 0 && v > 0 && u < static_cast<float>(line.width()) &&
                v < static_cast<float>(line.height()))
                result(x, y) = static_cast<std::uint8_t>(line.levelAt(u, v));
        }
    return result;
}

void findOnPart(benchmark::State& state) {
    const auto image = std::make_shared<GreyImage>(part(state.range(0)));
    std::size_t found = 0;
    for (auto _ : state) found = findScene(image).characters();
    state.counters["characters"] = static_cast<double>(found);
}
BENCHMARK(findOnPart)->Arg(2)->Arg(12)->Unit(benchmark::kMillisecond);

// Without print: noise (0) or a fine checkerboard (1), of two megapixels.
void findNothing(benchmark::State& state) {
    auto image = std::make_shared<GreyImage>(1600, 1250);
    std::mt19937 random(11);
    for (int y = 0; y < image->height(); ++y)
        for (int x = 0; x < image->width(); ++x)
            (*image)(x, y) = state.range(0) == 0        ? static_cast<std::uint8_t>(random())
                             : (x / 3 + y / 3) % 2 == 0 ? std::uint8_t{60}
                                                        : std::uint8_t{210};
    for (auto _ : state) benchmark::DoNotOptimize(findScene(image));
}
BENCHMARK(findNothing)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

void features(benchmark::State& state) {
    const Segmentation found = segment(readPng(kParts + "rendered_charset/hack_000.png"));
    for (auto _ : state) benchmark::DoNotOptimize(allInputs(found, {}));
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(found.glyphs.size()));
}
BENCHMARK(features)->Unit(benchmark::kMillisecond);

void patches(benchmark::State& state) {
    const Segmentation found = segment(readPng(kParts + "rendered_charset/hack_000.png"));
    for (auto _ : state)
        for (const Glyph& glyph : found.glyphs)
            benchmark::DoNotOptimize(characterPatch(found.ink, found.frame, glyph.piece,
                                                    found.lines[static_cast<std::size_t>(glyph.line)]));
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(found.glyphs.size()));
}
BENCHMARK(patches)->Unit(benchmark::kMicrosecond);

// By each instruction set in turn, as many as a line has.
void patchesRecognised(benchmark::State& state) {
    const auto kernels = availableKernels();
    if (static_cast<std::size_t>(state.range(0)) >= kernels.size())
        return state.SkipWithError("not on this machine");
    const Segmentation found = segment(readPng(kParts + "rendered_charset/hack_000.png"));
    std::vector<CharacterPatch> all;
    for (const Glyph& glyph : found.glyphs)
        all.push_back(characterPatch(found.ink, found.frame, glyph.piece,
                                     found.lines[static_cast<std::size_t>(glyph.line)]));
    const MatrixKernels& chosen = *kernels[static_cast<std::size_t>(state.range(0))];
    for (auto _ : state) benchmark::DoNotOptimize(patchLikelihoods(std::span(all).first(16), chosen));
    state.SetLabel(chosen.name);
    state.SetItemsProcessed(state.iterations() * 16);
}
BENCHMARK(patchesRecognised)->DenseRange(0, 2)->Unit(benchmark::kMicrosecond);

void lineWithoutAFont(benchmark::State& state) {
    const GreyImage image = readPng(kParts + "rendered_lines/hack_000.png");
    for (auto _ : state) benchmark::DoNotOptimize(readWithoutFont(segment(image, takeWholeCharacters)));
}
BENCHMARK(lineWithoutAFont)->Unit(benchmark::kMillisecond);

std::vector<Sample> manySamples(std::size_t count) {
    std::vector<Sample> samples(count);
    std::mt19937 random(5);
    for (std::size_t i = 0; i < count; ++i) {
        samples[i].code = static_cast<std::int32_t>('0' + i % 74);
        samples[i].serial = i;
        for (std::size_t k = 0; k < kInputCount; ++k) {
            const std::size_t level = (k * 7 + i % 74 * 13) % 50;
            samples[i].inputs[k] = (static_cast<float>(level) + static_cast<float>(random() % 20)) / 70;
        }
    }
    return samples;
}

void training(benchmark::State& state) {
    const std::vector<Sample> samples = manySamples(static_cast<std::size_t>(state.range(0)));
    TrainingSet set;
    for (std::int32_t c = 0; c < 74; ++c) set.codes.push_back('0' + c);
    for (const Sample& sample : samples) {
        set.inputs.insert(set.inputs.end(), sample.inputs.begin(), sample.inputs.end());
        set.classes.push_back(static_cast<std::uint32_t>(sample.code - '0'));
    }
    TrainingFigures figures;
    std::int64_t cycles = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(trained(
            set, 1, [](const TrainingFigures&) { return true; }, figures));
        cycles += figures.cycles;
    }
    state.counters["cycles"] = figures.cycles;
    state.SetItemsProcessed(cycles * state.range(0));
}
BENCHMARK(training)->Arg(222)->Arg(740)->Arg(7400)->Unit(benchmark::kMillisecond);

void allDistances(benchmark::State& state) {
    const std::vector<Sample> samples = manySamples(static_cast<std::size_t>(state.range(0)));
    ClassStatistics statistics;
    std::vector<const Sample*> all;
    for (const Sample& sample : samples) {
        statistics.add(sample);
        all.push_back(&sample);
    }
    for (auto _ : state) {
        const DistanceMeasure measure(statistics, all);
        double sum = 0;
        for (const Sample& sample : samples) sum += measure.distance(sample);
        benchmark::DoNotOptimize(sum);
    }
    state.counters["comparisons"] = static_cast<double>(statistics.comparisons());
}
BENCHMARK(allDistances)->Arg(888)->Arg(3000)->Arg(5000)->Arg(kMostSamples)->Unit(benchmark::kMillisecond);

// Samples included into the largest font, and committed.
void includeIntoLargest(benchmark::State& state) {
    SampleStore store;
    store.include(manySamples(kMostSamples - 2000));
    store.commit();
    for (auto _ : state) {
        store.include(manySamples(20));
        store.commit();
        benchmark::DoNotOptimize(store.columns(SampleKind::Committed));
    }
}
BENCHMARK(includeIntoLargest)->Iterations(100)->Unit(benchmark::kMillisecond);

// What the screen does for each sample that it deletes by hand: query, delete, query, with the table still
// shown.
void queryDeleteQuery(benchmark::State& state) {
    SampleStore store;
    store.include(manySamples(static_cast<std::size_t>(state.range(0))));
    store.commit();
    const auto query = [&store] {
        return sampleTable(std::array{kAllCommitted}, kSampleFields, {},
                           store.columns(SampleKind::Uncommitted), store.columns(SampleKind::Committed));
    };
    RecordTablePtr shown = query();
    std::size_t place = 0;
    for (auto _ : state) {
        const RecordTablePtr before = query();
        store.remove(SampleKind::Committed, place++ % 400);
        shown = query();
        benchmark::DoNotOptimize(shown->codes().size());
    }
}
BENCHMARK(queryDeleteQuery)
    ->Arg(888)
    ->Arg(3000)
    ->Arg(kMostSamples)
    ->Iterations(400)
    ->Unit(benchmark::kMicrosecond);

SeenImage seenSheet() {
    const auto image = std::make_shared<GreyImage>(readPng(kParts + "rendered_charset/hack_000.png"));
    SeenImage seen;
    seen.show(image, std::make_shared<Scene>(findScene(image)));
    seen.setName(kParts + "rendered_charset/hack_000.png");
    return seen;
}

// What an include of a sheet of characters takes more for their pictures.
void picturesOfASheet(benchmark::State& state) {
    SeenImage seen = seenSheet();
    double bytes = 0;
    for (auto _ : state) benchmark::DoNotOptimize(seen.origins());
    const auto origins = seen.origins();
    for (const auto& origin : origins) bytes += static_cast<double>(origin->picture.packed.size());
    state.counters["characters"] = static_cast<double>(origins.size());
    state.counters["bytes/picture"] = bytes / static_cast<double>(origins.size());
}
BENCHMARK(picturesOfASheet)->Unit(benchmark::kMillisecond);

// Without pictures and with them.
FontRecord largestFont(bool pictures) {
    FontRecord font;
    font.samples = manySamples(kMostSamples);
    font.distances.assign(font.samples.size(), 0.25);
    font.nextSerial = font.samples.size();
    if (!pictures) return font;
    const auto origins = seenSheet().origins();
    for (std::size_t i = 0; i < font.samples.size(); ++i)
        font.samples[i].origin = std::make_shared<SampleOrigin>(*origins[i % origins.size()]);
    return font;
}

void saveLargestFont(benchmark::State& state) {
    const FontRecord font = largestFont(state.range(0) != 0);
    for (auto _ : state) benchmark::DoNotOptimize(encodeFont(font));
    state.counters["bytes/sample"] =
        static_cast<double>(encodeFont(font).size()) / static_cast<double>(font.samples.size());
}
BENCHMARK(saveLargestFont)->ArgName("pictures")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

void loadLargestFont(benchmark::State& state) {
    const std::vector<std::uint8_t> bytes = encodeFont(largestFont(state.range(0) != 0));
    for (auto _ : state) benchmark::DoNotOptimize(decodeFont(bytes, "bench"));
}
BENCHMARK(loadLargestFont)->ArgName("pictures")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace dravik
