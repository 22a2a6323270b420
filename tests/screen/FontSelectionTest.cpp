#include "screen/support/BoundScreen.h"

namespace dravik::test {

using namespace screen;
using namespace tool;
using namespace ui;
namespace {

template <class Kind>
Kind& in(Form& form, const char* name) {
    return dynamic_cast<Kind&>(*form.find(name));
}

class FontSelectionTest : public BoundScreen {
  protected:
    FontSelectionTest() { tool->fonts = {"alpha", "beta", "gamma"}; }

    void manager(std::function<void(Form&)> act) {
        platform.modalHandlers["dlgFontManager"] = std::move(act);
        screen().font.cmdSelectFont.press();
    }
    // The dialog that asks for a name gets this one.
    void name(const char* dialog, const char* text) {
        platform.modalHandlers[dialog] = [text](Form& form) {
            in<TextBox>(form, "txtFontName").setText(text);
            press(form, {"OKButton"});
        };
    }
    static void press(Form& form, std::initializer_list<const char*> buttons) {
        for (const char* button : buttons) in<Button>(form, button).press();
    }
    static std::string status(Form& form) { return in<StatusBar>(form, "sbr").panel("Text").text(); }
};

TEST_F(FontSelectionTest, ChoosingLoadsTheFontAndFillsTheScreen) {
    bind();
    screen().train.prgTrain.setValue(40);
    manager([](Form& form) {
        EXPECT_EQ(in<ListBox>(form, "lbFonts").listIndex(), 0) << "the font in use is preselected";
        in<ListBox>(form, "lbFonts").setListIndex(2);
        in<ListBox>(form, "lbFonts").doubleClick();
        EXPECT_FALSE(form.loaded());
    });
    EXPECT_EQ(tool->count("LoadFont(gamma)"), 1);
    EXPECT_EQ(screen().font.lblSelectedFont.caption(), "gamma");
    EXPECT_EQ(screen().train.prgTrain.value(), 0);
    manager([](Form& form) {
        EXPECT_EQ(in<ListBox>(form, "lbFonts").listIndex(), 2);
        in<Button>(form, "CancelButton").press();
    });
}

TEST_F(FontSelectionTest, AStepWithoutAFontGetsOne) {
    tool->data["SelFont"] = 0;
    bind();
    manager([](Form& form) {
        EXPECT_FALSE(in<Button>(form, "cmdRenameFont").enabled()) << "nothing is selected";
        in<ListBox>(form, "lbFonts").setListIndex(1);
        in<Button>(form, "OKButton").press();
    });
    EXPECT_EQ(screen().font.lblSelectedFont.caption(), "beta");
    EXPECT_TRUE(screen().sample.cmdInclude.enabled());
    EXPECT_EQ(control.selectedFont(), "beta");
}

TEST_F(FontSelectionTest, LeavingInAnyOtherWayChangesNothing) {
    bind();
    manager([](Form& form) {
        in<ListBox>(form, "lbFonts").setListIndex(1);
        in<Button>(form, "OKButton").press();
    });
    tool->calls.clear();
    manager([](Form& form) {
        in<ListBox>(form, "lbFonts").setListIndex(2);
        form.unload();
    });
    EXPECT_TRUE(tool->changes().empty()) << "an earlier choice is not taken for this one";
    EXPECT_EQ(screen().font.lblSelectedFont.caption(), "beta");
}

TEST_F(FontSelectionTest, TheCharacterSetIsSentWithEveryEdit) {
    bind();
    screen().font.txtCharSet.setText("");
    screen().font.txtCharSet.setText("é");
    EXPECT_EQ(tool->changes(), (std::vector<std::string>{"SetCharacterSet()", "SetCharacterSet(,é)"}));
    EXPECT_TRUE(control.m_FontChanged());
}

TEST_F(FontSelectionTest, TheDateTextTellsTrainedFromCreatedAndUnknown) {
    bind();
    EXPECT_EQ(control.FontTrainDate("missing"), "unknown");
    platform.fileDates[jobs.folder().fontFile("beta")] = "11/21/2026 3:04 PM";
    EXPECT_EQ(control.FontTrainDate("beta"), "Not trained. Created 11/21/2026 3:04 PM");
    tool->trained = {{"A", 0, {}}, {"B", 1, {}}};
    EXPECT_EQ(control.FontTrainDate("beta"), "Trained on 11/21/2026 3:04 PM");
    DravikDlg unbound(platform, jobs.folder());
    EXPECT_EQ(unbound.FontTrainDate("beta"), "unknown");
}

TEST_F(FontSelectionTest, ANewFontIsMadeWithItsCleanedNameAndItsSet) {
    bind();
    platform.modalHandlers["dlgFontNew"] = [](Form& form) {
        EXPECT_EQ(in<TextBox>(form, "txtFontName").text(), "alpha");
        in<TextBox>(form, "txtFontName").setText(" my font.b ");
        in<OptionButton>(form, "InitCharSet(2)").setChosen(true);
        in<OptionButton>(form, "InitCharSet(5)").setChosen(true);
        EXPECT_FALSE(in<OptionButton>(form, "InitCharSet(2)").chosen());
        in<Button>(form, "OKButton").press();
    };
    manager([](Form& form) {
        in<Button>(form, "cmdNewFont").press();
        EXPECT_EQ(in<ListBox>(form, "lbFonts").text(), "my_font_b");
        in<Button>(form, "OKButton").press();
    });
    std::vector<std::string> changes = tool->changes();
    ASSERT_GE(changes.size(), 3u);
    changes.resize(3);
    EXPECT_EQ(changes,
              (std::vector<std::string>{"CreateFont(my_font_b)", "SetCharacterSet(0,1,2,3,4,5,6,7,8,9)",
                                        "SaveFont(my_font_b)"}));
    EXPECT_EQ(control.selectedFont(), "my_font_b");

    platform.modalHandlers["dlgFontNew"] = [](Form& form) {
        auto& name = in<TextBox>(form, "txtFontName");
        EXPECT_GE(name.selectionLength(), 9) << "typing replaces the proposed name";
        name.setText("second");
        in<Button>(form, "OKButton").press();
    };
    tool->calls.clear();
    manager([](Form& form) { press(form, {"cmdNewFont", "OKButton"}); });
    EXPECT_EQ(tool->count("SetCharacterSet()"), 1) << "the set chosen for the font before is not taken over";
}

TEST_F(FontSelectionTest, CancellingAfterMakingAFontGoesBackToTheOneShown) {
    bind();
    include("AB");
    tool->onCall = [&](const std::string& call) {
        if (call == "LoadFont(alpha)") tool->characterSet = {"A", "B", "D"};
    };
    name("dlgFontNew", "fresh");
    manager([](Form& form) { press(form, {"cmdNewFont", "CancelButton"}); });
    EXPECT_EQ(tool->currentFont, "alpha");
    EXPECT_EQ(control.selectedFont(), "alpha");
    EXPECT_FALSE(toolButton("Undo").enabled()) << "what was not saved is gone; Undo would take older samples";
    EXPECT_EQ(screen().font.txtCharSet.text(), "ABD") << "the screen shows the font as it is loaded";
}

TEST_F(FontSelectionTest, CancellingAfterRenamingOrDeletingTheFontShownFollowsIt) {
    tool->data["SelFont"] = 2;
    bind();
    name("dlgFontName", "renamed");
    manager([](Form& form) { press(form, {"cmdRenameFont", "CancelButton"}); });
    EXPECT_EQ(control.selectedFont(), "renamed") << "saving must not write a second font under the old name";
    tool->data["SelFont"] = 0;
    manager([](Form& form) {
        EXPECT_EQ(in<ListBox>(form, "lbFonts").text(), "renamed");
        press(form, {"cmdDeleteFont", "CancelButton"});
    });
    EXPECT_EQ(control.selectedFont(), "");
    EXPECT_EQ(screen().font.lblSelectedFont.caption(), "<None>");
    EXPECT_FALSE(screen().sample.cmdInclude.enabled());
}

TEST_F(FontSelectionTest, TheNameNewIsReservedForNewFontsOnly) {
    bind();
    platform.boxAnswers = {Answer::Ok};
    platform.modalHandlers["dlgFontNew"] = [](Form& form) {
        in<TextBox>(form, "txtFontName").setText("NEW");
        in<Button>(form, "OKButton").press();
        EXPECT_TRUE(form.loaded());
        in<Button>(form, "CancelButton").press();
    };
    name("dlgFontName", "new");
    manager([](Form& form) {
        press(form, {"cmdNewFont", "cmdRenameFont"});
        EXPECT_EQ(in<ListBox>(form, "lbFonts").text(), "new");
        in<Button>(form, "CancelButton").press();
    });
    ASSERT_EQ(platform.boxes.size(), 1u);
    EXPECT_EQ(platform.boxes[0].text, "Font name 'new' is reserved, please select a different name");
    EXPECT_EQ(platform.boxes[0].title, "Name Conflict");
    EXPECT_EQ(tool->changes().front(), "RenameFont(new,alpha)");
}

TEST_F(FontSelectionTest, AnExistingNameMayBeOverwrittenByNewButNotByRename) {
    bind();
    platform.boxAnswers = {Answer::No, Answer::Yes, Answer::Ok};
    name("dlgFontNew", "BETA");
    name("dlgFontName", "Gamma");
    manager([&](Form& form) {
        in<Button>(form, "cmdNewFont").press();
        EXPECT_TRUE(tool->changes().empty());
        in<Button>(form, "cmdNewFont").press();
        EXPECT_EQ(tool->count("CreateFont(BETA)"), 1);
        EXPECT_EQ(in<ListBox>(form, "lbFonts").text(), "BETA");
        in<Button>(form, "cmdDuplicateFont").press();
        form.unload();
    });
    ASSERT_EQ(platform.boxes.size(), 3u);
    EXPECT_EQ(platform.boxes[0].text, "Font name already exists. Overwrite?");
    EXPECT_EQ(platform.boxes[2].text, "Font name already exists.");
    EXPECT_EQ(platform.boxes[2].buttons, MessageBox::Buttons::Ok);
    EXPECT_EQ(tool->count("DuplicateFont(Gamma,BETA)"), 0);
}

TEST_F(FontSelectionTest, DeleteAsksNothingAndKeepsASelection) {
    bind();
    manager([&](Form& form) {
        in<ListBox>(form, "lbFonts").setListIndex(2);
        EXPECT_EQ(status(form), jobs.folder().fontFile("gamma"));
        in<Button>(form, "cmdDeleteFont").press();
        EXPECT_EQ(status(form), "Deleted font: gamma");
        EXPECT_EQ(in<ListBox>(form, "lbFonts").text(), "beta");
        press(form, {"cmdDeleteFont", "cmdDeleteFont"});
        EXPECT_EQ(in<ListBox>(form, "lbFonts").listIndex(), -1);
        EXPECT_FALSE(in<Button>(form, "cmdDuplicateFont").enabled());
        in<Button>(form, "OKButton").press();
    });
    EXPECT_TRUE(platform.boxes.empty());
}

TEST_F(FontSelectionTest, AFailureIsShownInTheManagersStatusBar) {
    bind();
    tool->failAt("DuplicateFont", 70, "Permission denied");
    name("dlgFontName", "copy");
    manager([&](Form& form) {
        in<Button>(form, "cmdDuplicateFont").press();
        EXPECT_EQ(status(form), "DoRenameDupFont err 70 Permission denied");
        tool->failAt("GetFontList", 76, "Path not found");
        in<Button>(form, "cmdDeleteFont").press();
        form.unload();
        tool->succeedAt("GetFontList");
    });
    tool->failAt("LoadFont", 53, "File not found");
    manager([](Form& form) {
        EXPECT_EQ(in<ListBox>(form, "lbFonts").count(), 2);
        in<Button>(form, "OKButton").press();
    });
    EXPECT_EQ(message(), "SelectFont Err 53 File not found");
}

}  // namespace
}  // namespace dravik::test
