// Reading without a font.
#include "engine/recogniser/BaseReader.h"

#include "engine/LabelledImages.h"
#include "engine/PngFile.h"
#include "support/Testing.h"

namespace dravik {
namespace {

TEST(BaseReader, NamesTheCharacterThatATextDoesNotGoWith) {
    const std::string folder = std::string(DRAVIK_SOURCE_DIR) + "/data/parts/rendered_lines";
    int doubted = 0, named = 0, images = 0;
    for (const LabelledImage& image : labelledImages(folder)) {
        const Segmentation found = segment(readPng(image.file));
        std::vector<std::string> text = characters(image.text);
        ++images;
        for (const CharacterLikelihood& one : compareWithText(found, text))
            doubted += one.disagrees() ? 1 : 0;
        const std::size_t place = text.size() / 2;
        // What many faces draw alike is no mistake that can be seen.
        for (const auto& [typed, printed] : {std::pair{"O", "0"}, {"l", "1"}, {"x", "X"}})
            if (text[place] == printed) {
                std::vector<std::string> alike = text;
                alike[place] = typed;
                EXPECT_FALSE(compareWithText(found, alike)[place].disagrees());
            }
        text[place] = text[place] == "M" ? "8" : "M";
        const std::vector<CharacterLikelihood> compared = compareWithText(found, text);
        ASSERT_EQ(compared.size(), text.size());
        named += compared[place].disagrees() && compared[place].expected == text[place] ? 1 : 0;
        // A character of no overview says nothing; of another number of characters nothing can be said.
        text[place] = "\xC3\x84";
        EXPECT_FALSE(compareWithText(found, text)[place].disagrees());
        text.pop_back();
        EXPECT_TRUE(compareWithText(found, text).empty());
    }
    EXPECT_EQ(doubted, 0);
    EXPECT_GE(named, images * 9 / 10);
    EXPECT_TRUE(readWithoutFont(Segmentation()).empty());
}

}  // namespace
}  // namespace dravik
