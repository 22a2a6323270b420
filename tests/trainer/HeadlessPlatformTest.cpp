#include "support/Refused.h"
#include "trainer/commands/HeadlessPlatform.h"

#include <gmock/gmock.h>

#include "base/Failure.h"
#include "trainer/commands/HeadlessSession.h"
#include "trainer/commands/RunLoop.h"
#include "trainer/support/Workspace.h"

namespace dravik::test {

using namespace engine;
using namespace trainer;
using namespace ui;
namespace {

TEST(HeadlessPlatform, AgreesToNothingButCharactersThatTheFontLacks) {
    HeadlessPlatform platform;
    using Buttons = MessageBox::Buttons;
    EXPECT_EQ(platform.messageBox({"?", "Warning: Invalid Characters", Buttons::YesNo}), Answer::Yes);
    EXPECT_EQ(platform.messageBox({"?", "Font Changed", Buttons::YesNo}), Answer::No);
    EXPECT_EQ(platform.messageBox({"?", "Name Conflict", Buttons::YesNo}), Answer::No);
    EXPECT_EQ(platform.messageBox({"?", "Warning: Uncommitted Samples", Buttons::YesNoCancel}), Answer::No)
        << "Yes would include the last image a second time";
    EXPECT_EQ(platform.messageBox({"!", "Difference in character counts"}), Answer::Ok);
    ASSERT_EQ(platform.asked().size(), 5U);
    EXPECT_EQ(platform.asked()[1].box.title, "Font Changed");
    EXPECT_EQ(platform.asked()[1].answer, Answer::No);
}

TEST(HeadlessPlatform, AModalFormIsClosedWhateverItsScriptDoes) {
    HeadlessPlatform platform;
    Form form("dlgTest", "Test");
    int unloaded = 0;
    form.unloaded.subscribe([&] { ++unloaded; });
    platform.showModal(form);
    EXPECT_EQ(unloaded, 1) << "no script: cancelled";
    platform.script("dlgTest", [&](Form& shown) {
        EXPECT_TRUE(shown.loaded());
        shown.unload();
    });
    platform.showModal(form);
    EXPECT_EQ(unloaded, 2);
    platform.script("dlgTest", [](Form&) {});
    platform.showModal(form);
    EXPECT_EQ(unloaded, 3);
    EXPECT_FALSE(form.loaded());
}

TEST(HeadlessPlatform, DatesSortAndAMissingFileIsNotFound) {
    const Workspace workspace;
    HeadlessPlatform platform;
    const auto before = platform.dateText() + " 00:00:00";
    const auto date = platform.fileDateText(workspace.write("file", "x"));
    EXPECT_EQ(date.size(), before.size());
    EXPECT_GE(date, before) << "written today, after midnight";
    EXPECT_EQ(refusal([&] { platform.fileDateText(workspace.path("none")); }), 53);
}

TEST(RunLoop, TicksUntilTheTimerIsOff) {
    Timer timer("tmr", 1);
    int ticks = 0;
    int after = 0;
    timer.tick.subscribe([&] { timer.setEnabled(++ticks < 3); });
    runTimer(timer, [&] { ++after; });
    EXPECT_EQ(ticks, 0) << "an idle timer does not tick";
    timer.setEnabled(true);
    runTimer(timer, [&] { ++after; });
    EXPECT_EQ(ticks, 3);
    EXPECT_EQ(after, 3);
}

TEST(FontNames, AreFoundAsGivenOrAsTheDialogWritesThem) {
    const std::vector<std::string> fonts = {"ocrb", "my_font"};
    EXPECT_EQ(fontNamed("ocrb", fonts), "ocrb");
    EXPECT_EQ(fontNamed(" my font", fonts), "my_font");
    EXPECT_EQ(fontNamed("OCRB", fonts), std::nullopt);
    EXPECT_EQ(onOneLine(" Error\r\r\t for A \n"), "Error for A");
}

}  // namespace
}  // namespace dravik::test
