// Finding characters: each case is an image that a camera can deliver.
#include "engine/recogniser/BaseReader.h"
#include "engine/segmentation/Segmentation.h"

#include "contract/DrawnText.h"
#include "support/Testing.h"

namespace dravik {
namespace {

// "7+3" for two lines of seven and three characters.
std::string counts(const GreyImage& image) {
    const Segmentation found = segment(image);
    std::vector<int> lines(found.lines.size());
    for (const Glyph& glyph : found.glyphs) ++lines[static_cast<std::size_t>(glyph.line)];
    std::string text;
    for (const int count : lines) text += (text.empty() ? "" : "+") + std::to_string(count);
    return text;
}

TEST(Segmentation, NothingToFind) {
    EXPECT_EQ(counts(GreyImage()), "");
    for (const auto& [width, height] : {std::pair{1, 1}, {1, 500}, {500, 1}, {4, 4}, {300, 200}})
        for (const int grey : {0, 128, 255})
            EXPECT_EQ(counts(GreyImage(width, height, static_cast<std::uint8_t>(grey))), "")
                << width << " x " << height << " of " << grey;
    std::mt19937 random(7);
    GreyImage noise(400, 300);
    for (int y = 0; y < noise.height(); ++y)
        for (int x = 0; x < noise.width(); ++x) noise(x, y) = static_cast<std::uint8_t>(random() & 255);
    EXPECT_EQ(counts(noise), "");
}

TEST(Segmentation, PartsOfACharacterAreOne) {
    EXPECT_EQ(counts(drawn({"1i2j3:4;5=6"})), "11");
    EXPECT_EQ(counts(drawn({"A\"B\"C'1'2"})), "9");
    EXPECT_EQ(counts(drawn({"-1_2,3.4-"})), "9");
}

// Beside bold print underscores are thin and faint; what lies so in a next line's characters or goes on is
// none.
TEST(Segmentation, FaintUnderscores) {
    const auto withLine = [](const std::vector<std::string>& text, int left, int right, int y, int grey) {
        GreyImage image = drawn(text);
        for (int x = left; x < right; ++x) image(x, y) = image(x, y + 1) = static_cast<std::uint8_t>(grey);
        return counts(image);
    };
    const int place = 24 + 2 * 24;  // of the third character
    EXPECT_EQ(withLine({"A1 B2C"}, place, place + 20, 55, 150), "6");
    EXPECT_EQ(withLine({"A1 B2C"}, place, place + 20, 55, 215), "5");
    EXPECT_EQ(withLine({"A1    B2C"}, place + 4, place + 4 + 60, 55, 150), "5");
}

TEST(Segmentation, PolarityAndContrast) {
    const std::vector<std::string> text = {"A1:B2=C3"};
    EXPECT_EQ(counts(drawn(text, {.paper = 230, .print = 20})), "8");
    EXPECT_EQ(counts(drawn(text, {.paper = 20, .print = 230})), "8");
    EXPECT_EQ(counts(drawn(text, {.paper = 120, .print = 90})), "8");
    EXPECT_EQ(counts(drawn(text, {.paper = 90, .print = 120})), "8");
}

TEST(Segmentation, UnevenLight) {
    GreyImage image = drawn({"0123456789", "ABCEHLT"}, {.paper = 240, .print = 120});
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            image(x, y) = static_cast<std::uint8_t>(image(x, y) * (100 - 70 * x / image.width()) / 100);
    EXPECT_EQ(counts(image), "10+7");
}

TEST(Segmentation, LinesAreReadFromTopToBottomAndLeftToRight) {
    for (const double slope : {0.0, 0.05, -0.05}) {
        const Segmentation found = segment(drawn({"0123456789AB", "L=j", "ABCABCABCABC"}, {.slope = slope}));
        ASSERT_EQ(found.glyphs.size(), 27u) << slope;
        for (std::size_t i = 1; i < found.glyphs.size(); ++i) {
            const Glyph &before = found.glyphs[i - 1], &here = found.glyphs[i];
            EXPECT_TRUE(before.line < here.line ||
                        (before.line == here.line && before.piece.box.left < here.piece.box.left));
        }
        EXPECT_EQ(found.glyphs[12].line, 1);
        EXPECT_EQ(found.glyphs[15].line, 2);
    }
}

TEST(Segmentation, SpecksAreDropped) {
    GreyImage image = drawn({"0123", "4567"});
    for (int i = 0; i < 60; ++i) image((i * 37) % image.width(), (i * 53) % image.height()) = 40;
    EXPECT_EQ(counts(image), "4+4");
}

TEST(Segmentation, DotsThatDoNotTouchAreJoined) {
    for (const int dot : {4, 5, 6})
        EXPECT_EQ(counts(drawn({"A1B2C3", "HELT:i="}, {.scale = 8, .dot = dot})), "6+7") << dot << " of 8";
}

TEST(Segmentation, SizesFromSmallToLarge) {
    for (const int scale : {2, 3, 7, 16, 40})
        EXPECT_EQ(counts(drawn({"A1:B2", "C3=E4"}, {.scale = scale, .dot = scale, .margin = 10 * scale})),
                  "5+5")
            << scale;
}

TEST(Segmentation, TouchingFiguresOfEvenPitchAreCut) {
    GreyImage image = drawn({"8020603050"});
    const int base = 24 + 6 * 4;
    for (int x = 24 + 5 * 4; x < 24 + 6 * 4; ++x)
        for (int y = base; y < base + 4; ++y) image(x, y) = 40;
    EXPECT_EQ(counts(image), "10");
}

// What looks disagree about is settled by this.
TEST(Segmentation, HalvesAndPairsOfCharactersLookLessWholeThanCharacters) {
    for (const Drawing& how : {Drawing{.scale = 4, .dot = 4}, Drawing{.scale = 7, .dot = 7}}) {
        const Segmentation found = segment(drawn({"0A1B2C3E4H"}, how));
        ASSERT_EQ(found.glyphs.size(), 10u);
        const double whole = wholeCharacterOdds(found);
        for (const std::size_t i : {0u, 1u, 3u, 7u, 9u}) {
            Segmentation halved = found, paired = found;
            const Piece& piece = found.glyphs[i].piece;
            auto [left, right] = cut(piece, found.frame, piece.box.middleX());
            halved.glyphs[i].piece = std::move(left);
            halved.glyphs.insert(halved.glyphs.begin() + static_cast<std::ptrdiff_t>(i) + 1,
                                 {std::move(right), found.glyphs[i].line});
            EXPECT_LT(wholeCharacterOdds(halved), whole) << i;
            const std::size_t next = i == 9 ? 8 : i + 1;
            paired.glyphs[i].piece.join(std::move(paired.glyphs[next].piece));
            paired.glyphs.erase(paired.glyphs.begin() + static_cast<std::ptrdiff_t>(next));
            EXPECT_LT(wholeCharacterOdds(paired), whole) << i;
        }
    }
}

}  // namespace
}  // namespace dravik
