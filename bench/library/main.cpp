// What reading through the library costs beside the engine itself, how many images a second one font reads on
// several threads, and whether these wait for each other. Costs are processor time, and waits are counted,
// which other programs hardly change; the pace is right only on a machine that has nothing else to do.
#include <sys/resource.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <dravik/dravik.hpp>
#include <thread>
#include <vector>

#include "engine/LabelledImages.h"
#include "engine/PngFile.h"
#include "engine/embedded/EmbeddedTool.h"
#include "support/TemporaryFolder.h"

namespace {

using Clock = std::chrono::steady_clock;
using dravik::engine::FontReader;
using dravik::engine::GreyImage;

const std::string kParts = std::string(DRAVIK_SOURCE_DIR) + "/data/parts/";
constexpr int kRounds = 101;
constexpr double kSeconds = 3;

dravik::Image viewOf(const GreyImage& image) {
    return {image.row(0).data(), image.width(), image.height()};
}

// Of all threads.
double processorSeconds() {
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

// How often a thread has given its processor away by itself, as it does to wait for a lock.
double waits() {
    rusage used{};
    getrusage(RUSAGE_SELF, &used);
    return static_cast<double>(used.ru_nvcsw);
}

double secondsOf(auto&& work) {
    const double begin = processorSeconds();
    work();
    return processorSeconds() - begin;
}

double median(std::vector<double> values) {
    std::nth_element(values.begin(), values.begin() + values.size() / 2, values.end());
    return values[values.size() / 2];
}

struct Pace {
    double images = 0;  // a second, by all threads together
    double cost = 0;    // seconds of a processor for an image
    double waits = 0;   // for an image
};

Pace pace(const dravik::Font& font, const std::vector<GreyImage>& images, unsigned count) {
    std::atomic<long> read = 0;
    std::atomic<bool> over = false;
    const auto begin = Clock::now();
    const double before = processorSeconds(), waitsBefore = waits();
    {
        std::vector<std::jthread> threads;
        for (unsigned thread = 0; thread < count; ++thread)
            threads.emplace_back([&, thread] {
                for (std::size_t i = thread; !over; ++i, ++read)
                    (void)font.read(viewOf(images[i % images.size()]));
            });
        std::this_thread::sleep_for(std::chrono::duration<double>(kSeconds));
        over = true;
    }
    const auto done = static_cast<double>(read);
    return {done / std::chrono::duration<double>(Clock::now() - begin).count(),
            (processorSeconds() - before) / done, (waits() - waitsBefore) / done};
}

}  // namespace

int main() {
    const dravik::TemporaryFolder folder;
    dravik::Learner learner("hack", folder.path());
    for (const auto& one : dravik::labelledImages(kParts + "rendered_charset"))
        if (one.font == "hack") learner.include(viewOf(dravik::readPng(one.file)), one.text);
    learner.train();
    learner.save();
    const std::string file = dravik::JobFolder(folder.path()).fontFile("hack");
    const FontReader engine(dravik::engine::readFont(file));
    const dravik::Font font(file);
    std::vector<GreyImage> images;
    for (const auto& one : dravik::labelledImages(kParts + "rendered_lines"))
        if (one.font == "hack") images.push_back(dravik::readPng(one.file));

    // In turns, each first every other time, so that both meet the same machine.
    std::vector<double> direct, through, ratios;
    const auto readDirectly = [&] {
        for (const GreyImage& image : images) (void)engine.read(image);
    };
    const auto readThrough = [&] {
        for (const GreyImage& image : images) (void)font.read(viewOf(image));
    };
    for (int round = 0; round < kRounds; ++round) {
        if (round % 2 == 0) direct.push_back(secondsOf(readDirectly));
        through.push_back(secondsOf(readThrough));
        if (round % 2 != 0) direct.push_back(secondsOf(readDirectly));
        ratios.push_back(through.back() / direct.back());
    }
    const auto each = [&](const std::vector<double>& all) {
        return 1000 * median(all) / static_cast<double>(images.size());
    };
    std::printf("engine   %.3f ms an image\nlibrary  %.3f ms an image, %+.1f %%\n", each(direct),
                each(through), 100 * (median(ratios) - 1));

    std::printf(
        "threads  images/s  of one thread  ms of processor an image  waits an image (%u processors)\n",
        std::thread::hardware_concurrency());
    double one = 0;
    for (const unsigned threads : {1u, 2u, 4u, 8u}) {
        const Pace reached = pace(font, images, threads);
        if (threads == 1) one = reached.images;
        std::printf("%7u  %8.1f  %13.2f  %24.3f  %.4f\n", threads, reached.images, reached.images / one,
                    1000 * reached.cost, reached.waits);
    }
}
