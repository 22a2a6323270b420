// How fast characters are found in large images, beside the least that a search for print must do: one global
// threshold and connected components, by OpenCV on one thread, in the same run on the same images.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <memory>
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>
#include <random>

#include "contract/DrawnText.h"
#include "engine/PngFile.h"
#include "engine/scene/Scene.h"

namespace dravik {

using namespace engine;
namespace {

// Two lines of print in a larger noisy image.
GreyImage part(int width, int height) {
    const int scale = std::max(3, width / 200);
    const GreyImage print = drawn({"A1B2C3E4H5L6", "0123456789:="}, {.scale = scale, .dot = scale});
    GreyImage image(width, height);
    std::mt19937 random(3);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const bool inside = x < print.width() && y < print.height();
            image(x, y) =
                static_cast<std::uint8_t>((inside ? print(x, y) : 220) + static_cast<int>(random() % 17) - 8);
        }
    return image;
}

cv::Mat matrixOf(const GreyImage& image) {
    cv::Mat matrix(image.height(), image.width(), CV_8UC1);
    for (int y = 0; y < image.height(); ++y)
        std::copy(image.row(y).begin(), image.row(y).end(), matrix.ptr(y));
    return matrix;
}

void findCharacters(benchmark::State& state, const GreyImage& image) {
    const auto shared = std::make_shared<GreyImage>(image);
    std::size_t found = 0;
    for (auto _ : state) found = findScene(shared).characters();
    state.counters["found"] = static_cast<double>(found);
}

void otsuAndComponents(benchmark::State& state, const GreyImage& image) {
    cv::setNumThreads(1);
    const cv::Mat grey = matrixOf(image);
    cv::Mat binary, labels, statistics, centroids;
    int count = 0;
    for (auto _ : state) {
        cv::threshold(grey, binary, 0, 255, cv::THRESH_BINARY_INV | cv::THRESH_OTSU);
        count = cv::connectedComponentsWithStats(binary, labels, statistics, centroids);
    }
    state.counters["found"] = count;
}

// Images that hold no print: whatever comes, the search ends soon.
GreyImage noise(int side) {
    GreyImage image(side, side);
    std::mt19937 random(3);
    for (int y = 0; y < side; ++y)
        for (std::uint8_t& pixel : image.row(y)) pixel = static_cast<std::uint8_t>(random() & 255);
    return image;
}

GreyImage stripes(int side, int across, int down) {
    GreyImage image(side, side);
    for (int y = 0; y < side; ++y)
        for (int x = 0; x < side; ++x) {
            const int cell = (across ? x / across : 0) + (down ? y / down : 0);
            image(x, y) = cell % 2 ? 220 : 30;
        }
    return image;
}

void addBoth(const std::string& name, const GreyImage& image) {
    benchmark::RegisterBenchmark(("findCharacters/" + name).c_str(), findCharacters, image)
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark(("otsuAndComponents/" + name).c_str(), otsuAndComponents, image)
        ->Unit(benchmark::kMillisecond);
}

}  // namespace
}  // namespace dravik

int main(int argc, char** argv) {
    using namespace dravik;
    benchmark::Initialize(&argc, argv);
    addBoth("line", readPng(std::string(DRAVIK_SOURCE_DIR) + "/data/parts/rendered_lines/hack_000.png"));
    addBoth("1 megapixel", part(1280, 800));
    addBoth("12 megapixels", part(4000, 3000));
    addBoth("12 megapixels of noise", noise(3464));
    addBoth("12 megapixels of stripes", stripes(3464, 9, 0));
    addBoth("12 megapixels of a checkerboard", stripes(3464, 9, 9));
    addBoth("64 megapixels of noise", noise(8000));
    benchmark::RunSpecifiedBenchmarks();
}
