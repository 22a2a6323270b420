#include "screen/histogram/HistogramModel.h"

#include <gmock/gmock.h>

#include "base/Failure.h"

namespace dravik::test {

using namespace screen;
using namespace ui;
namespace {

using testing::ElementsAre;

HistogramModel characters() {
    HistogramModel model;
    model.threshold = 0.4;
    model.data = {12, 0, 6};
    model.max = {0.5, 0, 0.4};
    model.chars = {"A", "B", "C"};
    model.loadCharacters();
    return model;
}

std::vector<bool> visible(const HistogramModel& model) {
    std::vector<bool> result;
    for (const auto& bar : model.drawing.shpData) result.push_back(bar.visible);
    return result;
}

TEST(HistogramModel, CharactersStandOnTheAxisAndAreFoundUnderThePointer) {
    auto model = characters();
    EXPECT_THAT(visible(model), ElementsAre(false, false, false));
    EXPECT_EQ(model.drawing.barAt(16), std::nullopt) << "no bar has a place yet";
    model.placeCharacters(12);
    EXPECT_THAT(visible(model), ElementsAre(true, true, true));
    EXPECT_EQ(model.drawing.shpData[2].height, 50);
    const double left = model.drawing.shpData[2].left;
    EXPECT_EQ(model.drawing.barAt(left, 49), 2u);
    EXPECT_EQ(model.drawing.barAt(left, 50), std::nullopt);
    EXPECT_EQ(model.drawing.barAt(left - 1, 1), 2u);
    EXPECT_EQ(model.drawing.barAt(left + 1.1, 1), std::nullopt);
    model.nameBars();
    EXPECT_EQ(model.drawing.shpData[2].accessibleName,
              "C, 6 samples, largest Distance 0.400, over the threshold");
    EXPECT_EQ(model.drawing.shpData[1].accessibleName, "B, 0 samples, largest Distance 0.000");
    EXPECT_THROW(model.samplesOf(3), Failure);
}

TEST(HistogramModel, TheLastBinIsDeletedWithTheLargestDistance) {
    HistogramModel model;
    model.data = {0.1, 0x1.486e3f9abcab9p-2};
    model.countBins();
    ASSERT_LT(model.rangeOf(9).upper, model.data[1]) << "ten tenths of it";
    EXPECT_EQ(model.deletedWith(9).upper, model.data[1]);
    EXPECT_EQ(model.deletedWith(9).lower, model.rangeOf(9).lower);
    EXPECT_EQ(model.deletedWith(8).upper, model.rangeOf(8).upper);
}

TEST(HistogramModel, AThresholdCountsWhatReachesIt) {
    auto model = characters();
    EXPECT_EQ(model.colourByThreshold(), 2);
    EXPECT_EQ(model.drawing.shpData[2].fill, rgb(255, 0, 0));
    EXPECT_EQ(model.drawing.shpData[1].fill, rgb(0, 0, 0));
    model.threshold = 0;
    EXPECT_EQ(model.colourByThreshold(), 3);
    model.threshold = 0.6;
    EXPECT_EQ(model.colourByThreshold(), 0);
}

TEST(HistogramModel, BinsReachFromZeroToTheLargestDistance) {
    HistogramModel model;
    model.mode = kCharacterDistance;
    model.data = {0, 0.2, 0.21, 2.0};
    model.loadBins();
    model.countBins();
    model.placeBins();
    EXPECT_EQ(model.bins.largestCount, 2);
    EXPECT_EQ(model.countOf(0), 2);
    EXPECT_EQ(model.countOf(1), 1);
    EXPECT_EQ(model.countOf(9), 1);
    EXPECT_DOUBLE_EQ(model.rangeOf(1).lower, 0.2);
    EXPECT_DOUBLE_EQ(model.rangeOf(1).upper, 0.4);
    EXPECT_DOUBLE_EQ(model.rangeOf(9).upper, 2.0);
    EXPECT_EQ(model.drawing.lblX[9].caption, "2.000");
    EXPECT_FALSE(model.drawing.shpData[5].visible);
    EXPECT_EQ(model.drawing.barAt(model.drawing.shpData[5].left, -1), 5u) << "an empty bin, below the axis";
    EXPECT_THROW(model.countOf(10), Failure);
    model.clear();
    EXPECT_EQ(model.countOf(0), 0);
    EXPECT_THROW(model.countBins(), Failure);
    EXPECT_EQ(model.drawing.barAt(2), std::nullopt);
}

TEST(HistogramModel, SmallestLargestAndMean) {
    const std::vector<double> values = {-2, 7, 4};
    EXPECT_EQ(MinValue(values), -2);
    EXPECT_EQ(MaxValue(values), 7);
    EXPECT_EQ(AvgValue(values), 3);
    EXPECT_THROW(MaxValue({}), Failure);
    EXPECT_THROW(AvgValue({}), Failure);
}

}  // namespace
}  // namespace dravik::test
