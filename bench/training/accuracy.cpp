// How many characters the classifier gets right when every character's place is known: print rendered with
// FreeType, and handwritten digits. Prints a table.
//
//     training_accuracy [rendered|mnist|optdigits]...      (all when not given)
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <map>
#include <sstream>

#include "RenderedText.h"
#include "engine/Features.h"
#include "engine/Network.h"

namespace dravik {
namespace {

struct Labelled {
    std::vector<SampleInputs> inputs;
    std::vector<std::int32_t> codes;
    void add(const SampleInputs& sample, std::int32_t code) {
        inputs.push_back(sample);
        codes.push_back(code);
    }
};

TrainingSet setOf(const Labelled& data) {
    TrainingSet set;
    std::map<std::int32_t, std::uint32_t> places;
    for (const std::int32_t code : data.codes) places.emplace(code, 0u);
    for (auto& [code, place] : places) {
        place = static_cast<std::uint32_t>(set.codes.size());
        set.codes.push_back(code);
    }
    for (std::size_t i = 0; i < data.codes.size(); ++i) {
        set.inputs.insert(set.inputs.end(), data.inputs[i].begin(), data.inputs[i].end());
        set.classes.push_back(places[data.codes[i]]);
    }
    return set;
}

double env(const char* name, double usual) {
    const char* text = std::getenv(name);
    return text ? std::atof(text) : usual;
}

struct Outcome {
    int right = 0, all = 0;
    double seconds = 0, rms = 0;
    int cycles = 0;
};

std::map<std::pair<int, int>, int> confusions;

Outcome outcome(const Labelled& train, const Labelled& test) {
    const TrainingSet set = setOf(train);
    TrainingPlan plan = TrainingPlan::forSamples(set.size());
    plan.hidden = (unsigned)env("HIDDEN", plan.hidden);
    plan.batch = (unsigned)env("BATCH", plan.batch);
    plan.cycles = (int)env("CYCLES", plan.cycles);
    plan.rate = (float)env("RATE", plan.rate);
    plan.noise = (float)env("NOISE", plan.noise);
    plan.decay = (float)env("DECAY", plan.decay);
    const int nets = (int)env("NETS", 1);
    Outcome result;
    std::vector<Network> networks;
    for (int n = 0; n < nets; ++n) {
        TrainingFigures figures;
        const auto start = std::chrono::steady_clock::now();
        networks.push_back(trained(
            set, 7 + n, plan, [](const TrainingFigures&) { return true; }, figures));
        result.seconds += std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        result.rms = figures.rmsError;
        result.cycles = figures.cycles;
    }
    std::vector<float> outputs(set.codes.size()), sums;
    for (std::size_t i = 0; i < test.codes.size(); ++i) {
        sums.assign(outputs.size(), 0);
        for (auto& net : networks) {
            net.run(test.inputs[i], outputs);
            for (std::size_t k = 0; k < sums.size(); ++k) sums[k] += std::log(outputs[k] + 1e-9f);
        }
        const auto k = std::max_element(sums.begin(), sums.end()) - sums.begin();
        const bool right = set.codes[(std::size_t)k] == test.codes[i];
        result.right += right;
        if (!right) ++confusions[{test.codes[i], set.codes[(std::size_t)k]}];
        ++result.all;
    }
    return result;
}

const std::vector<std::string> kFonts = {"truetype/dejavu/DejaVuSansMono.ttf",
                                         "truetype/liberation/LiberationSans-Regular.ttf",
                                         "truetype/liberation/LiberationMono-Bold.ttf",
                                         "truetype/liberation/LiberationSerif-Regular.ttf",
                                         "opentype/urw-base35/URWGothic-Demi.otf",
                                         "truetype/noto/NotoSansMono-Regular.ttf",
                                         "truetype/liberation/LiberationSansNarrow-Bold.ttf",
                                         "opentype/urw-base35/NimbusSans-Italic.otf"};

void addLines(Labelled& to, const std::string& font, Tier tier, int images, unsigned seed) {
    std::mt19937 random(seed);
    for (int image = 0; image < images; ++image) {
        std::string text = kOverviewCharacters;
        for (std::size_t i = text.size(); i > 1; --i) std::swap(text[i - 1], text[random() % i]);
        for (const std::string& part : {text.substr(0, 37), text.substr(37)}) {
            const RenderedLine line = renderedLine("/usr/share/fonts/" + font, part, tier, random);
            for (std::size_t i = 0; i < line.text.size(); ++i)
                to.add(glyphInputs(line.found, line.found.glyphs[i], line.found.lines[0]), line.text[i]);
        }
    }
}

void rendered() {
    Labelled mixedTrain, mixedTest;
    int right = 0, all = 0;
    std::map<Tier, Outcome> tiers;
    confusions.clear();
    for (const std::string& font : kFonts) {
        Labelled train;
        addLines(train, font, Tier::Clean, 4, 1);
        addLines(train, font, Tier::Typical, 5, 2);
        addLines(train, font, Tier::Hard, 3, 3);
        const char* names[]{"clean", "typical", "hard"};
        Labelled alltest;
        std::printf("%-44s", font.c_str());
        for (const Tier tier : {Tier::Clean, Tier::Typical, Tier::Hard}) {
            Labelled test;
            addLines(test, font, tier, 5, 10 + static_cast<unsigned>(tier));
            const Outcome o = outcome(train, test);
            std::printf(" %s %.2f", names[(int)tier], 100.0 * o.right / o.all);
            right += o.right;
            all += o.all;
            tiers[tier].right += o.right;
            tiers[tier].all += o.all;
            if (tier == Tier::Hard)
                std::printf("  %zu samples %d cycles %.3f s RMS %.4f", train.codes.size(), o.cycles,
                            o.seconds, o.rms);
            for (std::size_t i = 0; i < test.codes.size(); ++i) mixedTest.add(test.inputs[i], test.codes[i]);
        }
        std::printf("\n");
        for (std::size_t i = 0; i < train.codes.size(); ++i) mixedTrain.add(train.inputs[i], train.codes[i]);
    }
    std::printf("each font by itself: %.2f %% of %d; clean %.2f typical %.2f hard %.2f\n",
                100.0 * right / all, all, 100.0 * tiers[Tier::Clean].right / tiers[Tier::Clean].all,
                100.0 * tiers[Tier::Typical].right / tiers[Tier::Typical].all,
                100.0 * tiers[Tier::Hard].right / tiers[Tier::Hard].all);
    std::vector<std::pair<int, std::string>> worst;
    for (auto& [p, n] : confusions)
        worst.push_back({n, std::string() + (char)p.first + ">" + (char)p.second});
    std::sort(worst.rbegin(), worst.rend());
    for (std::size_t i = 0; i < std::min<std::size_t>(25, worst.size()); ++i)
        std::printf(" %s:%d", worst[i].second.c_str(), worst[i].first);
    std::printf("\n");
    if (env("MIXED", 1) > 0) {
        const Outcome o = outcome(mixedTrain, mixedTest);
        std::printf("all fonts as one: %.2f %% of %d (%zu samples, %d cycles, %.2f s, RMS %.4f)\n",
                    100.0 * o.right / o.all, o.all, mixedTrain.codes.size(), o.cycles, o.seconds, o.rms);
    }
}

SampleInputs imageInputs(InkImage ink) {
    Segmentation found;
    found.ink = std::move(ink);
    Glyph glyph;
    for (int y = 0; y < found.ink.height; ++y)
        for (int x = 0; x < found.ink.width; ++x) {
            if (found.ink.at(x, y) < 128) continue;
            glyph.piece.runs.push_back({x, x + 1, y});
            ++glyph.piece.area;
        }
    glyph.piece.measure(found.frame);
    return glyphInputs(found, glyph, {glyph.piece.box.bottom, glyph.piece.box.height(), true});
}

Labelled mnist(const std::string& folder) {
    std::ifstream images(folder + "/images-idx3-ubyte", std::ios::binary),
        labels(folder + "/labels-idx1-ubyte", std::ios::binary);
    images.ignore(16);
    labels.ignore(8);
    Labelled data;
    for (char label; labels.get(label);) {
        InkImage ink{28, 28, 1, std::vector<std::uint8_t>(784)};
        images.read(reinterpret_cast<char*>(ink.ink.data()), 784);
        data.add(imageInputs(std::move(ink)), '0' + label);
    }
    return data;
}

Labelled optdigits(const std::string& file) {
    std::ifstream in(file);
    Labelled data;
    for (std::string row; std::getline(in, row);) {
        std::replace(row.begin(), row.end(), ',', ' ');
        std::istringstream fields(row);
        std::vector<int> v;
        for (double x; fields >> x;) v.push_back((int)x);
        if (v.size() < 65) continue;
        InkImage ink{40, 40, 1, std::vector<std::uint8_t>(1600)};
        for (int y = 0; y < 40; ++y)
            for (int x = 0; x < 40; ++x) {
                const float u = ((float)x + 0.5f) / 4 - 1.5f, w = ((float)y + 0.5f) / 4 - 1.5f;
                const int c = (int)std::floor(u), r = (int)std::floor(w);
                const auto at = [&v](int i, int j) {
                    return i < 0 || j < 0 || i > 7 || j > 7 ? 0.0f : (float)v[(std::size_t)(j * 8 + i)];
                };
                const float a = u - (float)c, b = w - (float)r;
                const float value = (at(c, r) * (1 - a) + at(c + 1, r) * a) * (1 - b) +
                                    (at(c, r + 1) * (1 - a) + at(c + 1, r + 1) * a) * b;
                ink.ink[(std::size_t)(y * 40 + x)] = (std::uint8_t)std::min(255.0f, value * 16);
            }
        data.add(imageInputs(std::move(ink)), '0' + v[64]);
    }
    return data;
}

void kFold(const char* name, const Labelled& data, int folds) {
    int right = 0;
    Outcome o;
    std::vector<std::size_t> order(data.codes.size());
    for (std::size_t i = 0; i < order.size(); ++i) order[i] = i;
    std::mt19937 random(4);
    std::shuffle(order.begin(), order.end(), random);
    for (int fold = 0; fold < folds; ++fold) {
        Labelled train, test;
        for (std::size_t i = 0; i < data.codes.size(); ++i)
            ((int)(i % (std::size_t)folds) == fold ? test : train)
                .add(data.inputs[order[i]], data.codes[order[i]]);
        o = outcome(train, test);
        right += o.right;
    }
    std::printf("%s: %.2f %% of %zu, %d fold (%d cycles, %.2f s, RMS %.4f)\n", name,
                100.0 * right / (double)data.codes.size(), data.codes.size(), folds, o.cycles, o.seconds,
                o.rms);
}

}  // namespace
}  // namespace dravik

int main(int argc, char** argv) {
    using namespace dravik;
    const std::string shared = std::string(DRAVIK_SOURCE_DIR) + "/../shared/data/";
    const std::string what = argc > 1 ? argv[1] : "all";
    if (what == "all" || what == "rendered") rendered();
    if (what == "all" || what == "mnist" || what == "digits") kFold("MNIST", mnist(shared + "mnist2000"), 10);
    if (what == "all" || what == "optdigits" || what == "digits")
        kFold("optdigits", optdigits("/tmp/optdigits.csv"), 10);
}
