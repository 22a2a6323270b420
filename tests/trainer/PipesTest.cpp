// Pipes and devices in the place of files: opening one would wait for ever.
#include <sys/resource.h>
#include <sys/stat.h>

#include "trainer/OpenedParts.h"
#include "trainer/commands/SampleList.h"
#include "trainer/support/Workspace.h"

namespace dravik::test {
namespace {

TEST(Pipes, AreRefusedAtOnceAsListsAndAsImages) {
    const Workspace workspace;
    const auto pipe = workspace.path("pipe.pgm");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    for (const std::string& name : {pipe, std::string("/dev/zero")}) {
        try {
            readSampleList(name);
            FAIL() << name;
        } catch (const SampleListError& error) {
            EXPECT_THAT(error.problems, ElementsAre(name + ": is no file"));
        }
    }
    workspace.draw("part.pgm", "1");
    OpenedParts parts(readPgm);
    EXPECT_THAT(parts.open({workspace.path("")}).problems, testing::IsEmpty());
    EXPECT_EQ(parts.count(), 1);
    EXPECT_THAT(parts.open({pipe, "/dev/zero"}).problems,
                ElementsAre(pipe + ": is no file", "/dev/zero: is no file"));
    EXPECT_EQ(parts.count(), 1);
}

}  // namespace
}  // namespace dravik::test
