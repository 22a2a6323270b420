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
        draw("86");
        const int before = committed();
        type("86");
        {
            const auto size = std::filesystem::exists(journal) ? std::filesystem::file_size(journal) : 0;
            const FullDisk disk(size + static_cast<rlim_t>(room));
            enter();
        }
        EXPECT_THAT(trainer->tool().GetUncommittedSamples(), IsEmpty()) << room;
        if (committed() == before) {
            ++failed;
            EXPECT_THAT(trainer->acts().notice(), HasSubstr("kept")) << room;
        } else {
            ++included;
            EXPECT_EQ(committed(), before + 2) << room;
        }
        platform.boxes.clear();
        if (auto& undo = screen().overview.tlbChars.button("Undo"); undo.enabled()) undo.press();
        EXPECT_EQ(committed(), before) << room;
        screen().train.cmdTrain.press();
        EXPECT_THAT(platform.boxes, IsEmpty()) << "no samples are left that Learn would ask about";
        screen().train.cmdStop.press();
        EXPECT_EQ(committed(), before) << room;
    }
    EXPECT_GT(failed, 5);
    EXPECT_GT(included, 1);
}

}  // namespace
}  // namespace dravik::test
