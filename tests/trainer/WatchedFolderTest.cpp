#include "trainer/window/WatchedFolder.h"

#include "trainer/support/Workspace.h"

namespace dravik::test {
namespace {

struct WatchedFolderTest : testing::Test {
    WatchedFolderTest() {
        workspace.makeFolder("inbox");
        folder.arrived = [this](const std::vector<std::string>& paths) {
            for (const std::string& path : paths) arrived.push_back(fromPath(toPath(path).filename()));
        };
    }
    // So many looks, as the timer has them made.
    void look(int count) {
        for (int i = 0; i <= count; ++i) {
            folder.timer().tick();
            std::this_thread::sleep_for(std::chrono::milliseconds(30));
        }
    }

    Workspace workspace;
    WatchedFolder folder{readPgm};
    std::vector<std::string> arrived;
};

TEST_F(WatchedFolderTest, TellsOfEachNewImageOnceWhenItIsWhole) {
    workspace.draw("inbox/before.pgm", "1");
    EXPECT_EQ(refusal([&] { folder.watch(workspace.path("absent")); }), 76);
    EXPECT_EQ(folder.folder(), "");
    folder.watch(workspace.path("inbox"));
    look(3);
    EXPECT_THAT(arrived, IsEmpty()) << "what was there before";

    // An image that is written in pieces, with a pause in which it does not grow.
    const std::string bytes = Workspace::content(workspace.draw("whole.pgm", "12"));
    std::ofstream out(toPath(workspace.path("inbox/slow.pgm")), std::ios::binary);
    out << bytes.substr(0, bytes.size() / 2) << std::flush;
    workspace.draw("inbox/quick.pgm", "3");
    workspace.write("inbox/notes.txt", "no image");
    look(4);
    EXPECT_THAT(arrived, ElementsAre("quick.pgm"));
    out << bytes.substr(bytes.size() / 2);
    out.close();
    look(4);
    EXPECT_THAT(arrived, ElementsAre("quick.pgm", "slow.pgm"));

    // What never becomes an image is told in the end, so that somebody looks at it.
    workspace.write("inbox/broken.pgm", "P5 nonsense");
    look(8);
    EXPECT_EQ(arrived.size(), 2u);
    look(30);
    EXPECT_THAT(arrived, ElementsAre("quick.pgm", "slow.pgm", "broken.pgm"));

    folder.stop();
    EXPECT_FALSE(folder.timer().enabled());
}

}  // namespace
}  // namespace dravik::test
