// The arithmetic of the arrangement, with made-up sizes of widgets.
#include "ui/LayoutGeometry.h"

#include "support/Testing.h"
#include "ui/Button.h"
#include "ui/Label.h"

namespace dravik::test {

using namespace ui;
namespace {

class Geometry : public testing::Test {
  protected:
    LayoutGeometry geometry(int dpi = 96) {
        return LayoutGeometry(layout, dpi, [this](const Widget& widget) { return measures.at(&widget); });
    }
    // In the order in which they are arranged.
    std::vector<Box> placed(const Box& room, int dpi = 96, bool mirrored = false) {
        std::vector<Box> boxes;
        const LayoutGeometry arranged = geometry(dpi);
        for (const auto& item : arranged.place(room, mirrored)) boxes.push_back(item.box);
        return boxes;
    }

    Layout layout;
    Label a{"a"};
    Label b{"b"};
    Label c{"c"};
    Label d{"d"};
    std::map<const Widget*, Measure> measures{{&a, {{20, 10}, {50, 20}}},
                                              {&b, {{20, 10}, {30, 30}}},
                                              {&c, {{20, 10}, {40, 20}}},
                                              {&d, {{20, 10}, {40, 20}}}};
};

TEST_F(Geometry, ARowGivesSpareWidthByStretchAndKeepsLeastWidths) {
    layout = row({item(a), item(b).stretched(1), item(c).stretched(3)});
    EXPECT_EQ(geometry().preferred(), (Extent{132, 30}));
    EXPECT_EQ(geometry().minimum(), (Extent{72, 10}));
    EXPECT_THAT(placed({0, 0, 262, 40}),
                ElementsAre(Box{0, 0, 50, 40}, Box{56, 0, 50, 40}, Box{112, 0, 150, 40}));
    // So little that a share would fall below the least width: the other one pays.
    EXPECT_THAT(placed({0, 0, 132, 40}),
                ElementsAre(Box{0, 0, 50, 40}, Box{56, 0, 20, 40}, Box{82, 0, 50, 40}));
    // Less than everything prefers: those that do not stretch give way last, none below its least.
    EXPECT_THAT(placed({0, 0, 80, 40}),
                ElementsAre(Box{0, 0, 28, 40}, Box{34, 0, 20, 40}, Box{60, 0, 20, 40}));
    EXPECT_EQ(placed({0, 0, 10, 5}).back(), (Box{52, 0, 20, 10}));
}

TEST_F(Geometry, HiddenWidgetsTakeNoRoomAndSpaceTakesTheSpareLength) {
    layout = column({row({item(a), space(), item(b)}), item(c), item(d)});
    measures[&a].growsY = false;
    measures[&c].visible = false;
    EXPECT_EQ(geometry().preferred(), (Extent{86, 56}));
    // What does not grow stands in the middle of its row; spare height that nobody asked for stays at the
    // end.
    EXPECT_THAT(placed({0, 0, 200, 100}),
                ElementsAre(Box{0, 5, 50, 20}, Box{170, 0, 30, 30}, Box{0, 36, 200, 20}));
}

TEST_F(Geometry, TablesAlignTheirColumnsAndRows) {
    layout = table({{item(a), item(b)}, {item(c).ownSize(), item(d)}});
    measures[&d].growsY = false;
    // The last column stretches.
    EXPECT_THAT(placed({0, 0, 200, 100}), ElementsAre(Box{0, 0, 50, 74}, Box{56, 0, 144, 74},
                                                      Box{0, 80, 40, 20}, Box{56, 80, 144, 20}));
    layout = table({{item(a).spanning(2)}, {item(c), item(d)}}).withColumns({1, 1});
    measures[&d].growsY = true;
    EXPECT_THAT(placed({0, 0, 206, 106}),
                ElementsAre(Box{0, 0, 206, 50}, Box{0, 56, 100, 50}, Box{106, 56, 100, 50}));
}

TEST_F(Geometry, TwipsFollowTheDisplayScale) {
    layout =
        column({fixed({{&a, {150, 300, 345, 345}}, {&b, {540, 300, 345, 345}}}).atLeast(1500, 900), item(c)});
    EXPECT_EQ(geometry().preferred(), (Extent{100, 60 + 6 + 20}));
    EXPECT_EQ(placed({0, 0, 500, 500}).front(), (Box{10, 20, 23, 23}));
    const auto boxes = placed({0, 0, 500, 500}, 144);
    EXPECT_EQ(boxes[0], (Box{15, 30, 35, 35}));
    EXPECT_EQ(boxes[1], (Box{54, 30, 35, 35}));
    EXPECT_EQ(boxes[2].top, 90 + 9);
}

TEST_F(Geometry, FromRightToLeftAllIsMirroredButTheInsidesOfFixedPlaces) {
    layout = row({item(a), fixed({{&b, {0, 0, 300, 300}}, {&c, {300, 0, 150, 300}}}),
                  column({item(d).ownSize()}).stretched()});
    // What keeps its own width stands at the right.
    EXPECT_THAT(placed({10, 0, 200, 40}, 96, true), ElementsAre(Box{160, 0, 50, 40}, Box{124, 0, 20, 20},
                                                                Box{144, 0, 10, 20}, Box{78, 0, 40, 20}));
}

TEST_F(Geometry, TextsShrinkOnlyWhereTheyAreGivenAShare) {
    measures[&a].minimum = measures[&a].preferred;
    measures[&a].shrunkWidth = 12;
    layout = row({item(a), item(b)});
    EXPECT_EQ(geometry().minimum().width, 76);
    layout = row({item(a).stretched(), item(b)});
    EXPECT_EQ(geometry().minimum().width, 38);
    EXPECT_EQ(placed({0, 0, 60, 30}).front().width, 24);
}

}  // namespace
}  // namespace dravik::test
