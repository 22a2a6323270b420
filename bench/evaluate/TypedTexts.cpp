#include "evaluate/TypedTexts.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "base/Text.h"
#include "engine/LabelledImages.h"
#include "engine/PngFile.h"
#include "engine/scene/GivenCharacters.h"
#include "engine/scene/GivenText.h"
#include "evaluate/TrueBoxes.h"

namespace dravik {

using namespace engine;
namespace {

// A character's middle may be so far from the true one, in heights of capitals, beside half of its width.
constexpr float kOff = 0.2f;

enum class Taken { Freely, WithHelp, Not };

struct Included {
    Taken how = Taken::Not;
    std::vector<CharacterBox> boxes;
    double seconds = 0;  // of the help
};

Included include(const Scene& found, const std::vector<std::string>& text) {
    if (found.characters() == text.size()) return {Taken::Freely, characterBoxes(found)};
    const auto start = std::clock();
    const std::optional<Scene> helped = sceneWithText(found, text);
    const double seconds = static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
    return helped ? Included{Taken::WithHelp, characterBoxes(*helped), seconds}
                  : Included{Taken::Not, {}, seconds};
}

// How many characters are not where the text says.
std::size_t misplaced(std::span<const CharacterBox> boxes, const Truth& truth) {
    if (boxes.size() != truth.characters.size()) return 0;
    std::size_t count = 0;
    for (std::size_t i = 0; i < boxes.size(); ++i) {
        const Box& right = truth.characters[i];
        const RotatedBox& own = boxes[i].place;
        const bool isThere =
            std::abs(own.centreX - right.middleX()) < 0.5f * right.width() + kOff * truth.capHeight &&
            std::abs(own.centreY - right.middleY()) < 0.5f * right.height() + kOff * truth.capHeight &&
            own.width < right.width() + 2.5f * kOff * truth.capHeight &&
            own.width > right.width() - 2.5f * kOff * truth.capHeight;
        count += isThere ? 0 : 1;
    }
    return count;
}

struct Counts {
    const char* name;
    int freely = 0, helped = 0, refused = 0, all = 0;

    void add(Taken how) {
        ++all;
        freely += how == Taken::Freely ? 1 : 0;
        helped += how == Taken::WithHelp ? 1 : 0;
        refused += how == Taken::Not ? 1 : 0;
    }
    void print() const {
        std::printf("  %-28s %5d images: freely %5d, with the text's help %4d, refused %5d (%.2f %%)\n", name,
                    all, freely, helped, refused, 100.0 * refused / std::max(1, all));
    }
};

}  // namespace

void includeFolder(const std::string& folder, bool verbose) {
    const std::map<std::string, Truth> truth = truths(folder);
    Counts right{"right text"};
    std::vector<Counts> wrong{{"one missing in the middle"},
                              {"one more at the end"},
                              {"one more in the middle"},
                              {"one typed twice"},
                              {"one other"}};
    std::size_t characters = 0, wrongPlaces = 0, wronglyLabelled = 0, helpedWrongly = 0;
    double seconds = 0, longest = 0;
    int attempts = 0;
    for (const LabelledImage& image : labelledImages(folder)) {
        const auto pixels = std::make_shared<GreyImage>(readPng(image.file));
        const Scene found = findScene(pixels);
        const std::vector<std::string> text = dravik::characters(image.text);
        const auto tell = [&](const char* what, const std::vector<std::string>& typed) {
            if (!verbose) return;
            std::string all;
            for (const std::string& one : typed) all += one;
            std::printf("    %s: %s, %zu found  %s\n", image.name.c_str(), what, found.characters(),
                        all.c_str());
        };
        const Included taken = include(found, text);
        right.add(taken.how);
        if (taken.how == Taken::Not) tell("refused", text);
        if (const auto known = truth.find(image.name); known != truth.end() && taken.how != Taken::Not) {
            characters += text.size();
            const std::size_t off = misplaced(taken.boxes, known->second);
            wrongPlaces += off;
            wronglyLabelled += off > 0 ? 1 : 0;
            helpedWrongly += off > 0 && taken.how == Taken::WithHelp ? 1 : 0;
            if (off > 0)
                tell(taken.how == Taken::Freely ? "wrong places freely" : "wrong places with help", text);
        }
        if (taken.how != Taken::Freely) {
            ++attempts;
            seconds += taken.seconds;
            longest = std::max(longest, taken.seconds);
        }
        if (text.size() < 2) continue;
        const auto middle = static_cast<std::ptrdiff_t>(text.size() / 2);
        const std::string other = text[0] == "8" ? "3" : "8";
        std::vector<std::vector<std::string>> typed(wrong.size(), text);
        typed[0].erase(typed[0].begin() + middle);
        typed[1].push_back(text[text.size() / 3]);
        typed[2].insert(typed[2].begin() + middle, other);
        typed[3].insert(typed[3].begin() + middle, text[static_cast<std::size_t>(middle)]);
        typed[4][static_cast<std::size_t>(middle)] =
            text[static_cast<std::size_t>(middle)] == "X" ? "7" : "X";
        for (std::size_t i = 0; i < wrong.size(); ++i) {
            const Included one = include(found, typed[i]);
            wrong[i].add(one.how);
            if (one.how == Taken::WithHelp) tell(wrong[i].name, typed[i]);
        }
    }
    std::printf("%s\n", folder.c_str());
    right.print();
    std::printf("  wrongly labelled: %zu images, %zu of them with the text's help; %zu of %zu characters\n",
                wronglyLabelled, helpedWrongly, wrongPlaces, characters);
    std::printf("  processor time of the help: mean %.1f ms, most %.1f ms\n",
                1000 * seconds / std::max(1, attempts), 1000 * longest);
    for (const Counts& one : wrong) one.print();
}

}  // namespace dravik
