// Images looked at as the operator wants: by the settings of a font, and with characters that were corrected.

#include "engine/ToolActs.h"
#include "engine/font/FontFile.h"
#include "engine/font/SettingsBytes.h"
#include "support/Testing.h"
#include "tool/Samples.h"

namespace dravik {

using namespace tool;
namespace {

std::size_t found(const GreyImage& image, const SegmentationSettings& settings) {
    return findScene(std::make_shared<GreyImage>(image), settings).characters();
}

// One image above the other.
GreyImage stacked(const GreyImage& upper, const GreyImage& lower) {
    GreyImage both(std::max(upper.width(), lower.width()), upper.height() + lower.height(), upper(0, 0));
    for (const auto& [image, top] : {std::pair{&upper, 0}, {&lower, upper.height()}})
        for (int y = 0; y < image->height(); ++y)
            for (int x = 0; x < both.width(); ++x)
                both(x, top + y) = (*image)(std::min(x, image->width() - 1), y);
    return both;
}

TEST(SegmentationSettings, WhatTheyExcludeIsNotFound) {
    const GreyImage both = stacked(drawn({"A1B2C3"}), drawn({"HE"}, {.paper = 40, .print = 220}));
    EXPECT_EQ(found(both, {.print = {.polarity = Polarity::DarkOnLight}}), 6u);
    EXPECT_EQ(found(both, {.print = {.polarity = Polarity::LightOnDark}}), 2u);
    const GreyImage sizes =
        stacked(drawn({"A1B2C3"}, {.scale = 4, .dot = 4}), drawn({"HE"}, {.scale = 7, .dot = 7}));
    EXPECT_EQ(found(sizes, {}), 8u);
    EXPECT_EQ(found(sizes, {.print = {.smallestHeight = 40}}), 2u);
    const GreyImage solid = drawn({"A1B2C3"}), dots = drawn({"A1B2C3"}, {.scale = 6, .dot = 3});
    const Segmentation asDots = segment(solid, nullptr, {}, {.kind = PrintKind::DotMatrix});
    const Segmentation asSolid = segment(dots, nullptr, {}, {.kind = PrintKind::Solid});
    EXPECT_EQ(segment(solid).look.joins, Look::Fragments);
    EXPECT_NE(asDots.look.joins, Look::Fragments);
    EXPECT_NE(asSolid.look.joins, Look::Dots);
    EXPECT_EQ(asDots.glyphs.size(), 6u);
    EXPECT_EQ(asSolid.glyphs.size(), 6u);
}

TEST(SegmentationSettings, RegionsAreNamedAndBytesRefusedWhenTheyAreNone) {
    EXPECT_EQ(regionNamed("10,20,40,30"), (RotatedBox{30, 35, 40, 30, 0}));
    EXPECT_EQ(regionNamed("-10,20.5,40,31,-90"), (RotatedBox{10, 36, 40, 31, -90}));
    for (const char* wrong : {"", "1,2,3", "10,20,40,30,", "10,20,40,30,5,6", "10,20,2,30", "a,20,40,30",
                              "10,20,40,nan", "10,20,40,30,400", "10,20,1e9,30"})
        EXPECT_FALSE(regionNamed(wrong)) << wrong;
    ByteWriter out;
    encodeSettings(out, {RotatedBox{30, 35, 40, 30, 12}, {Polarity::LightOnDark, PrintKind::DotMatrix, 9}});
    const std::string name = "settings";
    for (const auto& [place, value] : {std::pair{0, 3}, {1, 3}, {3, 200}, {6, 2}, {18, 0xC0}}) {
        std::vector<std::uint8_t> damaged = out.bytes();
        damaged[static_cast<std::size_t>(place)] = static_cast<std::uint8_t>(value);
        ByteReader in(damaged, name);
        EXPECT_NE(test::refusal([&] { decodeSettings(in); }), 0) << place;
    }
}

class ToolWithFont : public testing::Test {
  protected:
    ToolWithFont() { tool.CreateFont("F"); }
    // All that is committed with them.
    std::string include(const std::string& text) {
        tool.IncludeSamples(text);
        tool.CommitNewSamples();
        return labels(tool);
    }

    const TemporaryFolder folder;
    EmbeddedTool tool{JobFolder(folder.path())};
};

TEST_F(ToolWithFont, SettingsArePartOfTheFont) {
    const SegmentationSettings settings{RotatedBox{60, 40, 110, 60, 2},
                                        {Polarity::DarkOnLight, PrintKind::Solid, 8}};
    tool.SaveFont("F");
    const auto plain = readFontBytes(folder.path("Fonts/F.nnd"));
    tool.setSettings(settings);
    tool.endAct("change of the region", "");
    tool.setImage(stacked(drawn({"A1B2"}), drawn({"HE"})));
    EXPECT_EQ(tool.found().size(), 4u) << "the region holds the first line alone";
    EXPECT_EQ(tool.undoWords(), "change of the region");
    tool.undo();
    EXPECT_EQ(tool.settings(), SegmentationSettings{});
    EXPECT_EQ(tool.found().size(), 6u) << "by the settings that count now";
    tool.SaveFont("F");
    EXPECT_EQ(readFontBytes(folder.path("Fonts/F.nnd")), plain) << "fonts without settings stay as they were";
    tool.redo();
    tool.SaveFont("F");
    EmbeddedTool other{JobFolder(folder.path())};
    other.LoadFont("F");
    EXPECT_EQ(other.settings(), settings);
    other.setImage(stacked(drawn({"A1B2"}), drawn({"HE"})));
    EXPECT_EQ(other.found().size(), 4u);
    EXPECT_NE(test::refusal([&] { tool.setSettings({RotatedBox{0, 0, 0, 0, 0}, {}}); }), 0);
}

TEST_F(ToolWithFont, WhatWasCorrectedIsIncludedAndReadAsCorrected) {
    const GreyImage image = drawn({"A1B2", "CE"});
    teach(tool, "A1B2CE");
    train(tool);
    tool.setImage(image);

    // The first two are one, and cut again where they are best cut.
    const std::vector<CharacterBox> asFound = tool.characterBoxes();
    std::vector<CharacterBox> joined = asFound;
    RotatedBox& both = joined[0].place;
    const float right = asFound[1].place.centreX + asFound[1].place.width / 2;
    const float left = both.centreX - both.width / 2;
    both.width = right - left;
    both.centreX = (left + right) / 2;
    joined.erase(joined.begin() + 1);
    tool.setCharacters(joined);
    EXPECT_EQ(tool.found().size(), 5u);
    std::vector<CharacterBox> cut = joined;
    const float place = bestCut(image, cut[0].place);
    EXPECT_NEAR(left + place, (asFound[0].place.centreX + asFound[1].place.centreX) / 2, 6);
    CharacterBox second = cut[0];
    second.place.width = cut[0].place.width - place;
    second.place.centreX = right - second.place.width / 2;
    cut[0].place.width = place;
    cut[0].place.centreX = left + place / 2;
    cut.insert(cut.begin() + 1, second);
    tool.setCharacters(cut);
    EXPECT_EQ(textOf(tool.read()), "A1B2CE");
    EXPECT_EQ(include("A1B2CE"), "A1B2CEA1B2CE");

    // A character of the second line is taken away; the rest keeps its lines.
    cut.erase(cut.begin() + 4);
    tool.setCharacters(cut);
    EXPECT_EQ(tool.found().size(), 5u);
    EXPECT_EQ(tool.found().back().line, 1);
    tool.setCharacters(std::nullopt);
    EXPECT_EQ(tool.characterBoxes(), asFound);
    tool.setCharacters(joined);
    tool.setImage(image);
    EXPECT_EQ(tool.found().size(), 6u) << "corrections are of one image";
}

TEST_F(ToolWithFont, AnImageInWhichNothingIsFoundHasTheCharactersThatAreTold) {
    teach(tool, "A1B2");
    const std::vector<CharacterBox> places = tool.characterBoxes();
    train(tool);
    // The same places, told in an image that is looked at wrongly.
    tool.setSettings({RotatedBox{8, 8, 10, 10, 0}, {Polarity::DarkOnLight}});
    tool.setImage(drawn({"A1B2"}));
    ASSERT_TRUE(tool.found().empty());
    tool.setCharacters(places);
    EXPECT_EQ(textOf(tool.read()), "A1B2");
    // Even where there is nothing to see.
    tool.setImage(GreyImage(200, 80, 128));
    tool.setCharacters(places);
    EXPECT_EQ(include("A1B2"), "A1B2A1B2");
    tool.setCharacters(std::vector<CharacterBox>{});
    EXPECT_TRUE(tool.found().empty());
}

}  // namespace
}  // namespace dravik
