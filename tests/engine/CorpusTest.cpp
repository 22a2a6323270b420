// Labelled images as a black box, beside what RegressionTest.cpp asks of each of them.

#include "engine/LabelledImages.h"
#include "engine/PngFile.h"
#include "engine/embedded/EmbeddedTool.h"
#include "engine/recogniser/BaseReader.h"
#include "engine/segmentation/Segmentation.h"
#include "support/Testing.h"

namespace dravik {
namespace {

const std::string kParts = std::string(DRAVIK_SOURCE_DIR) + "/data/parts/";
// Made by dravik_generate (set `develop`): clean, typical and hard images of twelve faces, three of them
// dotted.
const std::string kGenerated = std::string(DRAVIK_SOURCE_DIR) + "/tests/engine/corpus";
// Lines of which some have small letters alone.
const std::string kSmallLetters = std::string(DRAVIK_SOURCE_DIR) + "/tests/engine/small_letters";

// A font decides between the views of an image by what it reads in each.
TEST(Corpus, OtherViewsHaveAsManyCharactersAsTheySay) {
    int views = 0;
    for (const std::string& folder :
         {kGenerated, kSmallLetters, kParts + "rendered_lines", kParts + "rendered_charset"})
        for (const LabelledImage& one : labelledImages(folder)) {
            const GreyImage image = readPng(one.file);
            const Segmentation found = segment(image, takeWholeCharacters);
            double odds = 0;
            for (const OtherView& view : found.others) {
                ++views;
                EXPECT_NE(view.characters, found.glyphs.size()) << one.name;
                EXPECT_EQ(segment(image, view, takeWholeCharacters).glyphs.size(), view.characters)
                    << one.name;
                EXPECT_LE(view.odds, odds) << one.name;
                odds = view.odds;
            }
        }
    EXPECT_GT(views, 10);
}

// Lines of small letters alone look like capitals; the font's samples, and the height of a line beside them,
// tell which they are.
TEST(Corpus, LinesOfSmallLettersAreReadAsSuch) {
    const TemporaryFolder folder;
    EmbeddedTool tool{JobFolder(folder.path())};
    const std::vector<LabelledImage> sheets = labelledImages(kParts + "rendered_charset");
    std::string font;
    for (const LabelledImage& image : labelledImages(kSmallLetters)) {
        if (image.font != font) {
            font = image.font;
            tool.CreateFont(font);
            for (const LabelledImage& sheet : sheets)
                if (sheet.font == font) {
                    tool.setImage(readPng(sheet.file));
                    tool.IncludeSamples(sheet.text);
                    tool.CommitNewSamples();
                }
            tool.StartTraining();
            while (!tool.IsTrainingDone()) std::this_thread::yield();
        }
        tool.setImage(readPng(image.file));
        std::string read;
        for (const ReadCharacter& one : tool.read()) read += one.character;
        EXPECT_EQ(read, image.text) << image.name;
    }
    EXPECT_EQ(font, "libmono");
}

TEST(Corpus, OtherPrintIsCountedExactly) {
    const std::string shared = std::string(DRAVIK_SOURCE_DIR) + "/../shared/data/ocrb_lines";
    const std::vector<LabelledImage> images = labelledImages(shared);
    if (images.empty()) GTEST_SKIP() << "no folder ocrb_lines with further images";
    const TemporaryFolder folder;
    EmbeddedTool tool{JobFolder(folder.path())};
    for (const LabelledImage& image : images) {
        tool.setImage(readPng(image.file));
        EXPECT_EQ(tool.found().size(), characterCount(image.text)) << image.name;
    }
}

}  // namespace
}  // namespace dravik
