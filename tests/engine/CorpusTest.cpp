// Labelled images as a black box, beside what RegressionTest.cpp asks of each of them.

#include "engine/LabelledImages.h"
#include "engine/LearntSheets.h"
#include "support/Testing.h"

namespace dravik {
namespace {

// Lines of small letters alone look like capitals; the font's samples, and the height of a line beside them,
// tell which they are.
TEST(Corpus, LinesOfSmallLettersAreReadAsSuch) {
    const std::string source = DRAVIK_SOURCE_DIR "/";
    const TemporaryFolder folder;
    EmbeddedTool tool{JobFolder(folder.path())};
    std::string font;
    for (const LabelledImage& image : labelledImages(source + "tests/engine/small_letters")) {
        if (image.font != font) {
            font = image.font;
            tool.CreateFont(font);
            for (const LabelledImage& sheet : labelledImages(source + "data/parts/rendered_charset"))
                if (sheet.font == font) includeSheet(tool, sheet);
            train(tool);
        }
        tool.setImage(readPng(image.file));
        EXPECT_EQ(textOf(tool.read()), image.text) << image.name;
    }
    EXPECT_EQ(font, "libmono");
}

}  // namespace
}  // namespace dravik
