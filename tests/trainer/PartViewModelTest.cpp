#include "support/Testing.h"
#include "trainer/window/PartViewModel.h"

namespace dravik::test {

using namespace engine;
using namespace trainer;
namespace {

class PartViewModelTest : public testing::Test {
  protected:
    PartViewModelTest() {
        view.setViewport(424, 342);  // 400 x 300 beside the margins and the room for labels
        view.setImage(&image, "");
    }
    static LabelledCharacter character(int left, int top, int right, int bottom, const char* label = "") {
        const auto width = static_cast<float>(right - left), height = static_cast<float>(bottom - top);
        return {
            {left, top, right, bottom, 0},
            label,
            {static_cast<float>(left) + width / 2, static_cast<float>(top) + height / 2, width, height, 0}};
    }
    // Of 20 x 30 image pixels, side by side, with the labels given.
    void found(std::initializer_list<const char*> labels, int mismatch) {
        std::vector<LabelledCharacter> characters;
        for (const char* label : labels) {
            const int left = 100 + 40 * static_cast<int>(characters.size());
            characters.push_back(character(left, 100, left + 20, 130, label));
        }
        view.setCharacters(std::move(characters), mismatch);
    }
    // The texts of the labels.
    std::vector<std::string> labels() const {
        std::vector<std::string> texts;
        for (const ViewTag& tag : view.tags()) texts.push_back(tag.text);
        return texts;
    }
    ViewPoint onView(double x, double y) const {
        const ViewBox place = view.imagePlace();
        return {place.left + x * view.scale(), place.top + y * view.scale()};
    }

    const GreyImage image{800, 300, 0};
    PartViewModel view;
};

TEST_F(PartViewModelTest, AnImageFitsUntilTheOperatorChoosesAScale) {
    EXPECT_DOUBLE_EQ(view.scale(), 0.5);
    EXPECT_EQ(view.percent(), 50);
    EXPECT_EQ(view.horizontal().most, 0) << "a scroll bar would change what fits";
    const GreyImage tiny(10, 10, 0);
    view.setImage(&tiny, "");
    EXPECT_DOUBLE_EQ(view.scale(), 4) << "not blown up further";
    view.zoomIn();
    EXPECT_FALSE(view.fits());
    view.setViewport(424, 342);
    view.setImage(&image, "");
    EXPECT_DOUBLE_EQ(view.scale(), 5) << "the operator's scale stays";
    view.fit();
    EXPECT_DOUBLE_EQ(view.scale(), 0.5);
    // On a display with two pixels where others have one.
    view.setDisplay({1, 2});
    view.showActualSize();
    EXPECT_DOUBLE_EQ(view.scale(), 0.5);
    EXPECT_EQ(view.percent(), 100);
}

TEST_F(PartViewModelTest, DraggingAndScrollingEndAtTheMargins) {
    view.zoomBy(6, {212, 171});
    const int from = view.horizontal().position;
    view.press({100, 100});
    view.moveTo({60, 100});
    EXPECT_EQ(view.horizontal().position, from + 40);
    view.release({60, 100});
    view.scrollTo(1'000'000, -5);
    EXPECT_EQ(view.vertical().position, 0);
    EXPECT_EQ(view.horizontal().position, view.horizontal().most);
    EXPECT_NEAR(view.imagePlace().right() + 12, 424, 1);
}

TEST_F(PartViewModelTest, CharactersWithoutLabelsWarnOnlyWhenSomethingIsTyped) {
    found({"A", "B", ""}, -1);
    EXPECT_THAT(labels(), ElementsAre("A", "B", "?"));
    EXPECT_EQ(view.tags()[2].color, kMismatchColor);
    EXPECT_FALSE(view.frames()[1].dashed);
    EXPECT_TRUE(view.frames()[2].dashed) << "not by colour alone";
    found({"", "", ""}, 0);
    EXPECT_TRUE(view.tags().empty());
    EXPECT_FALSE(view.frames()[2].dashed);
    found({"A", "B", "C"}, 2);
    ASSERT_THAT(labels(), ElementsAre("A", "B", "C", "+2")) << "typed characters that no box is left for";
    EXPECT_EQ(view.frames().size(), 3u);
}

TEST_F(PartViewModelTest, BoxesStandAroundTheirCharactersAndTagsBelowThem) {
    found({"A", "B"}, 0);
    const ViewFrame frame = view.frames().front();
    EXPECT_NEAR(frame.corners[0].x, onView(100, 0).x - 2, 1e-3);
    EXPECT_NEAR(frame.corners[2].y, onView(0, 130).y + 2, 1e-3);
    const ViewTag tag = view.tags().front();
    const ViewBox place = view.tagPlace(tag, 30, 12);
    EXPECT_NEAR(place.left + place.width / 2, onView(110, 0).x, 1e-3);
    EXPECT_GT(place.top, frame.corners[2].y);
    EXPECT_EQ(tag.textHeight, 9) << "small boxes have tags that can be read";
    // Of print on its head the tag is where its own underside is.
    LabelledCharacter upsideDown = character(100, 100, 120, 130, "A");
    upsideDown.box.angle = 180;
    view.setCharacters({upsideDown}, 0);
    EXPECT_LT(view.tagPlace(view.tags().front(), 30, 12).bottom(), onView(0, 100).y);
}

}  // namespace
}  // namespace dravik::test
