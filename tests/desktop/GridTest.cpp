// The samples grid: virtual, with the selection of a flex grid kept in step on both sides.
#include <QHeaderView>

#include "ShownForm.h"
#include "desktop/GridView.h"
#include "widgets/Grid.h"

namespace dravik {
namespace {

class CountingSource : public GridSource {
  public:
    CountingSource(int rows, int columns) : rows_(rows), columns_(columns) {}
    int rows() const override { return rows_; }
    int columns() const override { return columns_; }
    std::string text(int row, int column) const override {
        ++asked;
        return std::to_string(row) + "/" + std::to_string(column);
    }
    mutable long asked = 0;

  private:
    int rows_;
    int columns_;
};

class GridTest : public testing::Test {
  protected:
    void fill(int rows, int columns) {
        source = std::make_shared<CountingSource>(rows, columns);
        grid.setSource(source);
        settle();
    }
    QPoint centre(int row, int column) const {
        return view.visualRect(view.model()->index(row - 1, column)).center();
    }
    std::vector<int> selection() const {
        return {grid.row(), grid.column(), grid.rowSelection(), grid.columnSelection()};
    }
    std::vector<int> shownSelection() const {
        const auto ranges = view.selectionModel()->selection();
        if (ranges.size() != 1) return {};
        return {ranges[0].top() + 1, ranges[0].left(), ranges[0].bottom() + 1, ranges[0].right()};
    }

    Grid grid{"grid"};
    ShownForm shown{column({item(grid).stretched()})};
    GridView& view = shown.view<GridView>("grid");
    std::shared_ptr<CountingSource> source;
};

TEST_F(GridTest, AsksOnlyForWhatIsInView) {
    fill(100000, 54);
    EXPECT_EQ(view.model()->rowCount(), 99999);
    EXPECT_EQ(view.model()->headerData(2, Qt::Horizontal).toString(), "0/2");
    view.scrollToBottom();
    shown.page->grab();
    EXPECT_LT(source->asked, 60000);
    grid.setRedraw(false);
    EXPECT_EQ(view.model()->rowCount(), 0);
    grid.setRedraw(true);
    EXPECT_EQ(view.model()->rowCount(), 99999);
    EXPECT_GT(view.columnWidth(2), 30);
}

TEST_F(GridTest, KeysAndMouseSelectAsAFlexGridDoes) {
    fill(20, 5);
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, centre(5, 1));
    EXPECT_EQ(selection(), (std::vector{5, 1, 5, 1}));
    QTest::keyClick(&view, Qt::Key_Down, Qt::ShiftModifier);
    QTest::keyClick(&view, Qt::Key_Down, Qt::ShiftModifier);
    QTest::keyClick(&view, Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_EQ(selection(), (std::vector{5, 1, 7, 2}));
    EXPECT_EQ(shownSelection(), (std::vector{5, 1, 7, 2}));
    // Upwards past the current cell: that stays where it is.
    for (int i = 0; i < 4; ++i) QTest::keyClick(&view, Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_EQ(selection(), (std::vector{5, 1, 3, 2}));
    EXPECT_EQ(shownSelection(), (std::vector{3, 1, 5, 2}));
    QTest::mouseClick(view.viewport(), Qt::LeftButton, Qt::ShiftModifier, centre(8, 0));
    EXPECT_EQ(selection(), (std::vector{5, 1, 8, 0}));
    QTest::keyClick(&view, Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(selection(), (std::vector{1, 0, 19, 4}));

    QTest::mousePress(view.viewport(), Qt::LeftButton, {}, centre(2, 0));
    QMouseEvent drag(QEvent::MouseMove, centre(4, 3), view.viewport()->mapToGlobal(centre(4, 3)),
                     Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(view.viewport(), &drag);
    QTest::mouseRelease(view.viewport(), Qt::LeftButton, {}, centre(4, 3));
    EXPECT_EQ(selection(), (std::vector{2, 0, 4, 3}));

    grid.select(9, 2, 11, 3);
    EXPECT_EQ(shownSelection(), (std::vector{9, 2, 11, 3}));
    QTest::keyClick(&view, Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(selection(), (std::vector{9, 2, 12, 3}));
    fill(6, 5);  // the selection is cut to fewer records
    EXPECT_EQ(shownSelection(), (std::vector{5, 2, 5, 3}));
}

TEST_F(GridTest, HeadingsMenusAndKeysReachTheModel) {
    fill(20, 5);
    std::vector<std::vector<int>> pressed;
    std::vector<std::pair<int, int>> keys;
    grid.mouseDown.subscribe([&](const MouseEvent& event) {
        pressed.push_back({event.button, grid.mouseRow(), grid.mouseColumn()});
    });
    grid.keyDown.subscribe([&](int key, int shift) { keys.emplace_back(key, shift); });

    auto* header = view.horizontalHeader();
    const QPoint heading(header->sectionViewportPosition(1) + header->sectionSize(1) / 2,
                         header->height() / 2);
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, heading);
    QTest::mousePress(header->viewport(), Qt::RightButton, {}, heading);
    QTest::mousePress(view.viewport(), Qt::RightButton, {}, centre(4, 2));
    grid.select(6, 1, 6, 1);
    QTest::keyClick(&view, Qt::Key_Menu);
    QTest::keyClick(&view, Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(pressed, (std::vector<std::vector<int>>{{kLeftButton, 0, 1},
                                                      {kRightButton, 0, 1},
                                                      {kRightButton, 4, 2},
                                                      {kRightButton, 6, 1},
                                                      {kLeftButton, 0, 1}}));
    EXPECT_EQ(selection(), (std::vector{6, 1, 6, 1}));

    keys.clear();
    QTest::keyClick(&view, Qt::Key_Delete);
    QTest::keyClick(&view, Qt::Key_Insert, Qt::ControlModifier);
    QTest::keyClick(&view, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(std::count(keys.begin(), keys.end(), std::pair(kKeyDelete, 0)), 1);
    EXPECT_EQ(std::count(keys.begin(), keys.end(), std::pair(kKeyInsert, kCtrlMask)), 2);
}

}  // namespace
}  // namespace dravik
