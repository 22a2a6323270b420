// How much memory the engine takes at most: for finding and reading the characters of images, as a multiple
// of the image's own bytes, and for a font of 99,999 samples, in bytes a sample. Each case runs in a process
// of its own.
#include <malloc.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <random>
#include <string>

#include "contract/DrawnText.h"
#include "engine/embedded/EmbeddedTool.h"
#include "engine/font/FontFile.h"
#include "engine/font/FontVersions.h"
#include "engine/scene/Scene.h"
#include "tool/Samples.h"

namespace dravik {

using namespace engine;
using namespace tool;
namespace {

// A figure of /proc/self/status, in bytes.
double status(const std::string& name) {
    std::ifstream file("/proc/self/status");
    for (std::string line; std::getline(file, line);)
        if (line.starts_with(name + ":")) return 1024 * std::stod(line.substr(name.size() + 1));
    return 0;
}

// Memory at its most during `work`, beyond that before it, in a process of its own. `first` brings the
// program's own code into memory, which is no part of what an image takes.
double most(const std::function<void()>& first, const std::function<void()>& work) {
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0) throw std::runtime_error("no pipe");
    const pid_t child = fork();
    if (child == 0) {
        double result = -1;
        try {
            first();
            malloc_trim(0);  // what it left free would be used again, uncounted
            const double before = status("VmRSS");
            work();
            result = status("VmHWM") - before;
        } catch (const std::exception& failure) {
            std::fprintf(stderr, "%s\n", failure.what());
        }
        _exit(write(ends[1], &result, sizeof result) == sizeof result ? 0 : 1);
    }
    double result = -1;
    if (read(ends[0], &result, sizeof result) != sizeof result) result = -1;
    waitpid(child, nullptr, 0);
    close(ends[0]);
    close(ends[1]);
    return result;
}

GreyImage page(int width, int height, int scale) {
    const GreyImage print = drawn({"A1B2C3E4H5L6", "0123456789:="}, {.scale = scale, .dot = scale});
    GreyImage image(width, height, 220);
    for (int y = 0; y < std::min(height, print.height()); ++y)
        for (int x = 0; x < std::min(width, print.width()); ++x) image(x, y) = print(x, y);
    return image;
}

GreyImage noise(int width, int height) {
    GreyImage image(width, height);
    std::mt19937 random(1);
    for (int y = 0; y < height; ++y)
        for (std::uint8_t& pixel : image.row(y)) pixel = static_cast<std::uint8_t>(random());
    return image;
}

GreyImage checkerboard(int width, int height, int square) {
    GreyImage image(width, height);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            image(x, y) = (x / square + y / square) % 2 ? std::uint8_t{20} : std::uint8_t{230};
    return image;
}

// Scattered dots: nearly as many pieces as an image may have and still be looked at.
GreyImage scattered(int width, int height) {
    constexpr int kApart = 12, kDot = 4;
    GreyImage image(width, height, 220);
    std::mt19937 random(1);
    for (int y = 0; y + kApart < height; y += kApart)
        for (int x = 0; x + kApart < width; x += kApart) {
            const int left = x + static_cast<int>(random() % (kApart / 2)),
                      top = y + static_cast<int>(random() % (kApart / 2));
            for (int dy = 0; dy < kDot; ++dy)
                for (int dx = 0; dx < kDot; ++dx) image(left + dx, top + dy) = 20;
        }
    return image;
}

// As much small print as there is room for.
GreyImage fullPage(int width, int height) {
    const GreyImage print = drawn({"A1B2C3E4H5L6", "0123456789:="}, {.scale = 2, .dot = 2});
    GreyImage image(width, height);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) image(x, y) = print(x % print.width(), y % print.height());
    return image;
}

// The image itself is not counted, since it is there before.
void measureImages() {
    struct Case {
        const char* name;
        std::function<GreyImage(int, int)> draw;
    };
    const std::array cases = {
        Case{"two lines", [](int w, int h) { return page(w, h, std::max(3, w / 200)); }},
        Case{"noise", noise},
        Case{"checkerboard", [](int w, int h) { return checkerboard(w, h, 8); }},
        Case{"full page", fullPage},
        Case{"scattered dots", scattered},
    };
    std::printf("%-14s %12s %16s\n", "image", "pixels", "memory / image");
    for (const auto& [width, height] :
         {std::pair{640, 400}, {1280, 800}, {1000, 1010}, {1600, 1200}, {4000, 3000}, {8000, 8000}})
        for (const Case& one : cases) {
            const GreyImage image = one.draw(width, height);
            const double bytes = most(
                [] {
                    for (const GreyImage& small : {noise(120, 60), scattered(120, 120), fullPage(120, 60)})
                        findScene(std::make_shared<GreyImage>(small));
                },
                [&image] { findScene(std::shared_ptr<const GreyImage>(std::shared_ptr<void>(), &image)); });
            std::printf("%-14s %12.0f %16.2f\n", one.name, static_cast<double>(width) * height,
                        1 + bytes / (static_cast<double>(width) * height));
            std::fflush(stdout);
        }
}

void measureSamples() {
    const auto jobs = std::filesystem::temp_directory_path() / ("dravik-memory-" + std::to_string(getpid()));
    const JobFolder folder(jobs.string());
    const double loadAndSave =
        most([] {},
             [&folder] {
                 EmbeddedTool tool{folder};
                 tool.CreateFont("largest");
                 {
                     FontRecord font;
                     std::mt19937 random(5);
                     font.samples.resize(kMostSamples);
                     for (Sample& sample : font.samples) {
                         sample.serial = font.nextSerial++;
                         sample.code = static_cast<std::int32_t>('0' + sample.serial % 74);
                         for (float& input : sample.inputs)
                             input = static_cast<float>((sample.serial % 74 * 13 + random() % 20) % 70) / 70;
                     }
                     font.distances.assign(font.samples.size(), 0.25);
                     writeFont(font, folder.fontFile("largest"));
                 }
             });
    const double used = most([] {},
                             [&folder] {
                                 EmbeddedTool tool{folder};
                                 tool.LoadFont("largest");
                                 tool.SetTrainTimeout(2);
                                 tool.StartTraining();
                                 while (!tool.IsTrainingDone()) usleep(10'000);
                                 tool.SaveFont("largest");
                                 while (tool.isChecking()) usleep(10'000);
                                 const RecordTablePtr shown =
                                     tool.GetSampleData(kAllCommitted, kSampleFields);
                                 for (int i = 0; i < 100; ++i) tool.DeleteSample(kAllCommitted - 99'999);
                                 tool.GetSampleData(kAllCommitted, kSampleFields);
                             });
    std::printf("\n99,999 samples made and written: %.0f bytes a sample\n", loadAndSave / kMostSamples);
    std::printf(
        "99,999 samples loaded, trained, saved, checked, queried, deleted from: %.0f bytes a sample\n",
        used / kMostSamples);
    std::error_code ignored;
    std::filesystem::remove_all(jobs, ignored);
}

}  // namespace
}  // namespace dravik

int main() {
    try {
        dravik::measureImages();
        dravik::measureSamples();
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return 1;
    }
}
