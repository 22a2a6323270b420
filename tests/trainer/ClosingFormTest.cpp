#include "trainer/window/ClosingForm.h"

#include "trainer/support/FakeHistory.h"
#include "trainer/support/TrainerFixture.h"
#include "trainer/window/RestoreForm.h"

namespace dravik::test {
namespace {

class ClosingFormTest : public testing::Test {
  protected:
    ClosingForm& form(bool training = false) {
        shown.emplace(platform, history, training, [this](const std::string&) { return file; });
        shown->activate();
        return *shown;
    }
    void press(const char* button) { in<Button>(*shown, button).press(); }

    ScriptedPlatform platform;
    FakeHistory history;
    std::string file;
    std::optional<ClosingForm> shown;
};

TEST_F(ClosingFormTest, EveryUnsavedFontIsNamedAndSavedOrNoneIs) {
    history.unsaved = {"hack", "lines", "ocrb"};
    form();
    EXPECT_THAT(in<ListBox>(*shown, "lbFonts").items(), ElementsAre("hack", "lines", "ocrb"));
    shown->cancelButton->press();
    EXPECT_FALSE(shown->mayEnd());
    EXPECT_FALSE(shown->loaded());
    EXPECT_EQ(history.asked, "");

    form();
    in<ListBox>(*shown, "lbFonts").setListIndex(1);
    press("cmdSave");
    EXPECT_TRUE(shown->loaded()) << "two are left";
    EXPECT_THAT(in<ListBox>(*shown, "lbFonts").items(), ElementsAre("hack", "ocrb"));
    shown->defaultButton->press();
    EXPECT_TRUE(shown->mayEnd());
    EXPECT_FALSE(shown->loaded());
    EXPECT_EQ(history.asked, "save lines; save hack; save ocrb; ");

    history.unsaved = {"hack", "lines"};
    form();
    press("cmdDiscard");
    EXPECT_TRUE(shown->mayEnd());
    EXPECT_THAT(history.asked, HasSubstr("discard hack; discard lines; "));
}

TEST_F(ClosingFormTest, ASaveThatFailsKeepsTheQuestionAndOffersAnotherPlace) {
    history.unsaved = {"hack", "lines"};
    history.locked = {"hack", "full.nnd"};
    platform.boxAnswers.assign(4, Answer::Ok);
    form();
    EXPECT_FALSE(in<Button>(*shown, "cmdKeep").visible());
    press("cmdSaveAll");
    EXPECT_FALSE(shown->mayEnd());
    EXPECT_TRUE(shown->loaded());
    EXPECT_EQ(history.asked, "save lines; ") << "one that fails does not keep the others";
    EXPECT_THAT(platform.boxes.back().text, HasSubstr("hack: No space left"));

    press("cmdSaveCopy");
    EXPECT_EQ(platform.boxes.size(), 1U) << "the operator has chosen no file";
    file = "full.nnd";
    press("cmdSaveCopy");
    EXPECT_THAT(platform.boxes.back().text, HasSubstr("No space left for full.nnd"));
    file = "else.nnd";
    press("cmdSaveCopy");
    EXPECT_THAT(history.asked, HasSubstr("export hack to else.nnd"));
    EXPECT_TRUE(shown->loaded()) << "the font's own file is still without the changes";
    press("cmdDiscard");
    EXPECT_FALSE(shown->mayEnd());
    EXPECT_THAT(platform.boxes.back().text, HasSubstr("end the program with Keep for Later"));
    press("cmdKeep");
    EXPECT_TRUE(shown->mayEnd()) << "a full disk is no reason to stay";
    EXPECT_THAT(history.unsaved, ElementsAre("hack"));

    form();
    history.locked.clear();
    press("cmdSaveAll");
    EXPECT_TRUE(shown->mayEnd());
}

TEST_F(ClosingFormTest, ARunThatGoesOnIsAskedAboutAlone) {
    form(true);
    EXPECT_TRUE(in<Label>(*shown, "lblTraining").visible());
    EXPECT_FALSE(in<Button>(*shown, "cmdDiscard").visible());
    press("cmdSaveAll");
    EXPECT_TRUE(shown->mayEnd());
    EXPECT_EQ(history.asked, "");
}

TEST(RestoreForm, AVersionIsRestoredUnderItsOwnOrAnotherNameOrTheReasonIsSaid) {
    ScriptedPlatform platform;
    FakeHistory history;
    history.locked = {"lines"};
    history.kept = {{"hack", "v3", {}, FontVersion::Kind::Saved, 222, true},
                    {"lines", "v2", {}, FontVersion::Kind::Deleted, 1, false},
                    {"lines", "v1", {}, FontVersion::Kind::Discarded, 12, true}};
    RestoreForm form(
        platform, history.versions(""), "lines",
        [&](const FontVersion& version, const std::string& name) { history.restoreVersion(version, name); });
    form.activate();
    auto& list = in<ListBox>(form, "lbVersions");
    auto& name = in<TextBox>(form, "txtName");
    EXPECT_EQ(list.listIndex(), 1) << "the newest one of the font that is shown";
    EXPECT_THAT(list.items()[1],
                testing::AllOf(HasSubstr("lines"), HasSubstr(": 1 sample, not trained (deleted)")));
    EXPECT_EQ(name.text(), "lines");
    platform.boxAnswers = {Answer::Ok};
    form.defaultButton->press();
    EXPECT_THAT(platform.boxes.at(0).text, HasSubstr("No space left for lines"));
    EXPECT_TRUE(form.loaded());

    for (const char* bad : {"", "  ", "new"}) {
        name.setText(bad);
        EXPECT_FALSE(form.defaultButton->enabled()) << bad;
    }
    list.setListIndex(2);
    EXPECT_EQ(name.text(), "lines");
    name.setText(" of/today ");
    form.defaultButton->press();
    EXPECT_FALSE(form.loaded());
    EXPECT_EQ(history.asked, "restore v1 as of_today; ");

    RestoreForm empty(platform, {}, "lines", {});
    empty.activate();
    EXPECT_FALSE(empty.defaultButton->enabled());
    EXPECT_THAT(in<Label>(empty, "lblHint").caption(), HasSubstr("no older versions"));
}

}  // namespace
}  // namespace dravik::test
