// One holder at a time, by object, named to those who come too late.
#include "base/FileLock.h"

#include "base/FileSystem.h"
#include "support/Testing.h"

namespace dravik {
namespace {

TEST(FileLock, IsHeldByOneObjectAndGoesWithIt) {
    const TemporaryFolder folder;
    const std::string file = folder.path("new/a.lock");
    {
        std::optional<FileLock> first = FileLock::take(file);
        ASSERT_TRUE(first);
        EXPECT_FALSE(FileLock::take(file)) << "a second object of the same process";
        EXPECT_EQ(FileLock::holder(file).find("process " + std::to_string(processNumber()) + " on "), 0u);
        EXPECT_NE(FileLock::holder(file).find(" since 20"), std::string::npos);
        const std::optional<FileLock> other = FileLock::take(folder.path("new/b.lock"));
        EXPECT_TRUE(other) << "of another file";

        FileLock moved(std::move(*first));
        first.reset();
        EXPECT_FALSE(FileLock::take(file)) << "the moved one still holds it";
    }
    EXPECT_FALSE(fileExists(file));
    EXPECT_TRUE(FileLock::take(file));
    EXPECT_EQ(FileLock::holder(file), "another program");

    // What a holder that was killed left behind holds nothing, and its words go.
    openFile(file, OpenFor::Writing);
    std::fputs(
        "process 1 on a machine with a very long name, which is longer than what comes, since 1970-01-01",
        openFile(file, OpenFor::Writing).get());
    const std::optional<FileLock> after = FileLock::take(file);
    ASSERT_TRUE(after);
    EXPECT_EQ(FileLock::holder(file).find("1970"), std::string::npos);

    EXPECT_THROW(FileLock::take(folder.path("new")), Failure) << "a folder";
}

}  // namespace
}  // namespace dravik
