#include "engine/classifier/Confidence.h"

#include "engine/ToolActs.h"
#include "support/Testing.h"

namespace dravik {
namespace {

TEST(Confidence, GrowsWithTheEvidenceAndStaysANumber) {
    const double sure = confidence({0.999, {15, 120}});
    EXPECT_GT(sure, 0.95);
    EXPECT_LT(confidence({0.6, {15, 120}}), sure);
    EXPECT_LT(confidence({0.999, {15, 18}}), sure);
    EXPECT_LT(confidence({0.999, {2000, 2100}}), 0.2) << "far from every sample, whatever the network says";
    EXPECT_LT(confidence({1, {15, 18}}), sure)
        << "a network that is wholly sure does not outvote the samples";
    constexpr float kHuge = std::numeric_limits<float>::max();
    for (const double likelihood : {0.0, 1.0})
        for (const float own : {0.0f, kHuge})
            for (const float other : {0.0f, kHuge}) {
                const double value = confidence({likelihood, {own, other}});
                EXPECT_TRUE(value >= 0 && value <= 1) << value;
            }
}

// A font of figures is sure of figures in other sizes and tones, and not of letters and marks.
TEST(Confidence, IsLowForWhatTheFontDoesNotHave) {
    const TemporaryFolder folder;
    EmbeddedTool tool{JobFolder(folder.path())};
    tool.CreateFont("figures");
    for (const int scale : {3, 4, 5, 6, 7}) teach(tool, "0123456789", {.scale = scale, .dot = scale});
    train(tool);

    tool.setImage(drawn({"5092", "8371"}, {.scale = 8, .dot = 8, .paper = 40, .print = 190}));
    ASSERT_EQ(tool.read().size(), 8u);
    for (const ReadCharacter& one : tool.read()) EXPECT_GT(one.confidence, 0.9) << one.character;

    tool.setImage(drawn({"1HA=T:E2"}, {.scale = 5, .dot = 5}));
    std::string shown;
    for (const ReadCharacter& one : tool.read()) shown += shownCharacter(one, 0.5);
    EXPECT_EQ(shown, "1??????2");
}

}  // namespace
}  // namespace dravik
