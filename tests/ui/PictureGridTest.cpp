#include "support/Testing.h"
#include "ui/PictureGrid.h"

namespace dravik {

using namespace ui;
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Move = KeyMove;

struct Numbered : PictureSource {
    explicit Numbered(int count) : count_(count) {}
    int count() const override { return count_; }
    PictureItem item(int index) const override { return {{}, std::to_string(index), {}, false, {}}; }
    const int count_;
};

// 5 columns, 3 rows and a half.
PictureGrid& shown(PictureGrid& grid, int count) {
    grid.setView(5 * PictureGrid::kItemWidth + 10, 7 * PictureGrid::kItemHeight / 2, 1);
    grid.setSource(std::make_shared<Numbered>(count));
    return grid;
}

TEST(PictureGrid, KeysAndClicksSelectAsInAnyList) {
    PictureGrid grid("pictures");
    int told = 0;
    grid.selectionChanged.subscribe([&] { ++told; });
    shown(grid, 23);
    grid.move(Move::Right, 0);
    EXPECT_THAT(grid.selected(), ElementsAre(1));
    grid.move(Move::Down, kShiftMask);
    EXPECT_THAT(grid.selected(), ElementsAre(1, 2, 3, 4, 5, 6));
    grid.move(Move::Left, kShiftMask);
    EXPECT_THAT(grid.selected(), ElementsAre(1, 2, 3, 4, 5)) << "from where it began";
    grid.choose(20, kCtrlMask);
    grid.choose(2, kCtrlMask);
    EXPECT_THAT(grid.selected(), ElementsAre(1, 3, 4, 5, 20));
    grid.move(Move::End, kCtrlMask);
    EXPECT_EQ(grid.current(), 22);
    EXPECT_EQ(grid.selected().size(), 5U);
    grid.move(Move::Down, 0);
    EXPECT_EQ(grid.current(), 22) << "there is no row below";
    grid.move(Move::PageUp, 0);
    EXPECT_THAT(grid.selected(), ElementsAre(7));
    grid.move(Move::Home, kShiftMask);
    EXPECT_EQ(grid.selected().size(), 8U);
    grid.selectAll();
    EXPECT_EQ(grid.selected().size(), 23U);
    EXPECT_EQ(told, 9);
    grid.setSource(nullptr);
    grid.move(Move::Down, 0);
    EXPECT_THAT(grid.selected(), IsEmpty());
    EXPECT_EQ(grid.current(), -1);
}

TEST(PictureGrid, WhatIsCurrentIsInViewHoweverManyThereAre) {
    PictureGrid grid("pictures");
    shown(grid, 99'999);
    EXPECT_EQ(grid.seen().end, 20);
    grid.move(Move::End, 0);
    const PictureGrid::Place last = grid.itemPlace(99'998);
    EXPECT_GE(last.top, 0);
    EXPECT_LE(last.top + last.height, 7 * PictureGrid::kItemHeight / 2);
    EXPECT_LE(grid.seen().end - grid.seen().first, 25);
    EXPECT_EQ(grid.itemAt(last.left + 3, last.top + 3), 99'998);
    EXPECT_EQ(grid.itemAt(last.left + last.width + 3, last.top + 3), -1) << "behind the last one";
    EXPECT_EQ(grid.itemAt(5 * PictureGrid::kItemWidth + 3, 3), -1);
    // A narrow view at twice the size.
    grid.setView(200, 300, 2);
    EXPECT_EQ(grid.itemPlace(1).top - grid.itemPlace(0).top, 2.0 * PictureGrid::kItemHeight);
}

}  // namespace
}  // namespace dravik
