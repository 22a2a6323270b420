// Files survive failures and kills: whatever happens during a save, the old or the new version is there
// whole.
#include "base/AtomicFile.h"

#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "base/OutputFile.h"
#include "support/FullDisk.h"
#include "support/Testing.h"

namespace dravik {

namespace {

std::vector<std::uint8_t> bytesOf(const std::string& text) {
    return {text.begin(), text.end()};
}

std::string contentOf(const std::string& file) {
    const std::vector<std::uint8_t> bytes = readWholeFile(file, 1 << 20);
    return {bytes.begin(), bytes.end()};
}

std::size_t filesIn(const std::string& folder) {
    std::size_t count = 0;
    for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(folder)) ++count;
    return count;
}

TEST(AtomicFile, ReplacesAndKeepsThePreviousVersion) {
    const TemporaryFolder folder;
    const std::string file = folder.path("new/sub/a.nnd");
    writeWholeFile(file, bytesOf("one"), true);
    EXPECT_FALSE(fileExists(backupOf(file)));
    writeWholeFile(file, bytesOf("two"), true);
    writeWholeFile(file, bytesOf("three"), true);
    EXPECT_EQ(contentOf(file), "three");
    EXPECT_EQ(contentOf(backupOf(file)), "two");
    retireFile(file, true);
    EXPECT_FALSE(fileExists(file));
    EXPECT_EQ(contentOf(backupOf(file)), "three");
    EXPECT_EQ(filesIn(folder.path("new/sub")), 1u);
}

TEST(AtomicFile, FailedSaveLeavesTheOldFileAndNothingElse) {
    const TemporaryFolder folder;
    const std::string file = folder.path("a.nnd");
    writeWholeFile(file, bytesOf("old"), true);
    for (const rlim_t most : {rlim_t{0}, rlim_t{1000}, rlim_t{4096}}) {
        const test::FullDisk full(most);
        const Failure failure = test::failureOfAction(
            [&] { writeWholeFile(file, std::vector<std::uint8_t>(100'000, 'n'), true); });
        EXPECT_EQ(failure.number(), 61) << "beyond " << most << " bytes";
        EXPECT_THAT(failure.description(), testing::HasSubstr(file));
        EXPECT_EQ(contentOf(file), "old");
        EXPECT_EQ(filesIn(folder.path()), 1u);
    }
    // A folder that cannot be made, and a folder in the file's place.
    EXPECT_EQ(test::refusal([&] { writeWholeFile(file + "/b.nnd", bytesOf("x"), true); }), 76);
    std::filesystem::create_directories(folder.path("c.nnd/full"));
    EXPECT_THROW(writeWholeFile(folder.path("c.nnd"), bytesOf("x"), false), Failure);
    EXPECT_EQ(filesIn(folder.path()), 2u);
    EXPECT_THROW(readWholeFile(folder.path("c.nnd"), 100), Failure);
    EXPECT_THROW(readWholeFile(file, 2), Failure);
    // A backup that cannot be made.
    std::filesystem::create_directories(backupOf(file) + "/full");
    EXPECT_THROW(writeWholeFile(file, bytesOf("new"), true), Failure);
    EXPECT_EQ(contentOf(file), "old");
    EXPECT_EQ(filesIn(folder.path()), 3u);
}

// What is written line by line reaches the disk when the file is closed at the latest.
TEST(OutputFile, TellsOfAFullDiskWhenItIsClosed) {
    OutputFile log("/dev/full", OutputFile::Start::AtEnd);
    log.write("a line");
    EXPECT_EQ(test::refusal([&] { log.close(); }), 61);
}

// What a killed save left goes with the next one, and what another program is still writing stays. Killed
// between the new version and the backup, it leaves the previous version under a name of its own.
TEST(AtomicFile, TheNextSaveTidiesUpBehindAKilledOne) {
    const TemporaryFolder folder;
    const std::string file = folder.path("a.nnd");
    const pid_t gone = fork();
    if (gone == 0) _exit(0);
    ASSERT_EQ(waitpid(gone, nullptr, 0), gone);
    const std::string left = backupOf(file) + ".tmp-" + std::to_string(gone) + "-1";
    const std::string half = file + ".tmp-" + std::to_string(gone) + "-1";
    const std::string written = file + ".tmp-" + std::to_string(getppid()) + "-1";
    std::ofstream(half) << "half a font";
    std::ofstream(written) << "half a font";
    writeWholeFile(file, bytesOf("three"), false);
    EXPECT_FALSE(fileExists(half));
    EXPECT_TRUE(fileExists(written));
    std::ofstream(left) << "two";
    std::ofstream(left + kUnfinished) << "tw";
    std::ofstream(backupOf(file)) << "one";
    writeWholeFile(file, bytesOf("three"), false);
    EXPECT_EQ(contentOf(backupOf(file)), "two");
    // Killed before that, it leaves a second name of what is there.
    std::filesystem::create_hard_link(file, left);
    writeWholeFile(file, bytesOf("four"), false);
    EXPECT_EQ(contentOf(backupOf(file)), "two");
    EXPECT_EQ(filesIn(folder.path()), 3u);
}

// What else a file is, beside its content, is not for a save to change.
TEST(AtomicFile, ASaveKeepsRightsAndLinksAndLeavesWhatIsReadOnly) {
    const TemporaryFolder folder;
    const std::string file = folder.path("a.nnd");
    const auto modeOf = [](const std::string& path) {
        struct stat state {};
        EXPECT_EQ(lstat(path.c_str(), &state), 0);
        return state.st_mode;
    };
    writeWholeFile(file, bytesOf("one"), true);
    ASSERT_EQ(chmod(file.c_str(), 0664), 0);
    writeWholeFile(file, bytesOf("two"), true);
    EXPECT_EQ(modeOf(file) & 07777, 0664u);
    EXPECT_EQ(modeOf(backupOf(file)) & 07777, 0664u);

    std::filesystem::create_directory(folder.path("links"));
    const std::string link = folder.path("links/b.nnd");
    std::filesystem::create_symlink("../a.nnd", link);
    writeWholeFile(link, bytesOf("three"), true);
    EXPECT_TRUE(S_ISLNK(modeOf(link)));
    EXPECT_EQ(contentOf(file), "three");
    EXPECT_EQ(contentOf(backupOf(link)), "two");
    EXPECT_EQ(filesIn(folder.path()), 3u);
    std::filesystem::create_symlink("c.nnd", folder.path("c.nnd"));
    EXPECT_THROW(writeWholeFile(folder.path("c.nnd"), bytesOf("x"), true), Failure);

    ASSERT_EQ(chmod(file.c_str(), 0444), 0);
    const Failure failure = test::failureOfAction([&] { writeWholeFile(link, bytesOf("four"), true); });
    EXPECT_EQ(failure.number(), 70);
    EXPECT_NE(failure.description().find("read-only"), std::string::npos);
    EXPECT_EQ(contentOf(file), "three");
}

// A check that refuses what was written keeps file and backup.
TEST(AtomicFile, WhatIsNotFoundGoodDoesNotTakeItsPlace) {
    const TemporaryFolder folder;
    const std::string file = folder.path("a.nnd");
    writeWholeFile(file, bytesOf("one"), true);
    writeWholeFile(file, bytesOf("two"), true);
    std::string seen;
    EXPECT_EQ(test::refusal([&] {
                  writeWholeFile(file, bytesOf("three"), true, [&](const std::string& written) {
                      seen = contentOf(written);
                      throw Failure(RuntimeError::DeviceIoError);
                  });
              }),
              57);
    EXPECT_EQ(seen, "three");
    EXPECT_EQ(contentOf(file) + contentOf(backupOf(file)), "twoone");
    EXPECT_EQ(filesIn(folder.path()), 2u);
}

TEST(AtomicFile, RenamingNeverReplaces) {
    const TemporaryFolder folder;
    const std::string a = folder.path("a"), b = folder.path("b");
    writeWholeFile(a, bytesOf("A"), false);
    writeWholeFile(b, bytesOf("B"), false);
    EXPECT_THROW(renameFile(a, b), Failure);
    EXPECT_EQ(contentOf(a) + contentOf(b), "AB");
    renameFile(a, folder.path("c"));
    EXPECT_EQ(contentOf(folder.path("c")), "A");
    EXPECT_FALSE(fileExists(a));
    EXPECT_THROW(renameFile(a, folder.path("d")), Failure);
}

}  // namespace
}  // namespace dravik
