// The two surfaces that are drawn by hand: the cells of the overview and the histogram.
#include "Shown.h"

namespace dravik::test {
namespace {

struct CellField {
    CellField() {
        std::vector<std::pair<Widget*, Place>> places;
        for (int i = 0; i < 6; ++i) {
            cells.push_back(std::make_unique<Label>("cell" + std::to_string(i),
                                                    std::string(1, static_cast<char>('A' + i))));
            cells.back()->setCell(true);
            places.push_back({cells.back().get(), {150 + i % 3 * 450, 150 + i / 3 * 450, 345, 345}});
        }
        arrangement = fixed(places);
    }
    Label& at(int index) { return *cells[static_cast<std::size_t>(index)]; }

    std::vector<std::unique_ptr<Label>> cells;
    Layout arrangement;
};

TEST(Cell, MouseAndKeysReachTheModelInTwips) {
    CellField field;
    Shown shown(column({std::move(field.arrangement), space()}));
    std::vector<MouseEvent> downs;
    field.at(0).mouseDown.subscribe([&](const MouseEvent& event) { downs.push_back(event); });
    field.at(1).mouseMove.subscribe([&](const MouseEvent&) { field.at(1).setToolTip("B -- 12 trained"); });
    shown.press(field.at(0), kRightButton, {10, 20}, kShiftMask | kCtrlMask);
    ASSERT_EQ(downs.size(), 1u);
    EXPECT_EQ(downs[0].button, kRightButton);
    EXPECT_EQ(downs[0].shift, kShiftMask | kCtrlMask);
    EXPECT_DOUBLE_EQ(downs[0].x, 150);
    EXPECT_DOUBLE_EQ(downs[0].y, 300);

    shown.focus(field.at(0));
    shown.key(Key::F10, kShiftMask);
    shown.key(Key::Menu);
    ASSERT_EQ(downs.size(), 3u);
    EXPECT_EQ(downs[2].button, kRightButton);
    EXPECT_NEAR(downs[2].x, 345 / 2.0, 15);
    shown.key(Key::Right);
    EXPECT_TRUE(shown.focused(field.at(1)));
    EXPECT_EQ(shown.heard(field.at(1)), "B -- 12 trained");
    EXPECT_EQ(shown.role(field.at(1)), "cell");

    std::string told;
    field.at(1).lostFocus.subscribe([&] { told += "-B "; });
    field.at(0).gotFocus.subscribe([&] { told += "+A "; });
    shown.click(field.at(0));
    EXPECT_EQ(told, "-B +A ");
}

TEST(Cell, AFieldIsOneTabStopWithArrowKeysInside) {
    CellField field;
    TextBox before("before");
    Label caption("caption", "plain");
    Label last("last", "Z");
    last.setCell(true);
    Shown shown(
        column({item(before), std::move(field.arrangement), item(caption), item(last).ownSize(), space()}));
    shown.focus(before);
    shown.key(Key::Tab);
    EXPECT_TRUE(shown.focused(field.at(0)));
    shown.key(Key::Down);
    EXPECT_TRUE(shown.focused(field.at(3)));
    for (int i = 0; i < 3; ++i) shown.key(Key::Right);  // once more than there are cells
    EXPECT_TRUE(shown.focused(field.at(5)));
    shown.key(Key::Tab);
    EXPECT_TRUE(shown.focused(last));
    shown.key(Key::Tab, kShiftMask);
    EXPECT_TRUE(shown.focused(field.at(5))) << "Tab comes back to where it left";
}

TEST(Cell, EveryStateIsReadableInLightAndDark) {
    Label cell("cell", "W");
    cell.setCell(true);
    cell.setBold(true);
    Shown shown(column({item(cell).atLeast(600, 600).ownSize(), space()}));
    for (const bool dark : {false, true}) {
        shown.useDark(dark);
        for (const Color color : {kScrollBarColor, rgb(255, 255, 255), rgb(255, 192, 192), rgb(255, 255, 128),
                                  rgb(0, 255, 0), rgb(128, 128, 255), rgb(0, 0, 0)}) {
            cell.setBackColor(color);
            const Picture seen = shown.picture(cell);
            const Color ground = seen.at(3, seen.height / 2);
            EXPECT_EQ(ground, shown.colorOf(color));
            double most = 1;
            for (int y = 3; y < seen.height - 3; ++y)
                for (int x = 3; x < seen.width - 3; ++x)
                    most = std::max(most, Shown::contrast(ground, seen.at(x, y)));
            EXPECT_GT(most, 4.5) << std::hex << color;
        }
    }
    cell.setBackColor(rgb(255, 255, 255));
    const auto ink = [&] {
        const Picture seen = shown.picture(cell);
        int sum = 0;
        for (int y = 3; y < seen.height - 3; ++y)
            for (int x = 3; x < seen.width - 3; ++x) sum += 255 - greenOf(seen.at(x, y));
        return sum;
    };
    const int inFont = ink();
    cell.setBold(false);
    EXPECT_LT(ink(), inFont) << "a character of the font stands out";
}

TEST(ChartSurface, DrawsAndPointsInUserUnits) {
    Chart chart("chart");
    chart.setScale({-10, 100, 90, 0});
    ChartScene scene;
    scene.bars = {{0, 50, 10, 50, rgb(255, 0, 0), true, "A, 5 samples"},
                  {20, 40, 10, 40, rgb(0, 0, 0), false, "hidden"},
                  {40, 0, 10, 0, rgb(0, 0, 0), true, "C, 0 samples"}};
    chart.setScene(scene);
    Shown shown(column({item(chart).stretched()}), 518, 418);
    const Picture seen = shown.picture(chart);
    ASSERT_EQ(seen.width, 500);
    ASSERT_EQ(seen.height, 400);
    const Color red = rgb(255, 0, 0);
    EXPECT_EQ(seen.at(51, 201), red);  // the bar's left-top corner, sharp
    EXPECT_EQ(seen.count(red), 50 * (shown.focused(chart) ? 199 : 200))
        << "the frame of the focus takes a row";
    EXPECT_EQ(seen.count(0), 0) << "the hidden one is not drawn";

    std::vector<MouseEvent> moves;
    std::vector<MouseEvent> downs;
    chart.mouseMove.subscribe([&](const MouseEvent& event) { moves.push_back(event); });
    chart.mouseDown.subscribe([&](const MouseEvent& event) { downs.push_back(event); });
    shown.press(chart, kRightButton, {250, 100});
    ASSERT_EQ(downs.size(), 1u);
    EXPECT_DOUBLE_EQ(downs[0].x, 40);
    EXPECT_DOUBLE_EQ(downs[0].y, 75);

    // Keys are the form's, which moves the one pointer that there is; each menu key comes once.
    shown.focus(chart);
    settle();
    moves.clear();
    std::vector<int> keys;
    chart.keyDown.subscribe([&](int key, int) { keys.push_back(key); });
    shown.key(Key::Right);
    shown.key(Key::Menu);
    EXPECT_EQ(keys, (std::vector{39, kKeyMenu}));
    shown.key(Key::F10, kShiftMask);
    constexpr int kShiftKey = 16;
    std::erase(keys, kShiftKey);
    EXPECT_EQ(keys.size(), 3u) << "the menu would come up twice";
    EXPECT_EQ(downs.size(), 1u);
    EXPECT_TRUE(moves.empty());
    const Picture unmarked = shown.picture(chart);
    chart.setPointed(0);
    EXPECT_NE(shown.picture(chart).pixels, unmarked.pixels);
    EXPECT_EQ(shown.role(chart), "chart");
    EXPECT_EQ(shown.heard(chart, 2), "C, 0 samples");

    // A bar is told from others by more than its colour.
    scene.bars[0].hatched = true;
    chart.setScene(scene);
    EXPECT_LT(shown.picture(chart).count(red), 50 * 190);
    EXPECT_GT(shown.picture(chart).count(red), 50 * 100);
    chart.setPointed(2);
    chart.setScene({});  // fewer bars than the pointer stood on
    shown.picture(chart);
}

}  // namespace
}  // namespace dravik::test
