// The two other surfaces that are drawn by hand: the cells of the overview and the histogram.
#include "activex/win32/Look.h"
#include "support/Accessible.h"
#include "widgets/Chart.h"
#include "widgets/Label.h"
#include "win32/support/ShownPage.h"

namespace dravik::test {
namespace {

struct CellField {
    CellField() {
        std::vector<std::pair<Widget*, Place>> places;
        for (int i = 0; i < 6; ++i) {
            cells.push_back(std::make_unique<Label>("cell", std::string(1, static_cast<char>('A' + i))));
            cells.back()->setCell(true);
            places.push_back({cells.back().get(), {300 + i % 3 * 400, 300 + i / 3 * 400, 345, 345}});
        }
        arrangement = fixed(places);
    }
    std::vector<std::unique_ptr<Label>> cells;
    Layout arrangement;
};

TEST(Cell, MouseAndKeysReachTheModelInTwips) {
    CellField field;
    Label& cell = *field.cells[0];
    ShownPage shown(std::move(field.arrangement));
    std::vector<MouseEvent> downs;
    cell.mouseDown.subscribe([&](const MouseEvent& event) { downs.push_back(event); });
    field.cells[1]->mouseMove.subscribe(
        [&](const MouseEvent&) { field.cells[1]->setToolTip("B -- 12 trained"); });
    shown.mouse(cell, WM_RBUTTONDOWN, 10, 20, MK_RBUTTON | MK_SHIFT | MK_CONTROL);
    ASSERT_EQ(downs.size(), 1u);
    EXPECT_EQ(downs[0].button, kRightButton);
    EXPECT_EQ(downs[0].shift, kShiftMask | kCtrlMask);
    EXPECT_DOUBLE_EQ(downs[0].x, 150);
    EXPECT_DOUBLE_EQ(downs[0].y, 300);

    shown.page->focusFirst();
    EXPECT_TRUE(shown.focused(cell));
    pressKey(VK_F10, kShiftMask);
    pressKey(VK_APPS);
    ASSERT_EQ(downs.size(), 3u);
    EXPECT_NEAR(downs[2].x, 345 / 2.0, 15);
    pressKey(VK_RIGHT);
    EXPECT_TRUE(shown.focused(*field.cells[1]));
    const AccessibleWindow board(GetFocus());
    EXPECT_EQ(board.name(2), L"B -- 12 trained");
    EXPECT_EQ(board.parts(), 6);
    EXPECT_EQ(board.role(2), ROLE_SYSTEM_CELL);
    EXPECT_EQ(board.state(2), STATE_SYSTEM_FOCUSABLE | STATE_SYSTEM_FOCUSED);
    EXPECT_EQ(board.state(1), STATE_SYSTEM_FOCUSABLE);

    // What is between the cells, hidden or disabled takes no click; a click takes the focus, which is told.
    std::string told;
    field.cells[1]->lostFocus.subscribe([&] { told += "-B "; });
    cell.gotFocus.subscribe([&] { told += "+A "; });
    shown.mouse(cell, WM_LBUTTONDOWN, 3, 3, MK_LBUTTON);
    EXPECT_EQ(told, "-B +A ");
    EXPECT_EQ(downs.size(), 4u);
    shown.mouse(cell, WM_RBUTTONDOWN, 25, 3, MK_RBUTTON);
    cell.setEnabled(false);
    shown.mouse(cell, WM_RBUTTONDOWN, 3, 3, MK_RBUTTON);
    EXPECT_EQ(downs.size(), 4u);
    settle();
    EXPECT_FALSE(shown.focused(cell)) << "the focus must not stay on what is disabled";
}

TEST(Cell, AFieldIsOneTabStopWithArrowKeysInside) {
    CellField field;
    Label caption("caption", "plain");
    Label last("last", "Z");
    last.setCell(true);
    ShownPage shown(column({std::move(field.arrangement), item(caption), item(last).ownSize()}));
    const auto isAt = [&](int index) { return shown.focused(*field.cells[static_cast<std::size_t>(index)]); };
    shown.page->focusFirst();
    pressKey(VK_DOWN);
    EXPECT_TRUE(isAt(3));
    pressKey(VK_RIGHT);
    pressKey(VK_RIGHT);
    pressKey(VK_RIGHT);  // nothing stands there
    EXPECT_TRUE(isAt(5));
    pressKey(VK_TAB);
    EXPECT_TRUE(shown.focused(last));
    pressKey(VK_TAB, kShiftMask);
    EXPECT_TRUE(isAt(5)) << "Tab comes back to where it left";
    field.cells[4]->setVisible(false);
    pressKey(VK_LEFT);
    EXPECT_TRUE(isAt(3));
    pressKey(VK_END);
    EXPECT_TRUE(isAt(5));
    pressKey(VK_HOME);
    EXPECT_TRUE(isAt(0));
}

TEST(Cell, EveryStateIsReadable) {
    Label cell("cell", "W");
    cell.setCell(true);
    cell.setBold(true);
    ShownPage shown(column({item(cell).atLeast(600, 600).ownSize(), space()}));
    const Look look(96, {});
    for (const Color color : {kScrollBarColor, rgb(255, 255, 255), rgb(255, 192, 192), rgb(255, 255, 128),
                              rgb(0, 255, 0), rgb(128, 128, 255), rgb(0, 0, 0)}) {
        cell.setBackColor(color);
        const auto image = shown.picture(cell);
        const COLORREF ground = colorAt(*image, 3, image->height() / 2);
        EXPECT_EQ(ground, look.color(color));
        double most = 1;
        for (int y = 3; y < image->height() - 3; ++y)
            for (int x = 3; x < image->width() - 3; ++x)
                most = std::max(most, contrast(ground, colorAt(*image, x, y)));
        EXPECT_GT(most, 4.5) << std::hex << color;
    }
    EXPECT_GT(contrast(look.color(kScrollBarColor), look.background()), 1.24);
    Ambient dark;
    dark.backColor = RGB(40, 40, 40);
    dark.foreColor = RGB(240, 240, 240);
    const Look darkLook(96, dark);
    EXPECT_GT(contrast(darkLook.color(kScrollBarColor), darkLook.background()), 1.24);
    EXPECT_GT(
        contrast(darkLook.textColorOn(kScrollBarColor, kWindowTextColor), darkLook.color(kScrollBarColor)),
        4.5);
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
    ShownPage shown(column({item(chart).stretched()}), 518, 418);
    const HWND view = shown.view(chart);
    auto image = picture(view);
    ASSERT_EQ(image->width(), 500);
    ASSERT_EQ(image->height(), 400);
    const COLORREF red = RGB(255, 0, 0);
    EXPECT_EQ(colorAt(*image, 51, 201), red);  // the bar's left-top corner, sharp
    EXPECT_NE(colorAt(*image, 49, 201), red);
    EXPECT_NE(colorAt(*image, 51, 199), red);
    EXPECT_EQ(countOf(*image, red), 50 * 200);
    EXPECT_EQ(countOf(*image, 0), 0) << "the hidden one is not drawn";

    std::vector<MouseEvent> moves;
    std::vector<MouseEvent> downs;
    chart.mouseMove.subscribe([&](const MouseEvent& event) { moves.push_back(event); });
    chart.mouseDown.subscribe([&](const MouseEvent& event) { downs.push_back(event); });
    mouse(view, WM_RBUTTONDOWN, 250, 100, MK_RBUTTON);
    ASSERT_EQ(downs.size(), 1u);
    EXPECT_DOUBLE_EQ(downs[0].x, 40);
    EXPECT_DOUBLE_EQ(downs[0].y, 75);

    // By key from bar to bar, over the hidden one, to a place just below the top even of an empty bar.
    SetFocus(view);
    settle();
    moves.clear();
    pressKey(VK_RIGHT);
    pressKey(VK_RIGHT);
    pressKey(VK_RIGHT);
    ASSERT_EQ(moves.size(), 2u);
    EXPECT_NEAR(moves[0].x, 5, 0.2);
    EXPECT_NEAR(moves[0].y, 25, 0.3);
    EXPECT_NEAR(moves[1].x, 45, 0.2);
    EXPECT_LT(moves[1].y, 0);
    int keys = 0;
    chart.keyDown.subscribe([&](int, int) { ++keys; });
    pressKey(VK_APPS);
    EXPECT_EQ(keys, 0) << "the menu would come up twice";
    ASSERT_EQ(downs.size(), 2u);
    EXPECT_NEAR(downs[1].x, 45, 0.2);
    EXPECT_EQ(accessibleName(view, 2), L"C, 0 samples");

    chart.setScene({});  // fewer bars than the pointer stood on
    pressKey(VK_APPS);
    EXPECT_EQ(downs.size(), 3u);
}

}  // namespace
}  // namespace dravik::test
