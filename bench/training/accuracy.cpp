// How many characters the classifier gets right when the place of every character is known: print rendered
// with FreeType, and handwritten digits. Prints tables.
//
//     dravik_training_accuracy [print|digits] [MNIST_FOLDER]      (both, of ../shared/data, when not given)
//
// A folder with the files of the whole of MNIST (`train-images-idx3-ubyte` and so on) is learnt from its
// first 10,000 and tested on its 10,000 to test with; of others each tenth is tested.
#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <map>
#include <random>
#include <string>

#include "Digits.h"
#include "RenderedFonts.h"

namespace dravik {

using namespace engine;
using namespace tool;
namespace {

struct Outcome {
    std::size_t right = 0, all = 0;
    double seconds = 0;
    TrainingFigures figures;

    double percent() const { return 100 * static_cast<double>(right) / static_cast<double>(all); }
    void add(const Outcome& other) {
        right += other.right;
        all += other.all;
        seconds += other.seconds;
        figures = other.figures;
    }
};

struct Learnt {
    Network network;
    double seconds = 0;
    TrainingFigures figures;
};

Learnt learnt(const LabelledInputs& data) {
    Learnt result;
    const TrainingSet set = trainingSet(data);
    const auto start = std::chrono::steady_clock::now();
    result.network = trained(
        set, 7, [](const TrainingFigures&) { return true; }, result.figures);
    result.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    return result;
}

using Confusions = std::map<std::pair<std::int32_t, std::int32_t>, int>;

Outcome tested(const Learnt& learnt, const LabelledInputs& test, Confusions* confusions = nullptr) {
    Outcome outcome{0, test.size(), learnt.seconds, learnt.figures};
    std::vector<float> outputs(learnt.network.codes.size());
    for (std::size_t i = 0; i < test.size(); ++i) {
        learnt.network.run(test.inputs[i], outputs);
        const auto most = std::max_element(outputs.begin(), outputs.end());
        const std::int32_t code = learnt.network.codes[static_cast<std::size_t>(most - outputs.begin())];
        if (code == test.codes[i])
            ++outcome.right;
        else if (confusions)
            ++(*confusions)[{test.codes[i], code}];
    }
    return outcome;
}

constexpr std::array<Tier, 3> kTiers = {Tier::Clean, Tier::Typical, Tier::Hard};

struct Fonts {
    const char* name;
    std::vector<std::string> files;
};

const std::vector<Fonts> kFonts = {
    {"looked at while features and training were chosen",
     {"truetype/dejavu/DejaVuSansMono.ttf", "truetype/liberation/LiberationSans-Regular.ttf",
      "truetype/liberation/LiberationMono-Bold.ttf", "truetype/liberation/LiberationSerif-Regular.ttf",
      "opentype/urw-base35/URWGothic-Demi.otf", "truetype/noto/NotoSansMono-Regular.ttf",
      "truetype/liberation/LiberationSansNarrow-Bold.ttf", "opentype/urw-base35/NimbusSans-Italic.otf"}},
    {"held back",
     {"truetype/ocr-a/OCRA.ttf", "opentype/ocr-b/OCRB.otf", "truetype/dejavu/DejaVuSansCondensed-Bold.ttf",
      "truetype/dejavu/DejaVuSerif.ttf", "truetype/liberation/LiberationMono-Regular.ttf",
      "opentype/urw-base35/NimbusMonoPS-Bold.otf", "opentype/urw-base35/NimbusRoman-Regular.otf",
      "opentype/urw-base35/P052-Bold.otf", "truetype/liberation/LiberationSans-Bold.ttf",
      "truetype/dejavu/DejaVuSans.ttf"}}};

// 12 images of each font are learnt (4 clean, 5 typical, 3 hard) and 15 others, 5 of each tier, tested.
void print(const Fonts& fonts) {
    std::printf("Fonts %s\n%-48s %7s %8s %7s %8s %7s %8s\n", fonts.name, "", "clean", "typical", "hard",
                "seconds", "cycles", "RMS");
    std::array<Outcome, 3> tiers;
    Outcome all;
    LabelledInputs everyFont, everyTest;
    Confusions confusions;
    for (const std::string& font : fonts.files) {
        const std::string file = "/usr/share/fonts/" + font;
        if (!std::filesystem::exists(file)) {
            std::printf("%-48s is not installed\n", font.c_str());
            continue;
        }
        LabelledInputs data;
        addRendered(data, file, Tier::Clean, 4, 1);
        addRendered(data, file, Tier::Typical, 5, 2);
        addRendered(data, file, Tier::Hard, 3, 3);
        const Learnt one = learnt(data);
        everyFont.add(data);
        std::printf("%-48s", font.c_str());
        for (std::size_t tier = 0; tier < 3; ++tier) {
            LabelledInputs test;
            addRendered(test, file, kTiers[tier], 5, 10 + static_cast<unsigned>(tier));
            const Outcome outcome = tested(one, test, &confusions);
            everyTest.add(test);
            tiers[tier].add(outcome);
            all.add(outcome);
            std::printf(" %6.2f%%", outcome.percent());
        }
        std::printf(" %8.3f %7d %8.4f\n", one.seconds, one.figures.cycles,
                    static_cast<double>(one.figures.rmsError));
    }
    std::printf("%-48s %6.2f%% %6.2f%% %6.2f%%   all %.2f %% of %zu\n", "each font by itself",
                tiers[0].percent(), tiers[1].percent(), tiers[2].percent(), all.percent(), all.all);
    std::vector<std::pair<int, std::string>> worst;
    for (const auto& [pair, count] : confusions)
        worst.emplace_back(count,
                           std::string{static_cast<char>(pair.first), '>', static_cast<char>(pair.second)});
    std::sort(worst.rbegin(), worst.rend());
    std::printf("most confused:");
    for (std::size_t i = 0; i < std::min<std::size_t>(worst.size(), 8); ++i)
        std::printf("  %s %d", worst[i].second.c_str(), worst[i].first);
    const Outcome mixed = tested(learnt(everyFont), everyTest);
    std::printf("\n%-48s %.2f %% of %zu  (%zu samples, %.2f s, %d cycles, RMS %.4f)\n\n",
                "all of them as one font", mixed.percent(), mixed.all, everyFont.size(), mixed.seconds,
                mixed.figures.cycles, static_cast<double>(mixed.figures.rmsError));
}

// Tested on each tenth after learning `count` of the others.
void tenFold(const char* name, const LabelledInputs& data, std::size_t count) {
    constexpr std::size_t folds = 10;
    std::vector<std::size_t> order(data.size());
    for (std::size_t i = 0; i < order.size(); ++i) order[i] = i;
    std::mt19937 random(4);
    std::shuffle(order.begin(), order.end(), random);
    Outcome all;
    std::size_t learntOf = 0;
    for (std::size_t fold = 0; fold < folds; ++fold) {
        LabelledInputs train, test;
        for (std::size_t i = 0; i < data.size(); ++i) {
            const bool tests = i % folds == fold;
            if (tests || train.size() < count)
                (tests ? test : train).add(data.inputs[order[i]], data.codes[order[i]]);
        }
        learntOf = train.size();
        all.add(tested(learnt(train), test));
    }
    std::printf("%-12s %6zu learnt %6zu tested %6.2f %%  %7.3f s each\n", name, learntOf, all.all,
                all.percent(), all.seconds / static_cast<double>(folds));
}

void digits(const std::string& shared, const std::string& folder) {
    const std::string from = folder.empty() ? shared + "mnist2000" : folder;
    const LabelledInputs mnist = mnistDigits(from);
    if (const LabelledInputs test = mnistDigits(from, "t10k-"); test.size() > 0) {
        const LabelledInputs train = mnistDigits(from, "train-", 10'000);
        const Outcome outcome = tested(learnt(train), test);
        std::printf("MNIST        %6zu learnt %6zu tested %6.2f %%  %7.3f s, %d cycles\n", train.size(),
                    test.size(), outcome.percent(), outcome.seconds, outcome.figures.cycles);
    } else if (mnist.size() > 0) {
        for (const std::size_t count : {225u, 450u, 900u, 1800u}) tenFold("MNIST", mnist, count);
    } else {
        std::printf("MNIST is not there\n");
    }
    const LabelledInputs optical = opticalDigits(shared + "optdigits/digits.csv.gz");
    if (optical.size() > 0)
        tenFold("optdigits", optical, optical.size());
    else
        std::printf("optdigits is not there\n");
}

}  // namespace
}  // namespace dravik

int main(int argc, char** argv) {
    try {
        const std::string what = argc > 1 ? argv[1] : "";
        if (what != "digits")
            for (const dravik::Fonts& fonts : dravik::kFonts) dravik::print(fonts);
        if (what != "print")
            dravik::digits(std::string(DRAVIK_SOURCE_DIR) + "/../shared/data/", argc > 2 ? argv[2] : "");
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return 1;
    }
}
