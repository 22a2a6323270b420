#include "evaluate/ReadingWithoutFont.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <map>
#include <vector>

#include "base/Text.h"
#include "engine/LabelledImages.h"
#include "engine/PngFile.h"
#include "engine/recogniser/BaseReader.h"
#include "generate/Random.h"
#include "support/Differences.h"

namespace dravik {

using namespace engine;
namespace {

struct Count {
    int images = 0, exact = 0, characters = 0, wrong = 0, alone = 0, unjudged = 0, alike = 0;
    void add(const Count& other) {
        images += other.images;
        exact += other.exact;
        characters += other.characters;
        wrong += other.wrong;
        alone += other.alone;
        unjudged += other.unjudged;
        alike += other.alike;
    }
};

// Readings by their likelihood.
struct Sureness {
    int count = 0, right = 0;
    double sum = 0;
};
constexpr std::array kSureness = {0.2, 0.5, 0.8, 0.9, 0.95, 0.98, 0.99, 2.0};

std::vector<std::string> textOf(const std::vector<SuggestedCharacter>& read) {
    std::vector<std::string> text;
    for (const SuggestedCharacter& one : read) text.push_back(one.best().character);
    return text;
}

// The text with the first of those that are drawn alike for all of them.
std::vector<std::string> merged(std::vector<std::string> text) {
    for (std::string& one : text)
        for (const char other : kRecognisedCharacters)
            if (areDrawnAlike(one, std::string(1, other))) {
                one = other;
                break;
            }
    return text;
}

struct Typing {
    int right = 0, alarms = 0, wrong = 0, found = 0;
    // One character typed as another, then the text as it is.
    void tryOut(const Segmentation& found_, std::vector<std::string> text, Random& random) {
        if (found_.glyphs.size() != text.size() || text.empty()) return;
        const auto disagreeing = [&](const std::vector<std::string>& typed) {
            std::vector<std::size_t> places;
            const std::vector<CharacterLikelihood> compared = compareWithText(found_, typed);
            for (std::size_t i = 0; i < compared.size(); ++i)
                if (compared[i].disagrees()) places.push_back(i);
            return places;
        };
        ++right;
        alarms += disagreeing(text).empty() ? 0 : 1;
        const std::size_t place =
            static_cast<std::size_t>(random.whole(0, static_cast<int>(text.size()) - 1));
        const std::string before = text[place];
        while (text[place] == before || areDrawnAlike(text[place], before))
            text[place] = std::string(1, random.of(std::string(kRecognisedCharacters)));
        ++wrong;
        const std::vector<std::size_t> places = disagreeing(text);
        found += std::find(places.begin(), places.end(), place) != places.end() ? 1 : 0;
    }
};

void print(const std::string& name, const Count& count) {
    const auto share = [&](int wrong) { return 100.0 * wrong / std::max(1, count.characters); };
    std::printf(
        "%-14s %4d of %4d exact, of %5d wrong %5.2f %%, look-alikes aside %5.2f, without context %5.2f, "
        "first view %5.2f\n",
        name.c_str(), count.exact, count.images, count.characters, share(count.wrong), share(count.alike),
        share(count.alone), share(count.unjudged));
}

}  // namespace

void readWithoutFonts(const std::string& lines, bool verbose) {
    std::map<std::string, Count> fonts;
    std::array<Sureness, kSureness.size()> sureness{};
    Typing typing;
    Random random(4711);
    double seconds = 0;
    for (const LabelledImage& image : labelledImages(lines)) {
        const GreyImage pixels = readPng(image.file);
        const std::vector<std::string> text = characters(image.text);
        const Segmentation found = segment(pixels, takeWholeCharacters);
        const auto begun = std::chrono::steady_clock::now();
        const std::vector<SuggestedCharacter> suggestion = readWithoutFont(found);
        seconds += std::chrono::duration<double>(std::chrono::steady_clock::now() - begun).count();
        const std::vector<std::string> read = textOf(suggestion);
        Count& count = fonts[image.font];
        ++count.images;
        count.exact += read.size() == text.size() ? 1 : 0;
        count.characters += static_cast<int>(text.size());
        count.wrong += static_cast<int>(test::differences(text, read));
        count.alike += static_cast<int>(test::differences(merged(text), merged(read)));
        count.alone +=
            static_cast<int>(test::differences(text, textOf(readWithoutFont(found, Context::Ignored))));
        count.unjudged += static_cast<int>(test::differences(text, textOf(readWithoutFont(segment(pixels)))));
        typing.tryOut(found, text, random);
        if (read.size() == text.size())
            for (std::size_t i = 0; i < text.size(); ++i) {
                const double sure = suggestion[i].best().likelihood;
                const std::size_t bin = static_cast<std::size_t>(
                    std::upper_bound(kSureness.begin(), kSureness.end(), sure) - kSureness.begin());
                ++sureness[bin].count;
                sureness[bin].right += read[i] == text[i] ? 1 : 0;
                sureness[bin].sum += sure;
            }
        if (verbose && read != text) {
            std::printf("    %s: ", image.name.c_str());
            for (const std::string& one : read) std::printf("%s", one.c_str());
            std::printf("  %s\n", image.text.c_str());
        }
    }
    Count all;
    for (const auto& [font, count] : fonts) {
        print(font, count);
        all.add(count);
    }
    print("all", all);
    for (std::size_t i = 0; i < kSureness.size(); ++i)
        if (const Sureness& one = sureness[i]; one.count)
            std::printf("  likelihood below %.2f: %5d, mean %5.1f %%, right %5.1f %%\n",
                        std::min(1.0, kSureness[i]), one.count, 100 * one.sum / one.count,
                        100.0 * one.right / one.count);
    std::printf(
        "  typed texts with one wrong character: %d of %d pointed out; right texts doubted: %d of %d\n",
        typing.found, typing.wrong, typing.alarms, typing.right);
    std::printf("  %.2f ms an image after its characters were found\n",
                1000 * seconds / std::max(1, all.images));
}

}  // namespace dravik
