// The two surfaces that are drawn by hand: the cells of the overview and the histogram.
#include <QAccessible>
#include <QImage>

#include "ShownForm.h"
#include "desktop/AccessibleRoles.h"
#include "desktop/CellView.h"
#include "desktop/ChartView.h"
#include "desktop/Theme.h"
#include "widgets/Chart.h"
#include "widgets/Label.h"

namespace dravik {
namespace {

TEST(Cell, MouseAndKeysReachTheModelInTwips) {
    Label cell("cell", "A");
    cell.setCell(true);
    ShownForm shown(column({item(cell).atLeast(600, 600).ownSize(), space()}));
    std::vector<MouseEvent> downs;
    cell.mouseDown.subscribe([&](const MouseEvent& event) { downs.push_back(event); });
    cell.mouseMove.subscribe([&](const MouseEvent&) { cell.setToolTip("A -- 12 trained"); });
    auto& view = shown.view<CellView>("cell");

    QTest::mousePress(&view, Qt::RightButton, Qt::ShiftModifier | Qt::ControlModifier, QPoint(10, 20));
    ASSERT_EQ(downs.size(), 1u);
    EXPECT_EQ(downs[0].button, kRightButton);
    EXPECT_EQ(downs[0].shift, kShiftMask | kCtrlMask);
    EXPECT_DOUBLE_EQ(downs[0].x, 150);
    EXPECT_DOUBLE_EQ(downs[0].y, 300);

    view.clearFocus();
    view.setFocus(Qt::TabFocusReason);
    EXPECT_EQ(view.toolTip(), "A -- 12 trained");
    EXPECT_EQ(view.accessibleName(), "A -- 12 trained");
    QAccessibleInterface* heard = QAccessible::queryAccessibleInterface(&view);
    ASSERT_NE(heard, nullptr);
    EXPECT_EQ(heard->role(), QAccessible::Cell);
    EXPECT_EQ(heard->text(QAccessible::Name), "A -- 12 trained");
    QTest::keyClick(&view, Qt::Key_F10, Qt::ShiftModifier);
    QTest::keyClick(&view, Qt::Key_Menu);
    ASSERT_EQ(downs.size(), 3u);
    EXPECT_EQ(downs[2].button, kRightButton);
    EXPECT_NEAR(downs[2].x, view.width() * 15 / 2.0, 8);
}

// Colours in the middle of the left edge's inside, and the farthest from it anywhere, which is the text.
std::pair<QColor, double> paintedColors(QWidget& view) {
    const QImage image = view.grab().toImage();
    const QColor ground = image.pixelColor(3, image.height() / 2);
    double most = 1;
    for (int y = 3; y < image.height() - 3; ++y)
        for (int x = 3; x < image.width() - 3; ++x)
            most = std::max(most, contrast(ground, image.pixelColor(x, y)));
    return {ground, most};
}

TEST(Cell, EveryStateIsReadableInLightAndDark) {
    const QPalette before = QApplication::palette();
    Label cell("cell", "W");
    cell.setCell(true);
    cell.setBold(true);
    ShownForm shown(column({item(cell).atLeast(600, 600).ownSize(), space()}));
    auto& view = shown.view<CellView>("cell");
    for (const Theme theme : {Theme::Light, Theme::Dark}) {
        useTheme(theme);
        settle();
        const QPalette palette = QApplication::palette();
        for (const Color color : {kScrollBarColor, rgb(255, 255, 255), rgb(255, 192, 192), rgb(255, 255, 128),
                                  rgb(0, 255, 0), rgb(128, 128, 255), rgb(0, 0, 0)}) {
            cell.setBackColor(color);
            const auto [ground, textContrast] = paintedColors(view);
            EXPECT_EQ(ground, qtColor(color, palette));
            EXPECT_GT(textContrast, 4.5) << std::hex << color;
        }
        EXPECT_GT(contrast(qtColor(kScrollBarColor, palette), palette.color(QPalette::Window)), 1.25);
        EXPECT_GT(contrast(qtColor(kScrollBarColor, palette), Qt::white), 1.25);
    }
    QApplication::setPalette(before);
}

ChartScene twoBars() {
    ChartScene scene;
    scene.bars = {{0, 50, 10, 50, rgb(255, 0, 0), true, "A, 5 samples"},
                  {20, 40, 10, 40, rgb(0, 0, 0), false, "hidden"},
                  {40, 0, 10, 0, rgb(0, 0, 0), true, "C, 0 samples"}};
    return scene;
}

TEST(ChartSurface, DrawsAndPointsInUserUnits) {
    Chart chart("chart");
    chart.setScale({-10, 100, 90, 0});
    chart.setScene(twoBars());
    ShownForm shown(column({item(chart).stretched()}), 518, 418);
    auto& view = shown.view<ChartView>("chart");
    ASSERT_EQ(view.size(), QSize(500, 400));

    const QImage image = view.grab().toImage();
    EXPECT_EQ(image.pixelColor(51, 201), QColor(Qt::red));  // the bar's left-top corner, sharp
    EXPECT_NE(image.pixelColor(49, 201), QColor(Qt::red));
    EXPECT_NE(image.pixelColor(51, 199), QColor(Qt::red));
    EXPECT_NE(image.pixelColor(175, 300), QColor(Qt::black));  // the hidden one

    std::vector<MouseEvent> moves;
    std::vector<MouseEvent> downs;
    chart.mouseMove.subscribe([&](const MouseEvent& event) { moves.push_back(event); });
    chart.mouseDown.subscribe([&](const MouseEvent& event) { downs.push_back(event); });
    QTest::mousePress(&view, Qt::RightButton, {}, QPoint(250, 100));
    ASSERT_EQ(downs.size(), 1u);
    EXPECT_DOUBLE_EQ(downs[0].x, 40);
    EXPECT_DOUBLE_EQ(downs[0].y, 75);

    // By key from bar to bar, over the hidden one, to a place just below the top even of an empty bar.
    view.setFocus();
    moves.clear();
    QTest::keyClick(&view, Qt::Key_Right);
    QTest::keyClick(&view, Qt::Key_Right);
    QTest::keyClick(&view, Qt::Key_Right);
    ASSERT_EQ(moves.size(), 2u);
    EXPECT_DOUBLE_EQ(moves[0].x, 5);
    EXPECT_DOUBLE_EQ(moves[0].y, 25);
    EXPECT_DOUBLE_EQ(moves[1].x, 45);
    EXPECT_LT(moves[1].y, 0);
    EXPECT_EQ(view.accessibleDescription(), "C, 0 samples");
    QTest::keyClick(&view, Qt::Key_Menu);
    ASSERT_EQ(downs.size(), 2u);
    EXPECT_DOUBLE_EQ(downs[1].x, 45);

    installAccessibleRoles();
    QAccessibleInterface* heard = QAccessible::queryAccessibleInterface(&view);
    ASSERT_TRUE(heard);
    EXPECT_EQ(heard->role(), QAccessible::Chart);
    ASSERT_EQ(heard->childCount(), 2);
    QAccessibleInterface* second = heard->child(1);
    EXPECT_EQ(second->text(QAccessible::Name), "C, 0 samples");
    EXPECT_EQ(heard->child(0)->rect(), QRect(view.mapToGlobal(QPoint(50, 200)), QSize(50, 200)));
    EXPECT_EQ(heard->indexOfChild(second), 1);

    chart.setScene({});  // fewer bars than the pointer stood on
    QTest::keyClick(&view, Qt::Key_Menu);
    EXPECT_EQ(downs.size(), 3u);
    EXPECT_FALSE(second->isValid());
    EXPECT_EQ(heard->childCount(), 0);
}

}  // namespace
}  // namespace dravik
