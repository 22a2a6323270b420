#include "evaluate/ChoiceFitting.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <thread>

#include "base/Text.h"
#include "engine/LabelledImages.h"
#include "engine/PngFile.h"
#include "engine/segmentation/CharacterShapes.h"
#include "engine/segmentation/Contenders.h"
#include "engine/segmentation/PrintLooks.h"
#include "evaluate/NetworkFitting.h"
#include "evaluate/TrueBoxes.h"

namespace dravik {

using namespace engine;
using namespace tool;
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

// Whether a found character is one true one, its sides no farther off than that part of the height of
// capitals.
bool isWhole(const Glyph& glyph, const Segmentation& found, const Truth& truth) {
    constexpr float kOff = 0.17f;
    const float off = kOff * found.lines[static_cast<std::size_t>(glyph.line)].capHeight;
    const Box& box = glyph.piece.box;
    return std::any_of(truth.characters.begin(), truth.characters.end(), [&](const Box& one) {
        const Box there = inFrame(one, found.frame, found.ink.left, found.ink.top, found.ink.scale);
        return std::abs(there.left - box.left) < off && std::abs(there.right - box.right) < off &&
               std::abs(there.top - box.top) < off && std::abs(there.bottom - box.bottom) < off;
    });
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

void fitShapes(const std::vector<std::string>& folders) {
    using Shapes = FitGroup<kShapeTraits>;
    // The characters of the contenders of each image, and which are one true character each.
    std::vector<Shapes> learnt, other;
    for (const std::string& folder : folders) {
        const auto known = truths(folder);
        const std::vector<std::pair<std::string, Truth>> images(known.begin(), known.end());
        std::vector<std::vector<Shapes>> seen(images.size());
        std::atomic<std::size_t> next{0};
        const auto work = [&] {
            for (std::size_t i = next++; i < images.size(); i = next++) {
                const auto& [name, truth] = images[i];
                const GreyImage image = readPng(folder + "/" + name);
                std::vector<Candidate> candidates = printCandidates(image);
                for (const Contender& number : contenders(candidates)) {
                    const Candidate& one = *number.best;
                    const Segmentation found = seenAgain(image, one.region, one.scale, one.look);
                    Shapes& shapes = seen[i].emplace_back();
                    shapes.rows = shapeTraits(found);
                    for (const Glyph& glyph : found.glyphs)
                        shapes.right.push_back(isWhole(glyph, found, truth));
                }
            }
        };
        {
            std::jthread helper(work);
            work();
        }
        for (std::size_t i = 0; i < seen.size(); ++i)
            for (Shapes& shapes : seen[i]) (i % 8 == 7 ? other : learnt).push_back(std::move(shapes));
    }
    const ShapeNetwork network = fitted<ShapeNetwork>(learnt, {.rounds = 10, .rate = 0.003});
    for (const auto& [name, set] : {std::pair{"learnt from", &learnt}, std::pair{"kept apart ", &other}}) {
        std::size_t all = 0, right = 0, present = 0;
        for (const Shapes& shapes : *set)
            for (std::size_t i = 0; i < shapes.rows.size(); ++i) {
                ++all;
                right += (network(shapes.rows[i]) > 0) == shapes.right[i];
                present += (kWholeCharacter(shapes.rows[i]) > 0) == shapes.right[i];
            }
        std::printf("%s: of %zu characters %zu judged rightly, by the present weights %zu\n", name, all,
                    right, present);
    }
    printNetwork(network);
}

}  // namespace dravik
