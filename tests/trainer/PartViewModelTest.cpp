#include "trainer/window/PartViewModel.h"

#include <gmock/gmock.h>

#include <cmath>

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
    // Of 20 x 30 image pixels, side by side, with the labels given.
    void found(std::initializer_list<const char*> labels, int mismatch) {
        std::vector<LabelledCharacter> characters;
        for (const char* label : labels) {
            const int left = 100 + 40 * static_cast<int>(characters.size());
            characters.push_back({{left, 100, left + 20, 130, 0}, label});
        }
        view.setCharacters(std::move(characters), mismatch);
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
    view.setViewport(824, 342);
    EXPECT_DOUBLE_EQ(view.scale(), 1);
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
    for (int i = 0; i < 60; ++i) view.zoomIn();
    EXPECT_DOUBLE_EQ(view.scale(), 32);
    for (int i = 0; i < 60; ++i) view.zoomOut();
    EXPECT_DOUBLE_EQ(view.scale(), 0.02);
}

TEST_F(PartViewModelTest, ADenseDisplayHasMoreOfItsPixelsInAnImagePixel) {
    view.setDisplay({1, 2});
    view.showActualSize();
    EXPECT_DOUBLE_EQ(view.scale(), 0.5);
    EXPECT_EQ(view.percent(), 100);
    view.setDisplay({1.5, 1});
    view.fit();
    EXPECT_DOUBLE_EQ(view.scale(), (424 - 36) / 800.0) << "margins grow with the display's scale";
}

TEST_F(PartViewModelTest, ZoomingLeavesWhatIsUnderThePointerThere) {
    const ViewPoint pointer{300, 200};
    const ViewPoint before = view.toImage(pointer);
    view.zoomBy(6, pointer);
    EXPECT_NEAR(view.toImage(pointer).x, before.x, 1);
    EXPECT_NEAR(view.toImage(pointer).y, before.y, 1);
    view.zoomBy(-2.5, pointer);
    EXPECT_NEAR(view.toImage(pointer).x, before.x, 2);
}

TEST_F(PartViewModelTest, DraggingAndScrollingEndAtTheMargins) {
    EXPECT_TRUE(view.beginDrag({10, 10}));
    view.dragTo({0, 0});
    EXPECT_EQ(view.horizontal().position, 0) << "there is nothing beside a fitted image";
    view.zoomBy(6, {212, 171});
    const int from = view.horizontal().position;
    view.beginDrag({100, 100});
    view.dragTo({60, 100});
    EXPECT_EQ(view.horizontal().position, from + 40);
    view.endDrag();
    view.dragTo({0, 100});
    EXPECT_EQ(view.horizontal().position, from + 40);
    view.scrollTo(1'000'000, -5);
    EXPECT_EQ(view.vertical().position, 0);
    EXPECT_EQ(view.horizontal().position, view.horizontal().most);
    EXPECT_NEAR(view.imagePlace().right() + 12, 424, 1);
    view.fit();
    EXPECT_EQ(view.horizontal().position, 0);
}

TEST_F(PartViewModelTest, CharactersWithoutLabelsWarnOnlyWhenSomethingIsTyped) {
    found({"A", "B", ""}, -1);
    auto marks = view.marks();
    ASSERT_EQ(marks.size(), 3u);
    EXPECT_EQ(marks[1].tag, "B");
    EXPECT_FALSE(marks[1].warns);
    EXPECT_EQ(marks[2].tag, "?");
    EXPECT_TRUE(marks[2].warns);
    EXPECT_NE(marks[1].color(), marks[2].color());
    found({"", "", ""}, 0);
    for (const CharacterMark& mark : view.marks()) EXPECT_TRUE(mark.tag.empty() && !mark.warns);
    found({"A", "B", "C"}, 2);
    marks = view.marks();
    ASSERT_EQ(marks.size(), 4u);
    EXPECT_EQ(marks[3].tag, "+2") << "typed characters that no box is left for";
    EXPECT_FALSE(marks[3].framed);
    EXPECT_GT(marks[3].box.left, marks[2].box.right());
    view.setImage(nullptr, "none");
    EXPECT_TRUE(view.marks().empty());
}

TEST_F(PartViewModelTest, BoxesStandAroundTheirCharactersAndTagsBelowThem) {
    found({"A", "B"}, 0);
    const CharacterMark mark = view.marks().front();
    EXPECT_NEAR(mark.box.left, onView(100, 0).x - 2, 1e-9);
    EXPECT_NEAR(mark.box.bottom(), onView(0, 130).y + 2, 1e-9);
    const ViewBox tag = view.tagPlace(mark, 30, 12);
    EXPECT_NEAR(tag.left + tag.width / 2, mark.box.left + mark.box.width / 2, 1e-9);
    EXPECT_GT(tag.top, mark.box.bottom());
    EXPECT_GE(tag.width, 30);
    EXPECT_EQ(view.tagTextHeight(mark), 9) << "small boxes have tags that can be read";
    view.zoomBy(12, {212, 171});
    view.scrollTo(view.horizontal().most, 0);
    EXPECT_TRUE(view.marks().empty()) << "out of view";
}

TEST_F(PartViewModelTest, APlaceIsInTheSmallestBoxAroundIt) {
    view.setCharacters({{{100, 100, 200, 200, 0}, ""}, {{120, 120, 140, 140, 0}, ""}}, 0);
    EXPECT_EQ(view.characterAt(onView(130, 130)), 1);
    EXPECT_EQ(view.characterAt(onView(180, 180)), 0);
    EXPECT_EQ(view.characterAt(onView(300, 180)), -1);
}

}  // namespace
}  // namespace dravik::test
