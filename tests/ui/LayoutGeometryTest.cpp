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
    std::map<const Widget*, Box> placed(int width, int height, int dpi = 96) {
        std::map<const Widget*, Box> boxes;
        const LayoutGeometry arranged = geometry(dpi);
        for (const auto& item : arranged.place({0, 0, width, height})) boxes[item.widget] = item.box;
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
    auto boxes = placed(262, 40);
    EXPECT_EQ(boxes[&a], (Box{0, 0, 50, 40}));
    EXPECT_EQ(boxes[&b], (Box{56, 0, 50, 40}));
    EXPECT_EQ(boxes[&c], (Box{112, 0, 150, 40}));
    // So little that a share would fall below the least width: the other one pays.
    boxes = placed(62 + 70, 40);
    EXPECT_EQ(boxes[&b], (Box{56, 0, 20, 40}));
    EXPECT_EQ(boxes[&c], (Box{82, 0, 50, 40}));
    // Less than everything prefers: those that do not stretch give way last, none below its least.
    boxes = placed(80, 40);
    EXPECT_EQ(boxes[&a], (Box{0, 0, 28, 40}));
    EXPECT_EQ(boxes[&c], (Box{60, 0, 20, 40}));
    EXPECT_EQ(placed(10, 5)[&c], (Box{52, 0, 20, 10}));
}

TEST_F(Geometry, HiddenWidgetsTakeNoRoomAndSpaceTakesTheSpareLength) {
    layout = column({row({item(a), space(), item(b)}), item(c), item(d)});
    measures[&a].growsY = false;
    measures[&c].visible = false;
    EXPECT_EQ(geometry().preferred(), (Extent{86, 56}));
    auto boxes = placed(200, 100);
    EXPECT_EQ(boxes.count(&c), 0u);
    EXPECT_EQ(boxes[&a], (Box{0, 5, 50, 20})) << "what does not grow stands in the middle of its row";
    EXPECT_EQ(boxes[&b], (Box{170, 0, 30, 30}));
    EXPECT_EQ(boxes[&d], (Box{0, 36, 200, 20})) << "spare height that nobody asked for stays at the end";
    measures[&a].visible = measures[&b].visible = false;
    EXPECT_EQ(placed(200, 100)[&d].top, 0);
}

TEST_F(Geometry, TablesAlignTheirColumnsAndRows) {
    layout = table({{item(a), item(b)}, {item(c).ownSize(), item(d)}});
    measures[&d].growsY = false;
    auto boxes = placed(200, 100);
    EXPECT_EQ(boxes[&a], (Box{0, 0, 50, 74}));
    EXPECT_EQ(boxes[&b], (Box{56, 0, 144, 74})) << "the last column stretches";
    EXPECT_EQ(boxes[&c], (Box{0, 80, 40, 20}));
    EXPECT_EQ(boxes[&d], (Box{56, 80, 144, 20}));

    layout = table({{item(a), item(b)}, {item(c), item(d)}}).withColumns({1, 1});
    measures[&d].growsY = true;
    boxes = placed(206, 106);
    EXPECT_EQ(boxes[&a], (Box{0, 0, 100, 50}));
    EXPECT_EQ(boxes[&d], (Box{106, 56, 100, 50}));
    layout = table({{item(a).spanning(2)}, {item(c), item(d)}});
    EXPECT_EQ(placed(206, 106)[&a].width, 206);
}

TEST_F(Geometry, TwipsFollowTheDisplayScale) {
    layout =
        column({fixed({{&a, {150, 300, 345, 345}}, {&b, {540, 300, 345, 345}}}).atLeast(1500, 900), item(c)});
    EXPECT_EQ(placed(500, 500)[&a], (Box{10, 20, 23, 23}));
    EXPECT_EQ(geometry().preferred(), (Extent{100, 60 + 6 + 20}));
    auto boxes = placed(500, 500, 144);
    EXPECT_EQ(boxes[&a], (Box{15, 30, 35, 35}));
    EXPECT_EQ(boxes[&b], (Box{54, 30, 35, 35}));
    EXPECT_EQ(boxes[&c].top, 90 + 9);
}

TEST_F(Geometry, FromRightToLeftAllIsMirroredButTheInsidesOfFixedPlaces) {
    layout = row({item(a), fixed({{&b, {0, 0, 300, 300}}, {&c, {300, 0, 150, 300}}}),
                  column({item(d).ownSize()}).stretched()});
    std::map<const Widget*, Box> boxes;
    for (const auto& item : geometry().place({10, 0, 200, 40}, true)) boxes[item.widget] = item.box;
    EXPECT_EQ(boxes[&a], (Box{160, 0, 50, 40}));
    EXPECT_EQ(boxes[&b], (Box{124, 0, 20, 20}));
    EXPECT_EQ(boxes[&c], (Box{144, 0, 10, 20}));
    EXPECT_EQ(boxes[&d], (Box{78, 0, 40, 20})) << "what keeps its own width stands at the right";
}

TEST_F(Geometry, TextsShrinkOnlyWhereTheyAreGivenAShare) {
    measures[&a].minimum = measures[&a].preferred;
    measures[&a].shrunkWidth = 12;
    layout = row({item(a), item(b)});
    EXPECT_EQ(geometry().minimum().width, 76);
    layout = row({item(a).stretched(), item(b)});
    EXPECT_EQ(geometry().minimum().width, 38);
    EXPECT_EQ(placed(60, 30)[&a].width, 24);
}

}  // namespace
}  // namespace dravik::test
