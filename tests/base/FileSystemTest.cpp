// Names and folders as the platform has them, on Linux and on Windows alike.
#include "base/FileSystem.h"

#include "base/AtomicFile.h"
#include "support/Testing.h"

namespace dravik {

namespace {

TEST(FileSystem, FoldersOfAnyNameAreMadeListedAndRead) {
    const TemporaryFolder base;
    const std::string outer = base.path() + "Pr\u00fcfung \u65e5\u672c";
    const std::string inner = outer + "/\U0001F600";
    const std::vector<std::uint8_t> content{1, 2, 3};
    writeWholeFile(inner + "/a.nnd", content, true);
    writeWholeFile(inner + "/a.nnd", content, true);
    EXPECT_EQ(readWholeFile(inner + "/a.nnd", 10), content);
    EXPECT_EQ(entryKind(inner), EntryKind::Folder);
    EXPECT_EQ(entryKind(inner + "/a.nnd"), EntryKind::File);
    EXPECT_EQ(entryKind(inner + "/b.nnd"), EntryKind::None);

    std::error_code error;
    std::vector<std::string> names = namesIn(inner + "/", error);
    EXPECT_FALSE(error);
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names, (std::vector<std::string>{"a.nnd", "a.nnd.bak"}));
    EXPECT_EQ(namesIn(outer, error), std::vector<std::string>{"\U0001F600"});
    EXPECT_TRUE(namesIn(outer + "/none", error).empty());
    EXPECT_TRUE(error) << "a folder that is not there is no empty one";

    // What is in the way of a folder is told, and stays.
    makeFolders(inner + "/a.nnd/deeper", error);
    EXPECT_TRUE(error);
    EXPECT_EQ(fileSize(inner + "/a.nnd", error), content.size());
    EXPECT_EQ(nameOf(folderOf(inner + "/a.nnd")), "\U0001F600");
    EXPECT_EQ(folderOf("a.nnd"), "");
}

}  // namespace
}  // namespace dravik
