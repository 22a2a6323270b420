#include "trainer/window/PartStrip.h"

#include "trainer/support/Workspace.h"

namespace dravik::test {
namespace {

class PartStripTest : public testing::Test {
  protected:
    PartStripTest() {
        std::vector<std::string> paths;
        for (int i = 0; i < 100; ++i)
            paths.push_back(folder.write("part" + std::to_string(100 + i) + ".png", ""));
        parts.open(paths);
        decoded.clear();
    }
    void decodeAll() {
        while (strip.decodeTimer().enabled()) strip.decodeTimer().tick();
    }

    Workspace folder;
    std::vector<std::string> decoded;
    OpenedParts parts{[this](const std::string& path) {
        decoded.push_back(path);
        if (path.ends_with("part103.png")) throw Failure(RuntimeError::FileNotFound, "broken");
        return GreyImage(200, 50, 9);
    }};
    PartStrip strip{parts};
};

TEST_F(PartStripTest, OnlyPicturesInViewAreDecodedAndOnceEach) {
    EXPECT_FALSE(strip.decodeTimer().enabled()) << "nothing is in view yet";
    strip.setWidth(500);
    decodeAll();
    EXPECT_EQ(decoded.size(), 4u) << "the current one is there already";
    ASSERT_TRUE(strip.picture(3));
    EXPECT_TRUE(strip.picture(3)->empty()) << "it cannot be decoded, and is not tried again";
    EXPECT_EQ(strip.picture(4)->width(), 104);
    EXPECT_FALSE(strip.picture(5));
    strip.scrollTo(1000 * 116);
    decodeAll();
    EXPECT_TRUE(strip.picture(99));
    EXPECT_FALSE(strip.picture(50));
}

}  // namespace
}  // namespace dravik::test
