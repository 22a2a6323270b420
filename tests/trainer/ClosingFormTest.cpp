#include "trainer/window/ClosingForm.h"

#include "trainer/support/TrainerFixture.h"
#include "trainer/window/RestoreForm.h"

namespace dravik::test {
namespace {

// Which fonts are unsaved, of which names every operation fails, and what was asked of it: "save A; discard
// B; ".
struct FakeHistory : tool::FontHistory {
    std::vector<std::string> unsaved;
    std::set<std::string> locked;
    std::string asked;

    void endAct(std::string_view, std::string_view) override {}
    std::optional<std::string> undoWords() const override { return {}; }
    std::optional<std::string> redoWords() const override { return {}; }
    std::string undo() override { return {}; }
    std::string redo() override { return {}; }
    std::vector<std::string> unsavedFonts() const override { return unsaved; }
    void saveUnsaved(const std::string& font) override { settle("save ", font); }
    void discardUnsaved(const std::string& font) override { settle("discard ", font); }
    void exportFont(const std::string& font, const std::string& file) override {
        note("export " + font + " to ", file);
    }
    void importFont(const std::string&, const std::string&) override {}
    void keepUnsaved() override {}
    std::vector<tool::RecoveredChanges> takeRecovered() override { return {}; }
    std::vector<FontVersion> versions(const std::string&) const override { return {}; }
    void restoreVersion(const FontVersion&, const std::string&) override {}

    void note(const std::string& what, const std::string& name) {
        if (locked.count(name)) throw Failure(RuntimeError::DiskFull, "No space left for " + name);
        asked += what + name + "; ";
    }
    void settle(const char* what, const std::string& font) {
        note(what, font);
        std::erase(unsaved, font);
    }
};

class ClosingFormTest : public testing::Test {
  protected:
    void form(bool training = false) {
        shown.emplace(platform, history, training, [this](const std::string&) { return file; });
        shown->activate();
    }
    ListBox& fonts() { return in<ListBox>(*shown, "lbFonts"); }
    void press(const char* button) { in<Button>(*shown, button).press(); }

    ScriptedPlatform platform;
    FakeHistory history;
    std::string file;
    std::optional<ClosingForm> shown;
};

TEST_F(ClosingFormTest, EveryUnsavedFontIsNamedAndSavedOrNoneIs) {
    history.unsaved = {"hack", "lines", "ocrb"};
    form();
    EXPECT_THAT(fonts().items(), ElementsAre("hack", "lines", "ocrb"));
    shown->cancelButton->press();
    EXPECT_FALSE(shown->mayEnd());
    EXPECT_EQ(history.asked, "");

    form();
    fonts().setListIndex(1);
    press("cmdSave");
    EXPECT_TRUE(shown->loaded()) << "two are left";
    EXPECT_THAT(fonts().items(), ElementsAre("hack", "ocrb"));
    shown->defaultButton->press();
    EXPECT_TRUE(shown->mayEnd());
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
    EXPECT_EQ(name.text(), "lines");
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
