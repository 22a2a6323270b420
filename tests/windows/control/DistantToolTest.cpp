// A tool in another process, which the control reaches through the system's proxies and which may die.
#include "windows/control/support/Bench.h"
#include "windows/control/support/DistantTool.h"

namespace dravik::test {
namespace {

TEST(DistantTools, AreTaughtLikeNearOnesAndMayDie) {
    const TemporaryFolder folder;
    DistantTool tool;
    ASSERT_EQ(tool.step()->put_JobsFolder(Bstr(folder.path()).get()), S_OK);
    Bench bench("strict");
    bench.bind("HELLO", tool.step());
    bench.include("HELLO");
    bench.learn();
    bench.press(L"Save Font");
    EXPECT_TRUE(bench.waitForStatus(L"Saved font")) << utf8(bench.status());
    Bstr text;
    ASSERT_EQ(tool.step()->ReadImage(text.put()), S_OK);
    EXPECT_EQ(text.utf8(), "HELLO");

    bench.show("LOLO");
    bench.type(L"LOLO");
    tool.end();
    bench.press(L"&Include");
    EXPECT_EQ(bench.status(), L"Adjust OCR tool and try Include again.");
    bench.step = nullptr;
    bench.host->close();
    EXPECT_THAT(bench.robot.surprises(), IsEmpty());
}

}  // namespace
}  // namespace dravik::test
