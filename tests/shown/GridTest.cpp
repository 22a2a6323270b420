// The samples grid: it asks for what is seen, and selects as a flex grid does.
#include "Shown.h"
#include "shown/Numbers.h"

namespace dravik::test {
namespace {

using Cells = std::vector<int>;

class GridOnScreen : public testing::Test {
  protected:
    void fill(int rows, int columns) {
        grid.setSource(std::make_shared<Numbers>(rows, columns));
        settle();
    }
    Point at(int row, int column) const { return shown.middleOf(grid, row, column); }
    Cells selection() const {
        return {grid.row(), grid.column(), grid.rowSelection(), grid.columnSelection()};
    }

    Grid grid{"grid"};
    Shown shown{column({item(grid).stretched()})};
};

TEST_F(GridOnScreen, SelectsByMouseAndKeys) {
    fill(20, 4);
    shown.click(grid, at(5, 1));
    EXPECT_EQ(selection(), (Cells{5, 1, 5, 1}));
    shown.key(Key::Down, kShiftMask);
    shown.key(Key::Down, kShiftMask);
    shown.key(Key::Right, kShiftMask);
    EXPECT_EQ(selection(), (Cells{5, 1, 7, 2}));
    // Upwards past the current cell: that stays where it is.
    for (int i = 0; i < 4; ++i) shown.key(Key::Up, kShiftMask);
    EXPECT_EQ(selection(), (Cells{5, 1, 3, 2}));
    shown.click(grid, at(8, 0), kShiftMask);
    EXPECT_EQ(selection(), (Cells{5, 1, 8, 0}));
    shown.key(Key::A, kCtrlMask);
    EXPECT_EQ(selection(), (Cells{1, 0, 19, 3}));
    shown.drag(grid, at(2, 0), at(4, 3));
    EXPECT_EQ(selection(), (Cells{2, 0, 4, 3}));

    grid.select(9, 2, 11, 3);
    shown.key(Key::Down, kShiftMask);
    EXPECT_EQ(selection(), (Cells{9, 2, 12, 3}));
    shown.key(Key::Home, kCtrlMask);
    shown.key(Key::Up);
    shown.key(Key::Left);
    EXPECT_EQ(selection(), (Cells{1, 0, 1, 0}));
}

TEST_F(GridOnScreen, HeadingsMenusAndKeysReachTheModel) {
    fill(20, 4);
    std::vector<Cells> pressed;
    std::vector<std::pair<int, int>> keys;
    int shift = 0;
    grid.mouseDown.subscribe([&](const MouseEvent& event) {
        shift = event.shift;
        pressed.push_back({event.button, grid.mouseRow(), grid.mouseColumn()});
    });
    grid.keyDown.subscribe([&](int key, int shift) { keys.emplace_back(key, shift); });
    shown.focus(grid);
    grid.select(2, 1, 3, 2);
    shown.click(grid, at(0, 1));
    shown.press(grid, kRightButton, at(0, 1));
    shown.press(grid, kRightButton, at(4, 2));
    EXPECT_EQ(selection(), (Cells{2, 1, 3, 2})) << "headings and the right button leave the selection";
    shown.press(grid, kRightButton, at(4, 2), kShiftMask);
    EXPECT_EQ(shift, kShiftMask);
    pressed.pop_back();
    grid.select(6, 1, 6, 1);
    shown.key(Key::Menu);
    shown.key(Key::Enter, kCtrlMask);
    EXPECT_EQ(pressed, (std::vector<Cells>{{kLeftButton, 0, 1},
                                           {kRightButton, 0, 1},
                                           {kRightButton, 4, 2},
                                           {kRightButton, 6, 1},
                                           {kLeftButton, 0, 1}}));
    EXPECT_EQ(selection(), (Cells{6, 1, 6, 1}));
    keys.clear();
    shown.key(Key::Delete);
    shown.key(Key::C, kCtrlMask);
    EXPECT_EQ(std::count(keys.begin(), keys.end(), std::pair(kKeyDelete, 0)), 1);
    EXPECT_EQ(std::count(keys.begin(), keys.end(), std::pair(kKeyInsert, kCtrlMask)), 1);
}

}  // namespace
}  // namespace dravik::test
