#include "trainer/OpenedParts.h"

#include "engine/image/Thumbnail.h"
#include "trainer/support/Workspace.h"

namespace dravik::test {

using namespace ui;
namespace {

class OpenedPartsTest : public testing::Test {
  protected:
    OpenedPartsTest() {
        std::filesystem::create_directories(workspace.path("parts/inner.png"));
        workspace.draw("parts/b.pgm", "2");
        workspace.draw("parts/a.PGM", "1");
        workspace.write("parts/c.png", "this is a text");
        workspace.write("parts/notes.txt", "not an image");
        parts.listChanged.subscribe([this] { events += "list "; });
        parts.currentChanged.subscribe([this] { events += std::to_string(parts.current()) + " "; });
    }

    std::vector<std::string> names() const {
        std::vector<std::string> all;
        for (int i = 0; i < parts.count(); ++i) all.push_back(parts.name(i));
        return all;
    }

    Workspace workspace;
    OpenedParts parts{readPgm};
    std::string events;
};

TEST_F(OpenedPartsTest, AFileIsOpenedOnceAndAFolderGivesItsImagesInOrderOfName) {
    parts.open({workspace.path("parts/b.pgm"), workspace.path("parts/../parts/./b.pgm")});
    EXPECT_EQ(events, "list 0 ");
    EXPECT_THAT(parts.open({workspace.path("parts")}).problems, IsEmpty());
    EXPECT_THAT(names(), ElementsAre("b.pgm", "a.PGM", "c.png"));
    EXPECT_EQ(parts.current(), 0);
    events.clear();
    parts.open({workspace.path("parts")});
    EXPECT_EQ(events, "");
}

TEST_F(OpenedPartsTest, WhatHoldsNoImageIsNamed) {
    workspace.makeFolder("empty");
    const auto opened = parts.open({workspace.path("none.png"), workspace.path("parts/notes.txt"),
                                    workspace.path("empty"), workspace.path("parts/a.PGM")});
    EXPECT_THAT(opened.problems, ElementsAre(workspace.path("none.png") + ": no such file or folder",
                                             HasSubstr("notes.txt: is not a grey image"),
                                             workspace.path("empty") + ": no images in this folder"));
    EXPECT_EQ(parts.count(), 1);
}

TEST_F(OpenedPartsTest, APartThatCannotBeDecodedStaysWithItsProblem) {
    parts.open({workspace.path("parts")});
    EXPECT_TRUE(parts.next());
    EXPECT_TRUE(parts.next());
    EXPECT_TRUE(parts.image().empty());
    EXPECT_THAT(parts.problem(), HasSubstr("c.png: is not a grey image"));
    EXPECT_FALSE(parts.next());
    EXPECT_TRUE(parts.previous());
    EXPECT_EQ(parts.problem(), "");
    EXPECT_FALSE(parts.image().empty());
}

TEST_F(OpenedPartsTest, ClosingKeepsTheCurrentPartOrGoesToItsFollower) {
    parts.open({workspace.path("parts")});
    parts.setCurrent(1);
    events.clear();
    parts.close(0);
    EXPECT_EQ(parts.current(), 0);
    EXPECT_EQ(parts.name(0), "b.pgm");
    EXPECT_EQ(events, "list ");
    parts.close(0);
    EXPECT_THAT(parts.problem(), HasSubstr("c.png"));
    parts.close(0);
    EXPECT_EQ(parts.current(), -1);
    EXPECT_EQ(parts.problem(), "");
    EXPECT_EQ(events, "list list 0 list -1 ");
}

TEST(Thumbnail, AveragesAreasAndKeepsProportions) {
    GreyImage image(300, 100, 200);
    for (int y = 0; y < 100; ++y) image(151, y) = 0;
    const auto small = thumbnailOf(image, 30);
    ASSERT_EQ(small.width(), 30);
    ASSERT_EQ(small.height(), 10);
    EXPECT_EQ(small(14, 5), 200);
    EXPECT_EQ(small(15, 5), 180) << "one dark column of ten";
    EXPECT_EQ(thumbnailOf(GreyImage(5, 3, 7), 100).width(), 5) << "never enlarged";
}

}  // namespace
}  // namespace dravik::test
