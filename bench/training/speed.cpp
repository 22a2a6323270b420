// How fast training is, beside FANN and OpenCV and beside the product of matrices of the same size. Prints
// tables; every figure is the median of several runs that alternate with those that it is compared with.
//
//     dravik_training_speed [ROUNDS]      (7 when not given)
#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <exception>
#include <filesystem>
#include <functional>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "Peers.h"
#include "RenderedFonts.h"
#include "base/JobFolder.h"
#include "engine/classifier/Perceptron.h"
#include "engine/embedded/EmbeddedTool.h"
#include "engine/font/FontFile.h"
#include "engine/font/FontVersions.h"

namespace dravik {

using namespace engine;
using namespace tool;
namespace {

using Clock = std::chrono::steady_clock;

double since(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

// Processor time, all of it of one thread: other work on the machine counts less.
class Worked {
  public:
    double seconds() const { return static_cast<double>(std::clock() - start_) / CLOCKS_PER_SEC; }

  private:
    std::clock_t start_ = std::clock();
};

double median(std::vector<double> values) {
    if (values.empty()) return 0;
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

constexpr std::size_t kBatch = 60;

const std::string kFonts = "/usr/share/fonts/truetype/";
const std::vector<std::string> kFiles = {
    kFonts + "dejavu/DejaVuSans.ttf", kFonts + "liberation/LiberationSans-Bold.ttf",
    kFonts + "liberation/LiberationSerif-Regular.ttf", kFonts + "liberation/LiberationMono-Regular.ttf",
    kFonts + "dejavu/DejaVuSerif-Bold.ttf"};

TrainingSet rendered(std::size_t fonts, int images) {
    LabelledInputs data;
    for (std::size_t font = 0; font < fonts; ++font)
        for (const Tier tier : {Tier::Clean, Tier::Typical})
            addRendered(data, kFiles[font], tier, images / 2, 5);
    return trainingSet(data);
}

PeerData peerData(const TrainingSet& set, std::size_t width) {
    PeerData data{width, set.codes.size(), {}, set.classes};
    for (std::size_t i = 0; i < set.size(); ++i)
        for (std::size_t k = 0; k < width; ++k) data.inputs.push_back(set.inputs[i * kInputCount + k]);
    return data;
}

// Our own network of just that shape, taught in the way of a run.
class OwnPeer {
  public:
    OwnPeer(const PeerData& set, std::size_t hidden, const MatrixKernels& kernels)
        : set_(set),
          perceptron_({set.width, hidden, set.classCount}, chance_, kernels),
          inputs_(set.classes.size() * perceptron_.inputStride()),
          noise_(perceptron_.inputStride() + 16384) {
        for (std::size_t i = 0; i < set.classes.size(); ++i)
            for (std::size_t k = 0; k < set.width; ++k)
                inputs_.data()[i * perceptron_.inputStride() + k] = 3 * set.inputs[i * set.width + k] - 1;
        for (std::size_t i = 0; i < noise_.size(); ++i) noise_.data()[i] = chance_.normal();
    }

    void cycle() {
        const std::size_t batch = kBatch;
        std::vector<const float*> rows, noises;
        std::vector<std::uint32_t> classes;
        for (std::size_t first = 0; first < set_.classes.size(); first += batch) {
            rows.clear();
            noises.clear();
            classes.clear();
            for (std::size_t i = first; i < std::min(set_.classes.size(), first + batch); ++i) {
                const std::size_t one = chance_.below(static_cast<std::uint32_t>(set_.classes.size()));
                rows.push_back(inputs_.data() + one * perceptron_.inputStride());
                noises.push_back(noise_.data() + chance_.below(16384));
                classes.push_back(set_.classes[one]);
            }
            perceptron_.learn({rows, classes, noises, 0.4f, 0.003f, 1e-4f});
        }
    }

  private:
    const PeerData& set_;
    Chance chance_{1};
    Perceptron perceptron_;
    AlignedFloats inputs_, noise_;
};

double operationsPerSample(const PerceptronShape& shape) {
    return 2 * static_cast<double>(2 * shape.inputs * shape.hidden + 3 * shape.hidden * shape.outputs);
}

// The products of one batch's way through a network, over and over; billions of operations a second.
double productGigaflops(const MatrixKernels& kernels, const PerceptronShape& shape, std::size_t rows) {
    AlignedFloats a(256 * 256), b(256 * 256), c(256 * 256);
    for (std::size_t i = 0; i < a.size(); ++i) a.data()[i] = b.data()[i] = static_cast<float>(i % 7) * 0.1f;
    const std::size_t hidden = padded(shape.hidden), outputs = padded(shape.outputs);
    constexpr int times = 2000;
    const Worked worked;
    for (int i = 0; i < times; ++i) {
        kernels.multiply({a.data(), 80, 1, b.data(), hidden, c.data(), hidden, rows, hidden, shape.inputs});
        kernels.multiply(
            {a.data(), 80, 1, b.data(), outputs, c.data(), outputs, rows, outputs, shape.hidden});
        kernels.multiply({a.data(), 80, 1, b.data(), hidden, c.data(), hidden, rows, hidden, shape.outputs});
        kernels.multiply({a.data(), 1, 80, b.data(), hidden, c.data(), hidden, shape.inputs, hidden, rows});
        kernels.multiply(
            {a.data(), 1, 80, b.data(), outputs, c.data(), outputs, shape.hidden, outputs, rows});
    }
    return 1e-9 * times * static_cast<double>(rows) * operationsPerSample(shape) / worked.seconds();
}

void throughput(const TrainingSet& set, int rounds) {
    const PerceptronShape shape{kFeatureCount, 60, set.codes.size()};
    const PeerData data = peerData(set, kFeatureCount);
    const double samples = static_cast<double>(data.classes.size());
    std::printf("Samples x cycles a second, %zu-%zu-%zu, %zu samples, one thread\n\n", shape.inputs,
                shape.hidden, shape.outputs, data.classes.size());
    std::vector<OwnPeer> own;
    own.reserve(3);
    for (const MatrixKernels* kernels : availableKernels()) own.emplace_back(data, shape.hidden, *kernels);
    FannPeer fann(data, shape.hidden);
    std::vector<std::vector<double>> ours(own.size());
    std::vector<std::vector<double>> products(own.size());
    std::vector<double> fanns, openCvs, eigens;
    for (int round = 0; round < rounds; ++round) {
        for (std::size_t k = 0; k < own.size(); ++k) {
            products[k].push_back(productGigaflops(*availableKernels()[k], shape, kBatch));
            const Worked worked;
            for (int i = 0; i < 10; ++i) own[k].cycle();
            ours[k].push_back(10 * samples / worked.seconds());
        }
        const Worked worked;
        fann.cycle();
        fanns.push_back(samples / worked.seconds());
        eigens.push_back(eigenGigaflops(kBatch, 64, 64));
        // The difference of two lengths, without what comes before and after the cycles.
        openCvs.push_back(10 * samples /
                          (openCvSeconds(data, shape.hidden, 15) - openCvSeconds(data, shape.hidden, 5)));
    }
    const double fannSpeed = median(fanns), openCvSpeed = median(openCvs);
    std::printf("%-22s %10s %8s %9s %8s %9s\n", "", "a second", "x FANN", "x OpenCV", "GFLOPS", "of peak");
    std::printf("%-22s %10.0f %8.2f %9.2f %8.1f\n", "FANN RPROP", fannSpeed, 1.0, fannSpeed / openCvSpeed,
                1e-9 * fannSpeed * operationsPerSample(shape));
    std::printf("%-22s %10.0f %8.2f %9.2f %8.1f\n", "OpenCV ANN_MLP RPROP", openCvSpeed,
                openCvSpeed / fannSpeed, 1.0, 1e-9 * openCvSpeed * operationsPerSample(shape));
    for (std::size_t k = 0; k < own.size(); ++k) {
        const MatrixKernels& kernels = *availableKernels()[k];
        const double peak = median(products[k]);
        const double speed = median(ours[k]), flops = 1e-9 * speed * operationsPerSample(shape);
        std::printf("%-22s %10.0f %8.1f %9.2f %8.1f %8.0f%%  (the products alone %.1f)\n",
                    (std::string("own, ") + kernels.name).c_str(), speed, speed / fannSpeed,
                    speed / openCvSpeed, flops, 100 * flops / peak, peak);
    }
    std::printf("Eigen's product of that size, compiled for this machine: %.1f GFLOPS\n\n", median(eigens));
}

// Processor time until the error that a run itself reports, over the samples as it sees them, is that small.
struct Reached {
    double loose = 0, close = 0, all = 0;  // seconds to 0.05, to 0.02, to the run's end
    int cycles = 0;
    double error = 0;
};

Reached ownTimes(const TrainingSet& set) {
    Reached reached;
    TrainingFigures figures;
    const Worked worked;
    const auto look = [&](const TrainingFigures& f) {
        if (f.cycles > 0 && f.rmsError <= 0.05f && reached.loose == 0) reached.loose = worked.seconds();
        if (f.cycles > 0 && f.rmsError <= 0.02f && reached.close == 0) reached.close = worked.seconds();
        return true;
    };
    trained(set, 1, look, figures);
    look(figures);
    reached.all = worked.seconds();
    reached.cycles = figures.cycles;
    reached.error = static_cast<double>(figures.rmsError);
    return reached;
}

Reached fannTimes(const TrainingSet& set, double limit) {
    Reached reached;
    const PeerData data = peerData(set, kInputCount);
    FannPeer fann(data, TrainingPlan().hidden);
    const Worked worked;
    while (reached.close == 0 && worked.seconds() < limit) {
        reached.error = fann.cycle();
        ++reached.cycles;
        if (reached.error <= 0.05 && reached.loose == 0) reached.loose = worked.seconds();
        if (reached.error <= 0.02) reached.close = worked.seconds();
    }
    reached.all = worked.seconds();
    return reached;
}

std::string seconds(double value) {
    char text[32] = "-";
    if (value > 0) std::snprintf(text, sizeof text, "%.4f", value);
    return text;
}

// Medians; a dash stands for what was not reached.
void timesToError(const char* name, const TrainingSet& set, int rounds) {
    std::vector<double> loose, close, all, fannLoose, fannClose;
    Reached own, fann;
    for (int round = 0; round < rounds; ++round) {
        own = ownTimes(set);
        loose.push_back(own.loose);
        close.push_back(own.close);
        all.push_back(own.all);
        if (round >= 2) continue;
        fann = fannTimes(set, 20);
        fannLoose.push_back(fann.loose);
        fannClose.push_back(fann.close);
    }
    const auto ratio = [](double mine, double other) { return other > 0 ? mine / other : 0; };
    const double toLoose = median(loose), toClose = median(close);
    std::printf("%-18s %7zu %9s %9s %9.3f %7d %8.4f | %9s %9s %7d %8.4f | %8s %8s\n", name, set.size(),
                seconds(toLoose).c_str(), seconds(toClose).c_str(), median(all), own.cycles, own.error,
                seconds(median(fannLoose)).c_str(), seconds(median(fannClose)).c_str(), fann.cycles,
                fann.error, seconds(ratio(toLoose, median(fannLoose))).c_str(),
                seconds(ratio(toClose, median(fannClose))).c_str());
}

// Samples of 74 characters that overlap a good deal.
TrainingSet noisy(std::size_t count) {
    std::mt19937 random(5);
    TrainingSet set;
    for (std::int32_t c = 0; c < 74; ++c) set.codes.push_back('0' + c);
    for (std::size_t i = 0; i < count; ++i) {
        for (std::size_t k = 0; k < kInputCount; ++k)
            set.inputs.push_back(
                (static_cast<float>((k * 7 + i % 74 * 13) % 50) + static_cast<float>(random() % 20)) / 70);
        set.classes.push_back(static_cast<std::uint32_t>(i % 74));
    }
    return set;
}

// Stopping a run of the largest font at instants all over its beginning.
void stops(int rounds) {
    const auto folder = std::filesystem::temp_directory_path() /
                        ("dravik-training-" + std::to_string(Clock::now().time_since_epoch().count()));
    FontRecord font;
    const TrainingSet set = noisy(99'999);
    for (std::size_t i = 0; i < set.size(); ++i) {
        Sample sample{i + 1, set.codes[set.classes[i]], {}};
        std::copy_n(&set.inputs[i * kInputCount], kInputCount, sample.inputs.begin());
        font.samples.push_back(sample);
    }
    font.distances.assign(font.samples.size(), 0.25);
    font.nextSerial = font.samples.size() + 1;
    std::filesystem::create_directories(folder / "Fonts");
    writeFont(font, (folder / "Fonts" / "largest.nnd").string());
    std::vector<double> begins, ends;
    {
        EmbeddedTool tool{JobFolder(folder.string())};
        tool.LoadFont("largest");
        for (int round = 0; round < 10 * rounds; ++round) {
            const auto begin = Clock::now();
            tool.StartTraining();
            begins.push_back(since(begin));
            std::this_thread::sleep_for(std::chrono::milliseconds(round * 3));
            const auto end = Clock::now();
            tool.StopTraining();
            ends.push_back(since(end));
        }
    }
    std::filesystem::remove_all(folder);
    std::printf(
        "99,999 samples: a run starts in %.1f ms, longest %.1f ms; is stopped in %.2f ms, longest %.1f ms "
        "(%zu runs)\n",
        1e3 * median(begins), 1e3 * *std::max_element(begins.begin(), begins.end()), 1e3 * median(ends),
        1e3 * *std::max_element(ends.begin(), ends.end()), ends.size());
}

void measure(int rounds) {
    const TrainingSet font = rendered(1, 10), several = rendered(5, 20);
    throughput(several, rounds);
    std::printf(
        "Seconds until the RMS error of a cycle is small, %zu-%u-%zu; FANN RPROP on the same samples\n\n",
        kInputCount, TrainingPlan().hidden, font.codes.size());
    std::printf("%-18s %7s %9s %9s %9s %7s %8s | %9s %9s %7s %8s | %8s %8s\n", "", "samples", "to 0.05",
                "to 0.02", "whole run", "cycles", "RMS", "FANN 0.05", "FANN 0.02", "cycles", "RMS", "ratio",
                "ratio");
    timesToError("a font", font, rounds);
    timesToError("five fonts as one", several, rounds);
    timesToError("noise, 740", noisy(740), rounds);
    timesToError("noise, 7400", noisy(7400), rounds);
    std::printf("\n");
    stops(rounds);
}

}  // namespace
}  // namespace dravik

int main(int argc, char** argv) {
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    try {
        dravik::measure(argc > 1 ? std::max(1, std::atoi(argv[1])) : 7);
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return 1;
    }
}
