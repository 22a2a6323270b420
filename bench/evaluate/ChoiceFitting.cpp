#include "evaluate/ChoiceFitting.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <thread>

#include "base/Text.h"
#include "engine/LabelledImages.h"
#include "engine/PngFile.h"
#include "engine/segmentation/PrintLooks.h"
#include "evaluate/NetworkFitting.h"
#include "evaluate/TrueBoxes.h"

namespace dravik {

using namespace engine;
namespace {

using Choice = FitGroup<kTextTraits>;

void judge(const char* name, const std::vector<Choice>& choices, const TextNetwork& network) {
    int right = 0, possible = 0;
    for (const Choice& choice : choices) {
        double most = -1e9;
        bool best = false, any = false;
        for (std::size_t r = 0; r < choice.rows.size(); ++r) {
            any = any || choice.right[r];
            if (const double value = network(choice.rows[r]); value > most) {
                most = value;
                best = choice.right[r];
            }
        }
        right += best;
        possible += any;
    }
    std::printf("%s: %d of %zu images right, %d possible\n", name, right, choices.size(), possible);
}

// Of what the network says with at least such odds, how much is right.
void calibrate(const std::vector<Choice>& choices, const TextNetwork& network) {
    for (double least = -1; least < 7; least += 1) {
        int all = 0, right = 0;
        for (const Choice& choice : choices)
            for (std::size_t r = 0; r < choice.rows.size(); ++r)
                if (const double value = network(choice.rows[r]); value >= least && value < least + 1) {
                    ++all;
                    right += choice.right[r];
                }
        std::printf("  log odds %.0f to %.0f: %.1f %% of %d right\n", least, least + 1,
                    all ? 100.0 * right / all : 0.0, all);
    }
}

}  // namespace

void fitChoice(const std::vector<std::string>& folders) {
    std::vector<LabelledImage> images;
    for (const std::string& folder : folders)
        for (LabelledImage& image : labelledImages(folder)) images.push_back(std::move(image));
    std::vector<Choice> choices(images.size());
    std::atomic<std::size_t> next{0};
    const auto work = [&] {
        for (std::size_t i = next++; i < images.size(); i = next++) {
            const std::size_t expected = characterCount(images[i].text);
            for (const Candidate& one : printCandidates(readPng(images[i].file), Search::All)) {
                choices[i].rows.push_back(one.traits);
                choices[i].right.push_back(one.characters == expected);
            }
        }
    };
    {
        std::jthread helper(work);
        work();
    }
    std::vector<Choice> learnt, other;
    for (std::size_t i = 0; i < choices.size(); ++i)
        if (!choices[i].rows.empty()) (i % 8 == 7 ? other : learnt).push_back(std::move(choices[i]));
    const TextNetwork network = fitted<TextNetwork>(learnt, {.rounds = 40, .decay = 1e-3, .competition = 1});
    for (const auto& [name, set] : {std::pair{"learnt from", &learnt}, std::pair{"kept apart ", &other}}) {
        judge((std::string(name) + ", fitted ").c_str(), *set, network);
        judge((std::string(name) + ", present").c_str(), *set, kTextLikeness);
    }
    calibrate(other, network);
    printNetwork(network);
}

}  // namespace dravik
