// What the views of Qt do beyond what those of every window system do.
#include <QScrollBar>

#include "Shown.h"
#include "shown/Numbers.h"

namespace dravik::test {
namespace {

TEST(Views, BarsOfAChartAreFoundByScreenReadersAndGoWithTheScene) {
    Chart chart("chart");
    chart.setScale({-10, 100, 90, 0});
    ChartScene scene;
    scene.bars = {{0, 50, 10, 50, 0, true, "A"}, {20, 40, 10, 40, 0, false, "hidden"}};
    chart.setScene(scene);
    Shown shown(column({item(chart).stretched()}), 518, 418);
    QWidget& view = shown.view("chart");
    QAccessibleInterface* heard = QAccessible::queryAccessibleInterface(&view);
    ASSERT_EQ(heard->childCount(), 1);
    QAccessibleInterface* bar = heard->child(0);
    EXPECT_EQ(bar->rect(), QRect(view.mapToGlobal(QPoint(50, 200)), QSize(50, 200)));
    chart.setScene({});
    EXPECT_FALSE(bar->isValid());
    EXPECT_EQ(heard->childCount(), 0);
}

TEST(Views, EscapeAnswersAQuestionWithNo) {
    Shown shown(column({}));
    shown.expectBox(std::nullopt);
    EXPECT_EQ(shown.platform.messageBox({"Delete?", "Delete", MessageBox::Buttons::YesNo}), Answer::No);
    EXPECT_TRUE(shown.allCameUp());
}

class GridViews : public testing::Test {
  protected:
    std::shared_ptr<Numbers> fill(int rows, int columns) {
        auto source = std::make_shared<Numbers>(rows, columns);
        grid.setSource(source);
        settle();
        return source;
    }

    Grid grid{"grid"};
    Shown shown{column({item(grid).stretched()})};
    GridView& view = shown.view<GridView>("grid");
};

TEST_F(GridViews, ColumnsAreWideEnoughForEachTableAndTheFirstOnesCentred) {
    grid.setAlign(0, CellAlign::Center);
    fill(9, 2);
    const int narrow = view.columnWidth(1);
    fill(100000, 3);
    for (int i = 0; i < 3; ++i)
        EXPECT_GE(view.columnWidth(i), view.fontMetrics().horizontalAdvance(QStringLiteral("99999"))) << i;
    EXPECT_GT(view.columnWidth(1), narrow) << "as wide as the numbers of this table";
    const auto alignment = [&](int column) {
        return view.model()->index(0, column).data(Qt::TextAlignmentRole).toInt();
    };
    EXPECT_EQ(alignment(0), static_cast<int>(Qt::AlignCenter));
    EXPECT_NE(alignment(1), alignment(0));
}

TEST_F(GridViews, AskOnlyForWhatIsInViewAndShowOneSelection) {
    const auto source = fill(100000, 54);
    EXPECT_EQ(view.model()->rowCount(), 99999);
    view.scrollToBottom();
    shown.page->grab();
    EXPECT_LT(source->asked, 60000);

    const auto selected = [&]() -> std::vector<int> {
        const auto ranges = view.selectionModel()->selection();
        if (ranges.size() != 1) return {};
        return {ranges[0].top() + 1, ranges[0].left(), ranges[0].bottom() + 1, ranges[0].right()};
    };
    grid.select(9, 2, 7, 3);
    EXPECT_EQ(selected(), (std::vector{7, 2, 9, 3}));
    fill(6, 5);  // the selection is cut to fewer records
    EXPECT_EQ(selected(), (std::vector{5, 2, 5, 3}));
}

TEST_F(GridViews, StayWhereTheyAreUntilTheOperatorGoesElsewhere) {
    fill(1000, 54);
    auto& down = *view.verticalScrollBar();
    shown.focus(grid);
    down.setValue(90);
    shown.key(Key::A, kCtrlMask);
    EXPECT_EQ(down.value(), 90);
    EXPECT_EQ(grid.rowSelection(), 999);
    grid.select(1, 1, 1, 1);
    fill(1000, 54);
    EXPECT_EQ(down.value(), 90);
}

TEST(Views, AToolbarIsOneTabStopWhoseButtonsArrowKeysReach) {
    Toolbar bar("bar");
    for (const char* key : {"One", "Two", "Three"}) bar.add(key, key);
    bar.button("Two").setEnabled(false);
    Label cell("cell", "A");
    cell.setCell(true);
    std::string pressed;
    bar.buttonClick.subscribe([&](ToolButton& button) { pressed += button.key; });
    Shown shown(column({item(bar), item(cell)}));
    shown.view("bar.One").setFocus(Qt::TabFocusReason);
    shown.key(Key::Right);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    EXPECT_EQ(pressed, "Three");
    shown.key(Key::Tab);
    EXPECT_TRUE(shown.focused(cell));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(QApplication::focusWidget(), &shown.view("bar.Three")) << "where it was";
}

}  // namespace
}  // namespace dravik::test
