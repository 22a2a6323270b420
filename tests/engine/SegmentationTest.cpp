// Finding characters: each case is an image that a camera can deliver.
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
}

TEST(Segmentation, CharactersOfEachKindOfPrintAreCounted) {
    const std::vector<std::pair<GreyImage, const char*>> kinds = {
        {drawn({"1i2j3:4;5=6"}), "11"},
        {drawn({"A\"B\"C'1'2"}), "9"},
        {drawn({"-1_2,3.4-"}), "9"},
        {drawn({"A1:B2=C3"}, {.paper = 120, .print = 90}), "8"},
        {drawn({"A1:B2=C3"}, {.paper = 90, .print = 120}), "8"},
        {drawn({"A1B2C3", "HELT:i="}, {.scale = 8, .dot = 4}), "6+7"},
        {drawn({"A1:B2", "C3=E4"}, {.scale = 2, .dot = 2, .margin = 20}), "5+5"},
        {drawn({"A1:B2", "C3=E4"}, {.scale = 40, .dot = 40, .margin = 400}), "5+5"}};
    for (std::size_t i = 0; i < kinds.size(); ++i) EXPECT_EQ(counts(kinds[i].first), kinds[i].second) << i;
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

TEST(Segmentation, UnevenLight) {
    GreyImage image = drawn({"0123456789", "ABCEHLT"}, {.paper = 240, .print = 120});
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            image(x, y) = static_cast<std::uint8_t>(image(x, y) * (100 - 70 * x / image.width()) / 100);
    EXPECT_EQ(counts(image), "10+7");
}

TEST(Segmentation, SpecksAreDropped) {
    GreyImage image = drawn({"0123", "4567"});
    for (int i = 0; i < 60; ++i) image((i * 37) % image.width(), (i * 53) % image.height()) = 40;
    EXPECT_EQ(counts(image), "4+4");
}

}  // namespace
}  // namespace dravik
