// Records that are appended one by one: what was torn goes, what is there stays.
#include "base/AppendFile.h"

#include "base/AtomicFile.h"
#include "support/Testing.h"

namespace dravik {
namespace {

std::vector<std::uint8_t> bytesOf(std::string_view text) {
    return {text.begin(), text.end()};
}

std::string contentOf(const std::string& file) {
    const std::vector<std::uint8_t> bytes = readWholeFile(file, 1 << 20);
    return {bytes.begin(), bytes.end()};
}

TEST(AppendFile, GoesOnBehindTheLastWholeRecord) {
    const TemporaryFolder folder;
    const std::string file = folder.path("new/sub/a.journal");
    {
        AppendFile made(file);
        made.append(bytesOf("one."));
        EXPECT_EQ(contentOf(file), "one.") << "others see it at once";
        AppendFile moved(std::move(made));
        moved.append(bytesOf("two."));
        moved.append(bytesOf("half a reco"));
        moved.flush();
        EXPECT_EQ(moved.size(), 19u);
    }
    {
        AppendFile opened(file, 8);
        EXPECT_EQ(contentOf(file), "one.two.");
        opened.append(bytesOf("three."));
        opened.flush();
    }
    EXPECT_EQ(contentOf(file), "one.two.three.");
    // What was read of it before is no longer all there.
    EXPECT_EQ(test::refusal([&] { AppendFile(file, 15); }), 57);
    EXPECT_EQ(contentOf(file), "one.two.three.");
    EXPECT_THROW(AppendFile(folder.path("new/sub")), Failure) << "a folder";
    EXPECT_THROW(AppendFile(file + "/b"), Failure) << "a file in the folder's place";
}

}  // namespace
}  // namespace dravik
