#include "evaluate/ReadingWithoutFont.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <map>
#include <memory>
#include <vector>

#include "base/Text.h"
#include "engine/LabelledImages.h"
#include "engine/PngFile.h"
#include "engine/classifier/SceneReading.h"
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

// Texts that were typed wrongly, with as many characters as the right one, and whether one of the wrong
// places is pointed out.
class Typing {
  public:
    void tryOut(const Scene& found, const std::vector<std::string>& text, Random& random) {
        if (found.characters() != text.size() || text.empty()) return;
        ++right_;
        alarms_ += disagreeing(found, text).empty() ? 0 : 1;
        const int last = static_cast<int>(text.size()) - 1;
        const auto place = [&] { return static_cast<std::ptrdiff_t>(random.whole(0, last)); };
        const auto another = [&](const std::string& than) {
            std::string one = than;
            while (one == than || areDrawnAlike(one, than))
                one = std::string(1, random.of(std::string(kRecognisedCharacters)));
            return one;
        };
        std::vector<std::string> typed = text;
        const std::ptrdiff_t replaced = place();
        typed[static_cast<std::size_t>(replaced)] = another(typed[static_cast<std::size_t>(replaced)]);
        tryWrong(Replaced, found, text, typed);

        typed = text;
        typed.erase(typed.begin() + place());
        typed.push_back(another(text.back()));
        tryWrong(Missing, found, text, typed);

        typed = text;
        const std::ptrdiff_t inserted = place();
        typed.insert(typed.begin() + inserted, another(text[static_cast<std::size_t>(inserted)]));
        typed.pop_back();
        tryWrong(Extra, found, text, typed);

        std::vector<std::size_t> pairs;
        for (std::size_t i = 1; i < text.size(); ++i)
            if (text[i] != text[i - 1] && !areDrawnAlike(text[i], text[i - 1])) pairs.push_back(i);
        if (pairs.empty()) return;
        typed = text;
        const std::size_t pair = random.of(pairs);
        std::swap(typed[pair - 1], typed[pair]);
        tryWrong(Swapped, found, text, typed);
    }

    void print() const {
        for (std::size_t kind = 0; kind < kKinds; ++kind)
            std::printf("  typed texts with %s: %d of %d pointed out\n", kNames[kind], found_[kind],
                        wrong_[kind]);
        std::printf("  right texts doubted: %d of %d\n", alarms_, right_);
    }

  private:
    enum Kind : std::size_t { Replaced, Missing, Extra, Swapped, kKinds };
    static constexpr std::array kNames = {"one other character", "one missing, one more at the end",
                                          "one more, the last missing", "two neighbours exchanged"};

    static std::vector<std::size_t> disagreeing(const Scene& found, const std::vector<std::string>& typed) {
        std::vector<std::size_t> places;
        const std::vector<CharacterLikelihood> compared = compareWithText(found, typed);
        for (std::size_t i = 0; i < compared.size(); ++i)
            if (compared[i].disagrees()) places.push_back(i);
        return places;
    }

    void tryWrong(Kind kind, const Scene& found, const std::vector<std::string>& text,
                  const std::vector<std::string>& typed) {
        ++wrong_[kind];
        const std::vector<std::size_t> places = disagreeing(found, typed);
        found_[kind] += std::any_of(places.begin(), places.end(),
                                    [&](std::size_t place) { return typed[place] != text[place]; });
    }

    int right_ = 0, alarms_ = 0;
    std::array<int, kKinds> wrong_{}, found_{};
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
        const Scene found = findScene(std::make_shared<GreyImage>(pixels));
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
        std::vector<std::string> alone;
        for (const ScenePart& part : found.parts)
            for (std::string& one : textOf(readWithoutFont(part.found, Context::Ignored)))
                alone.push_back(std::move(one));
        count.alone += static_cast<int>(test::differences(text, alone));
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
    typing.print();
    std::printf("  %.2f ms an image after its characters were found\n",
                1000 * seconds / std::max(1, all.images));
}

}  // namespace dravik
