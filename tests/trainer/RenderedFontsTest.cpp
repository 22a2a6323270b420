// The commands on the sample parts that the project ships: one font after the other is learnt from its images
// of the whole character set and reads its images of lines. Prints a table of what came out.
#include <gtest/gtest.h>

#include <algorithm>
#include <iomanip>
#include <iostream>

#include "base/Text.h"
#include "engine/PngFile.h"
#include "support/Differences.h"
#include "trainer/commands/SampleList.h"
#include "trainer/support/Workspace.h"

namespace dravik::test {

using namespace engine;
using namespace trainer;
namespace {

std::vector<ListedSample> partsOf(const std::string& font, const std::string& folder) {
    auto samples = readSampleList(DRAVIK_SOURCE_DIR "/data/parts/" + folder + "/lines.tsv");
    std::erase_if(samples, [&](const auto& sample) { return !sample.image.starts_with(font + "_"); });
    return samples;
}

// What today's tool does, with one more wrong character at most in a font.
struct Required {
    const char* font;
    int included;       // images of 3, at least
    std::size_t wrong;  // characters, at most
};

TEST(RenderedFonts, AFontLearntFromItsCharacterSetReadsItsLines) {
    const Workspace workspace;
    const ImageDecoder decoder = [](const std::string& file) { return readPng(file); };
    constexpr std::size_t kWrongInAll = 12;
    std::size_t wrongInAll = 0;
    std::size_t charactersInAll = 0;
    std::cout << "font       included refused  characters  right  lines  right\n";
    for (const auto& required : {Required{"hack", 3, 1},
                                 {"libmono", 3, 2},
                                 {"dot6x10", 3, 2},
                                 {"incons", 3, 1},
                                 {"ocrbS", 3, 5},
                                 {"hersheyd", 2, 7}}) {
        const std::string font = required.font;
        std::string list;
        for (const auto& part : partsOf(font, "rendered_charset"))
            list += part.path + "\t" + part.text + "\n";
        const auto learnt = workspace.run(
            {"learn", "--font", font, "--samples", workspace.write(font + ".tsv", list), "--timeout", "30"},
            decoder);
        EXPECT_EQ(learnt.status, 0) << font;
        const auto begin = [](const char* word) {
            return [word](const std::string& line) { return line.starts_with(word); };
        };
        const auto included = std::count_if(learnt.out.begin(), learnt.out.end(), begin("included "));
        const auto refused = std::count_if(learnt.out.begin(), learnt.out.end(), begin("refused\t"));

        const auto parts = partsOf(font, "rendered_lines");
        std::vector<std::string> arguments = {"read", "--font", font};
        for (const auto& part : parts) arguments.push_back(part.path);
        const auto read = workspace.run(arguments, decoder);
        EXPECT_EQ(read.status, 0) << font;
        ASSERT_EQ(read.out.size(), parts.size()) << font;
        std::size_t total = 0;
        std::size_t wrong = 0;
        std::size_t wholeLines = 0;
        for (std::size_t i = 0; i < parts.size(); ++i) {
            auto text = read.out[i].substr(parts[i].path.size() + 1);
            if (const auto lineBreak = text.find("\\n"); lineBreak != std::string::npos)
                text.erase(lineBreak, 2);
            const auto wrongHere = differences(parts[i].text, text);
            total += characterCount(parts[i].text);
            wrong += wrongHere;
            wholeLines += wrongHere == 0 ? 1U : 0U;
        }
        std::cout << std::left << std::setw(9) << font << std::right << std::setw(10) << included
                  << std::setw(8) << refused << std::setw(12) << total << std::setw(7)
                  << total - std::min(total, wrong) << std::setw(7) << parts.size() << std::setw(7)
                  << wholeLines << '\n';
        EXPECT_GE(included, required.included) << font;
        EXPECT_LE(wrong, required.wrong) << font;
        wrongInAll += wrong;
        charactersInAll += total;
    }
    EXPECT_EQ(charactersInAll, 589U);
    EXPECT_LE(wrongInAll, kWrongInAll);
}

}  // namespace
}  // namespace dravik::test
