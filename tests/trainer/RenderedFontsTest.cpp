// The commands on the sample parts that the project ships: one font after the other is learnt from its images
// of the whole character set and reads its images of lines.

#include "engine/LabelledImages.h"
#include "engine/PngFile.h"
#include "support/Differences.h"
#include "trainer/support/Workspace.h"

namespace dravik::test {
namespace {

const std::string kParts = DRAVIK_SOURCE_DIR "/data/parts/";

// What today's tool does, with one more wrong character at most in a font.
struct Required {
    const char* font;
    int included;       // images of 3, at least
    std::size_t wrong;  // characters, at most
};

TEST(RenderedFonts, AFontLearntFromItsCharacterSetReadsItsLines) {
    const Workspace workspace;
    const ImageDecoder decoder = [](const std::string& file) { return readPng(file); };
    std::size_t wrongInAll = 0, charactersInAll = 0;
    for (const auto& [font, leastIncluded, mostWrong] : {Required{"hack", 3, 1},
                                                         {"libmono", 3, 2},
                                                         {"dot6x10", 3, 2},
                                                         {"incons", 3, 1},
                                                         {"ocrbS", 3, 5},
                                                         {"hersheyd", 2, 7}}) {
        SCOPED_TRACE(font);
        std::string list;
        for (const auto& sheet : labelledImages(kParts + "rendered_charset"))
            if (sheet.font == font) list += sheet.file + "\t" + sheet.text + "\n";
        const auto learnt = workspace.run(
            {"learn", "--font", font, "--samples", workspace.write("list.tsv", list), "--timeout", "30"},
            decoder);
        EXPECT_EQ(learnt.status, 0);
        EXPECT_GE(std::count_if(learnt.out.begin(), learnt.out.end(),
                                [](const std::string& line) { return line.starts_with("included "); }),
                  leastIncluded);

        std::size_t wrong = 0;
        for (const auto& line : labelledImages(kParts + "rendered_lines")) {
            if (line.font != font) continue;
            const auto read = workspace.run({"read", "--font", font, line.file}, decoder);
            std::string text = read.out.at(0).substr(line.file.size() + 1);
            if (const auto lineBreak = text.find("\\n"); lineBreak != std::string::npos)
                text.erase(lineBreak, 2);
            wrong += differences(line.text, text);
            charactersInAll += characterCount(line.text);
        }
        EXPECT_LE(wrong, mostWrong);
        wrongInAll += wrong;
    }
    EXPECT_EQ(charactersInAll, 589U);
    EXPECT_LE(wrongInAll, 12U);
}

}  // namespace
}  // namespace dravik::test
