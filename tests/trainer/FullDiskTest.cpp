// The disk gets full in the middle of an include, at any place: it is said why, and what the operator does
// next - Undo, Learn - neither deletes older samples nor includes the image once more.
#include <gmock/gmock.h>
#include <sys/resource.h>

#include <filesystem>
#include <optional>

#include "base/Paths.h"
#include "screen/context/Screen.h"
#include "support/FullDisk.h"
#include "tool/Samples.h"
#include "trainer/FontActs.h"
#include "trainer/Trainer.h"
#include "trainer/support/Operator.h"
#include "trainer/support/PgmFile.h"
#include "trainer/support/Workspace.h"

namespace dravik::test {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

TEST(FullDisk, AnIncludeThatFailsLeadsNothingAstray) {
    Workspace workspace;
    ASSERT_EQ(workspace.learnDigits("digits").status, 0);
    const std::string image = workspace.draw("86.pgm", "86");
    const auto journal = toPath(workspace.fontFile("digits") + ".journal");
    int failed = 0, included = 0;
    for (int room = 0; room < 1200; room += 10) {
        Operator platform;
        trainer::Trainer program(platform, JobFolder(workspace.jobs()), readPgm, false);
        program.control().showFont("digits");
        program.parts().open({image});
        auto& screen = program.control().screen();
        const auto committed = [&] {
            const auto table = program.tool().GetSampleData(tool::kAllCommitted, tool::kSampleFields);
            return table ? table->upperRow() : 0;
        };
        const int before = committed();
        screen.sample.txtSampleInput.setText("86");
        {
            const auto size = std::filesystem::exists(journal) ? std::filesystem::file_size(journal) : 0;
            const FullDisk disk(size + static_cast<rlim_t>(room));
            screen.sample.cmdInclude.press();
        }
        EXPECT_THAT(program.tool().GetUncommittedSamples(), IsEmpty()) << room;
        if (committed() == before) {
            ++failed;
            EXPECT_THAT(program.acts().notice(), HasSubstr("kept")) << room;
        } else {
            ++included;
            EXPECT_EQ(committed(), before + 2) << room;
        }
        platform.boxes.clear();
        if (auto& undo = screen.overview.tlbChars.button("Undo"); undo.enabled()) undo.press();
        EXPECT_EQ(committed(), before) << room;
        screen.train.cmdTrain.press();
        EXPECT_THAT(platform.boxes, IsEmpty()) << "no samples are left that Learn would ask about";
        screen.train.cmdStop.press();
        EXPECT_EQ(committed(), before) << room;
    }
    EXPECT_GT(failed, 5);
    EXPECT_GT(included, 1);
}

}  // namespace
}  // namespace dravik::test
