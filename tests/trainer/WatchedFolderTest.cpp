#include "trainer/window/WatchedFolder.h"

#include "trainer/support/PgmFile.h"
#include "trainer/support/Workspace.h"

namespace dravik::test {
namespace {

struct WatchedFolderTest : testing::Test {
    WatchedFolderTest() {
        std::filesystem::create_directory(toPath(inbox));
        folder.arrived = [this](const std::vector<std::string>& paths) {
            for (const std::string& path : paths) arrived.push_back(fromPath(toPath(path).filename()));
        };
        folder.thereChanged = [this] { said += folder.isThere() ? "back " : "gone "; };
    }
    // So many looks, as the timer has them made.
    void look(int count) {
        for (int i = 0; i <= count; ++i) {
            folder.timer().tick();
            std::this_thread::sleep_for(std::chrono::milliseconds(30));
        }
    }
    std::string fileIn(const char* name) { return workspace.path(std::string("inbox/") + name); }

    Workspace workspace;
    const std::string inbox = workspace.path("inbox");
    WatchedFolder folder{readPgm};
    std::vector<std::string> arrived;
    std::string said;
};

TEST_F(WatchedFolderTest, TellsOfEachNewImageOnceWhenItIsWhole) {
    workspace.draw("inbox/before.pgm", "1");
    folder.watch(inbox);
    look(3);
    EXPECT_THAT(arrived, IsEmpty()) << "what was there before";

    // An image that is written in pieces, with a pause in which it does not grow.
    const std::string whole = workspace.draw("whole.pgm", "12");
    std::ifstream in(toPath(whole), std::ios::binary);
    const std::string bytes((std::istreambuf_iterator<char>(in)), {});
    std::ofstream out(toPath(fileIn("slow.pgm")), std::ios::binary);
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
}

TEST_F(WatchedFolderTest, GoesOnWhenTheFolderIsBackAndTellsThatItIsGone) {
    EXPECT_EQ(refusal([&] { folder.watch(workspace.path("absent")); }), 76);
    EXPECT_EQ(folder.folder(), "");
    folder.watch(inbox);
    std::filesystem::rename(toPath(inbox), toPath(workspace.path("away")));
    look(3);
    EXPECT_EQ(said, "gone ");
    std::filesystem::rename(toPath(workspace.path("away")), toPath(inbox));
    workspace.draw("inbox/a.pgm", "1");
    look(4);
    EXPECT_EQ(said, "gone back ");
    EXPECT_THAT(arrived, ElementsAre("a.pgm"));
    folder.stop();
    workspace.draw("inbox/b.pgm", "1");
    look(4);
    EXPECT_EQ(arrived.size(), 1u);
    EXPECT_FALSE(folder.timer().enabled());
}

}  // namespace
}  // namespace dravik::test
