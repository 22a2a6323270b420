// What it costs that nothing is lost: an include into a working copy beside a bare write and flush of the
// same bytes, thousands of deletions in one act, taking them back, and includes into the largest font.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <memory>
#include <string>

#include "base/AppendFile.h"
#include "engine/font/FontWorkspace.h"
#include "support/TemporaryFolder.h"

namespace dravik {
namespace {

using namespace engine;

constexpr std::size_t kSheet = 74;

std::vector<Sample> sheet(std::uint64_t serial, std::size_t count) {
    std::vector<Sample> samples(count);
    for (Sample& sample : samples) {
        sample.code = static_cast<std::int32_t>('!' + serial % kSheet);
        for (std::size_t i = 0; i < tool::kFeatureCount; ++i)
            sample.inputs[i] = static_cast<float>((serial * 31 + i * 17) % 97) / 97;
        sample.serial = serial++;
    }
    return samples;
}

struct Desk {
    explicit Desk(std::size_t samples) {
        fonts.create("f");
        fonts.endAct({}, {});
        if (samples > 0) include(samples);
        fonts.save("f");
    }
    void include(std::size_t count) {
        fonts.make(AddUncommitted{sheet(fonts.state().samples.nextSerial(), count)});
        benchmark::DoNotOptimize(fonts.state().samples.columns(tool::SampleKind::Uncommitted));
        fonts.make(CommitUncommitted{static_cast<std::uint32_t>(count)});
        fonts.endAct({}, {});
        benchmark::DoNotOptimize(fonts.state().samples.columns(tool::SampleKind::Committed));
    }
    void removeFirst(std::size_t count) {
        constexpr auto kKind = tool::SampleKind::Committed;
        for (std::size_t i = 0; i < count; ++i)
            fonts.make(RemoveSample{kKind, 0, fonts.state().samples.at(kKind, 0)});
        fonts.endAct({}, {});
    }

    TemporaryFolder folder;
    FontWorkspace fonts{JobFolder(folder.path()), false};
};

// By the number of samples that are there before.
void intoFontsOfEverySize(benchmark::internal::Benchmark* includes) {
    includes->Arg(0)->Arg(20'000)->Arg(80'000)->Iterations(60)->Unit(benchmark::kMillisecond)->UseRealTime();
}

void bareWriteAndFlush(benchmark::State& state) {
    TemporaryFolder folder;
    AppendFile file(folder.path("bare"));
    const std::vector<std::uint8_t> bytes(kSheet * kSampleSize + 100);
    for (auto _ : state) {
        file.append(bytes);
        file.flush();
    }
}
BENCHMARK(bareWriteAndFlush)->Unit(benchmark::kMillisecond)->UseRealTime();

// What the samples themselves take, without anything written.
void includeOfASheetInMemory(benchmark::State& state) {
    SampleStore store;
    store.include(sheet(1, static_cast<std::size_t>(state.range(0))));
    store.commit();
    for (auto _ : state) {
        store.include(sheet(store.nextSerial(), kSheet));
        benchmark::DoNotOptimize(store.columns(tool::SampleKind::Uncommitted));
        store.commit();
        benchmark::DoNotOptimize(store.columns(tool::SampleKind::Committed));
    }
}
BENCHMARK(includeOfASheetInMemory)->Apply(intoFontsOfEverySize);

// Into a font of so many samples.
void includeOfASheet(benchmark::State& state) {
    Desk desk(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) desk.include(kSheet);
}
BENCHMARK(includeOfASheet)->Apply(intoFontsOfEverySize);

void sixThousandDeletions(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        auto desk = std::make_unique<Desk>(20'000);
        state.ResumeTiming();
        desk->removeFirst(6'000);
        state.PauseTiming();
        desk.reset();
        state.ResumeTiming();
    }
}
BENCHMARK(sixThousandDeletions)->Unit(benchmark::kMillisecond)->UseRealTime();

void sixThousandDeletionsTakenBack(benchmark::State& state) {
    Desk desk(20'000);
    desk.removeFirst(6'000);
    bool isBack = false;
    for (auto _ : state) {
        isBack ? desk.fonts.redo() : desk.fonts.undo();
        isBack = !isBack;
    }
}
BENCHMARK(sixThousandDeletionsTakenBack)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
}  // namespace dravik
