#include "trainer/window/RestoreForm.h"

#include "trainer/support/TrainerFixture.h"

namespace dravik::test {
namespace {

TEST(RestoreForm, AVersionIsRestoredUnderItsOwnOrAnotherNameOrTheReasonIsSaid) {
    ScriptedPlatform platform;
    std::string restored;
    RestoreForm form(platform,
                     {{"hack", "v3", {}, FontVersion::Kind::Saved, 222, true},
                      {"lines", "v2", {}, FontVersion::Kind::Deleted, 1, false},
                      {"lines", "v1", {}, FontVersion::Kind::Discarded, 12, true}},
                     "lines", [&](const FontVersion& version, const std::string& name) {
                         if (name == "lines") throw Failure(RuntimeError::DiskFull, "No space left");
                         restored += version.identifier + " as " + name;
                     });
    form.activate();
    auto& list = in<ListBox>(form, "lbVersions");
    auto& name = in<TextBox>(form, "txtName");
    EXPECT_EQ(list.listIndex(), 1) << "the newest one of the font that is shown";
    EXPECT_THAT(list.items()[1], AllOf(HasSubstr("lines"), HasSubstr(": 1 sample, not trained (deleted)")));
    platform.boxAnswers = {Answer::Ok};
    form.defaultButton->press();
    EXPECT_THAT(platform.boxes.at(0).text, HasSubstr("No space left"));
    EXPECT_TRUE(form.loaded());

    name.setText("new");
    EXPECT_FALSE(form.defaultButton->enabled());
    list.setListIndex(2);
    EXPECT_EQ(name.text(), "lines");
    name.setText(" of/today ");
    form.defaultButton->press();
    EXPECT_FALSE(form.loaded());
    EXPECT_EQ(restored, "v1 as of_today");
}

}  // namespace
}  // namespace dravik::test
