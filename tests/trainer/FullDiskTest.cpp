// The disk gets full in the middle of an include, at any place: it is said why, and what the operator does
// next - Undo, Learn - neither deletes older samples nor includes the image once more.
#include <sys/resource.h>

#include "support/FullDisk.h"
#include "trainer/support/TrainerFixture.h"

namespace dravik::test {
namespace {

using FullDiskTest = TrainerFixture;

TEST_F(FullDiskTest, AnIncludeThatFailsLeadsNothingAstray) {
    ASSERT_EQ(workspace.learnDigits("digits").status, 0);
    const auto journal = toPath(workspace.fontFile("digits") + ".journal");
    int failed = 0, included = 0;
    for (int room = 0; room < 1200; room += 10) {
        start();
        trainer->control().showFont("digits");
        const int learnt = committed();
        include("975");
        const int before = committed();
        draw("86");
        type("86");
        {
            const auto size = std::filesystem::exists(journal) ? std::filesystem::file_size(journal) : 0;
            const FullDisk disk(size + static_cast<rlim_t>(room));
            enter();
        }
        EXPECT_THAT(trainer->tool().GetUncommittedSamples(), IsEmpty()) << room;
        const bool hasFailed = committed() == before;
        if (hasFailed) {
            ++failed;
            EXPECT_THAT(trainer->acts().notice(), HasSubstr("kept")) << room;
            EXPECT_EQ(screen().sbr.panel("LastInclude").text(), "975") << room;
        } else {
            ++included;
            EXPECT_EQ(committed(), before + 2) << room;
        }
        platform.boxes.clear();
        if (auto& undo = screen().overview.tlbChars.button("Undo"); undo.enabled()) undo.press();
        // That of the include before, where this one has included nothing.
        const int left = committed();
        EXPECT_EQ(left, hasFailed ? learnt : before) << room;
        screen().train.cmdTrain.press();
        EXPECT_THAT(platform.boxes, IsEmpty()) << "no samples are left that Learn would ask about";
        screen().train.cmdStop.press();
        EXPECT_EQ(committed(), left) << room;
        while (committed() > learnt && trainer->acts().undoText()) trainer->acts().undo();
    }
    EXPECT_GT(failed, 5);
    EXPECT_GT(included, 1);
}

}  // namespace
}  // namespace dravik::test
