// Locks and records of processes that are killed, fight for the same file, or meet a full disk.
#include <signal.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "base/AppendFile.h"
#include "base/AtomicFile.h"
#include "base/FileLock.h"
#include "support/FullDisk.h"
#include "support/Testing.h"

namespace dravik {
namespace {

const std::vector<std::uint8_t> kRecord(100, 'r');

// Runs in a process of its own that does not come back.
template <class Body>
pid_t inProcess(Body body) {
    const pid_t child = fork();
    if (child == 0) {
        try {
            body();
        } catch (...) {
            _exit(9);
        }
        _exit(0);
    }
    return child;
}

int statusOf(pid_t child) {
    int status = -1;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

TEST(FilesOfProcesses, AKilledHolderFreesItsLockAndItsRecordsStay) {
    const TemporaryFolder folder;
    const std::string lock = folder.path("a.lock"), file = folder.path("a.journal");
    int ready[2];
    ASSERT_EQ(pipe(ready), 0);
    const pid_t child = inProcess([&] {
        const auto held = FileLock::take(lock);
        AppendFile journal(file);
        for (int i = 0; i < 3; ++i) journal.append(kRecord);
        if (!held || write(ready[1], "x", 1) != 1) _exit(1);
        pause();
    });
    char signalled = 0;
    ASSERT_EQ(read(ready[0], &signalled, 1), 1);
    EXPECT_FALSE(FileLock::take(lock));
    EXPECT_EQ(FileLock::holder(lock).find("process " + std::to_string(child) + " on "), 0u);
    kill(child, SIGKILL);
    EXPECT_EQ(statusOf(child), -SIGKILL);
    EXPECT_TRUE(FileLock::take(lock));
    EXPECT_EQ(readWholeFile(file, 1000).size(), 300u);
    close(ready[0]);
    close(ready[1]);
}

// Each holder takes its file away when it is done, while the others are opening it.
TEST(FilesOfProcesses, NoTwoHoldTheLockAtATime) {
    const TemporaryFolder folder;
    const std::string lock = folder.path("a.lock");
    struct Shared {
        volatile int inside = 0;
        int taken = 0;
    };
    void* memory = mmap(nullptr, sizeof(Shared), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    ASSERT_NE(memory, MAP_FAILED);
    auto* shared = new (memory) Shared;
    std::vector<pid_t> children;
    for (int i = 0; i < 6; ++i)
        children.push_back(inProcess([&] {
            for (int taken = 0; taken < 300;) {
                const auto held = FileLock::take(lock);
                if (!held) continue;
                const int before = shared->inside;
                shared->inside = before + 1;
                if (before != 0) _exit(2);
                sched_yield();
                if (shared->inside != 1) _exit(3);
                shared->inside = 0;
                ++shared->taken;
                ++taken;
            }
        }));
    for (const pid_t child : children) EXPECT_EQ(statusOf(child), 0);
    EXPECT_EQ(shared->taken, 6 * 300);
    munmap(memory, sizeof(Shared));
}

TEST(FilesOfProcesses, ARecordIsWholeOrNotThereWhenTheDiskIsFull) {
    const TemporaryFolder folder;
    const std::string file = folder.path("a.journal");
    AppendFile journal(file);
    journal.append(kRecord);
    for (const rlim_t most : {rlim_t{100}, rlim_t{150}, rlim_t{199}}) {
        const test::FullDisk full(most);
        EXPECT_EQ(test::refusal([&] { journal.append(kRecord); }), 61) << most;
        EXPECT_EQ(readWholeFile(file, 1000).size(), 100u) << most;
    }
    journal.append(kRecord);
    EXPECT_EQ(journal.size(), 200u);
    EXPECT_EQ(readWholeFile(file, 1000).size(), 200u);
}

TEST(FilesOfProcesses, ANewJournalHasTheRightsOfItsFont) {
    const TemporaryFolder folder;
    const std::string font = folder.path("a.nnd"), file = folder.path("a.journal");
    writeWholeFile(font, kRecord, false);
    ASSERT_EQ(chmod(font.c_str(), 0660), 0);
    AppendFile(file, 0, font).append(kRecord);
    struct stat rights {};
    ASSERT_EQ(stat(file.c_str(), &rights), 0);
    EXPECT_EQ(rights.st_mode & 07777, 0660u);
    // A pipe of that name is refused at once instead of waited for.
    ASSERT_EQ(mkfifo(folder.path("pipe").c_str(), 0600), 0);
    EXPECT_THROW(AppendFile(folder.path("pipe")), Failure);
}

}  // namespace
}  // namespace dravik
