#include "screen/support/BoundScreen.h"

namespace dravik::test {
namespace {

template <class Kind>
Kind& in(Form& form, const char* name) {
    return dynamic_cast<Kind&>(*form.find(name));
}

class FontSelectionTest : public BoundScreen {
  protected:
    FontSelectionTest() { tool->fonts = {"alpha", "beta", "gamma"}; }

    // Opens the manager on the tool as set up so far.
    void manager(std::function<void(Form&)> act) {
        if (!control.step()) bind();
        platform.modalHandlers["dlgFontManager"] = std::move(act);
        screen().font.cmdSelectFont.press();
    }
    // Of a new font.
    static OptionButton& set(Form& form, std::size_t index) {
        return in<OptionButton>(form, ("InitCharSet(" + std::to_string(index) + ")").c_str());
    }
    // The dialog that asks for a name gets this one, and is told this set.
    void name(const char* dialog, const std::string& text, std::optional<std::size_t> choice = {}) {
        platform.modalHandlers[dialog] = [text, choice](Form& form) {
            in<TextBox>(form, "txtFontName").setText(text);
            if (choice) set(form, *choice).setChosen(true);
            form.defaultButton->press();
        };
    }
    static void press(Form& form, std::initializer_list<const char*> buttons) {
        for (const char* button : buttons) in<Button>(form, button).press();
    }
    static std::string status(Form& form) { return in<StatusBar>(form, "sbr").panel("Text").text(); }
    static ListBox& list(Form& form) { return in<ListBox>(form, "lbFonts"); }
};

TEST_F(FontSelectionTest, ChoosingLoadsTheFontAndFillsTheScreen) {
    bind();
    screen().train.prgTrain.setValue(40);
    manager([](Form& form) {
        EXPECT_EQ(list(form).listIndex(), 0) << "the font in use is preselected";
        list(form).setListIndex(2);
        list(form).doubleClick();
        EXPECT_FALSE(form.loaded());
    });
    EXPECT_EQ(control.selectedFont() + tool->currentFont, "gammagamma");
    EXPECT_EQ(screen().train.prgTrain.value(), 0);
}

TEST_F(FontSelectionTest, AStepWithoutAFontGetsOneAndLeavingInAnyOtherWayChangesNothing) {
    tool->data["SelFont"] = 0;
    bind();
    manager([](Form& form) {
        EXPECT_FALSE(in<Button>(form, "cmdRenameFont").enabled()) << "nothing is selected";
        list(form).setListIndex(1);
        in<Button>(form, "OKButton").press();
    });
    EXPECT_TRUE(screen().sample.cmdInclude.enabled());
    EXPECT_EQ(control.selectedFont(), "beta");
    tool->calls.clear();
    manager([](Form& form) {
        list(form).setListIndex(2);
        form.unload();
    });
    EXPECT_TRUE(tool->changes().empty()) << "an earlier choice is not taken for this one";
    EXPECT_EQ(tool->count("GetFontList()"), 2)
        << "those of the list; nothing is asked for what did not change";
}

TEST_F(FontSelectionTest, WhatWasDoneInTheManagerBeforeIsNotFollowedAgain) {
    bind();
    name("dlgFontName", "renamed");
    name("dlgFontNew", "alpha");
    manager([](Form& form) { press(form, {"cmdRenameFont", "cmdNewFont", "OKButton"}); });
    ASSERT_EQ(control.selectedFont(), "alpha");
    tool->calls.clear();
    manager([](Form& form) {
        list(form).setListIndex(2);
        press(form, {"cmdDeleteFont", "CancelButton"});
    });
    EXPECT_EQ(control.selectedFont(), "alpha") << "the one that was renamed is another";
    EXPECT_EQ(tool->changes(), (std::vector<std::string>{"DeleteFont(gamma)"}))
        << "what was made then is not made now, and nothing is loaded for it";
}

TEST_F(FontSelectionTest, TheCharacterSetIsSentWithEveryEdit) {
    bind();
    tool->addCommitted("A", {0.1, 0.2});
    screen().font.txtCharSet.setText("");
    screen().font.txtCharSet.setText("é");
    EXPECT_EQ(tool->changes(), (std::vector<std::string>{"SetCharacterSet()", "SetCharacterSet(,é)"}));
    EXPECT_TRUE(control.m_FontChanged());
    EXPECT_EQ(screen().numeric.grid.rows(), 3) << "the grid is filled anew";
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
    platform.modalHandlers["dlgFontNew"] = [](Form& form) {
        EXPECT_EQ(in<TextBox>(form, "txtFontName").text(), "alpha");
        in<TextBox>(form, "txtFontName").setText(" my font.a/b\\c:d;e|f* ");
        EXPECT_EQ(set(form, 0).caption(), "<Empty>");
        set(form, 2).setChosen(true);
        set(form, 5).setChosen(true);
        EXPECT_FALSE(set(form, 2).chosen());
        form.defaultButton->press();
    };
    manager([](Form& form) {
        in<Button>(form, "cmdNewFont").press();
        EXPECT_EQ(list(form).text(), "my_font_a_b_c_d_e_f_");
        form.defaultButton->press();
    });
    EXPECT_THAT(tool->changes(),
                ElementsAre("CreateFont(my_font_a_b_c_d_e_f_)", "SetCharacterSet(0,1,2,3,4,5,6,7,8,9)",
                            "SaveFont(my_font_a_b_c_d_e_f_)", "LoadFont(my_font_a_b_c_d_e_f_)",
                            "SetTrainTimeout(60)"));

    name("dlgFontNew", "second");
    tool->calls.clear();
    manager([](Form& form) { press(form, {"cmdNewFont", "OKButton"}); });
    EXPECT_EQ(tool->count("SetCharacterSet()"), 1) << "the set chosen for the font before is not taken over";
}

TEST_F(FontSelectionTest, EachChoiceOfANewFontIsTheSetThatItNames) {
    const std::string a = "abcdefghijklm", n = "nopqrstuvwxyz", A = "ABCDEFGHIJKLM", N = "NOPQRSTUVWXYZ",
                      digits = "0123456789";
    const std::vector<std::string> sets = {
        "", n, a, N, A, digits, A + N, A + N + digits, a + n, a + n + digits};
    for (std::size_t i = 0; i < sets.size(); ++i) {
        name("dlgFontNew", "font" + std::to_string(i), i);
        manager([](Form& form) { press(form, {"cmdNewFont", "CancelButton"}); });
        EXPECT_EQ(screen().font.txtCharSet.text(), sets[i]);
    }
}

TEST_F(FontSelectionTest, ADialogForANameOpensReadyForTypingAndTellsAFailure) {
    std::optional<FocusCount> focus;
    platform.modalHandlers["dlgFontName"] = [&](Form& form) {
        auto& box = in<TextBox>(form, "txtFontName");
        EXPECT_EQ(box.selectionStart(), 0);
        EXPECT_GE(box.selectionLength(), 5) << "typing replaces the proposed name";
        if (focus) {
            const Connection failing =
                form.unloading.connect([] { throw Failure(RuntimeError::PermissionDenied); });
            platform.boxAnswers = {Answer::Ok};
            form.defaultButton->press();
        } else {
            focus.emplace(box);
        }
        form.cancelButton->press();
    };
    manager([](Form& form) { press(form, {"cmdRenameFont", "cmdRenameFont", "CancelButton"}); });
    EXPECT_EQ(*focus, 1);
    EXPECT_THAT(platform.told(), ElementsAre("Error in OKButton_Click: Error 70\rPermission denied"));
    EXPECT_TRUE(tool->changes().empty());
}

TEST_F(FontSelectionTest, CancellingAfterMakingAFontGoesBackToTheOneShown) {
    bind();
    include("AB");
    name("dlgFontNew", "fresh");
    manager([](Form& form) { press(form, {"cmdNewFont", "CancelButton"}); });
    EXPECT_EQ(tool->currentFont + control.selectedFont(), "alphaalpha");
    EXPECT_FALSE(toolButton("Undo").enabled()) << "what was not saved is gone; Undo would take older samples";
}

TEST_F(FontSelectionTest, CancellingAfterRenamingOrDeletingTheFontShownFollowsIt) {
    tool->data["SelFont"] = 2;
    name("dlgFontName", "renamed");
    manager([](Form& form) { press(form, {"cmdRenameFont", "CancelButton"}); });
    EXPECT_EQ(control.selectedFont(), "renamed") << "saving must not write a second font under the old name";
    screen().font.txtCharSet.setText("AB");
    EXPECT_TRUE(control.m_FontChanged());
    tool->data["SelFont"] = 0;
    manager([](Form& form) {
        EXPECT_EQ(list(form).text(), "renamed");
        press(form, {"cmdDeleteFont", "CancelButton"});
    });
    EXPECT_EQ(control.selectedFont(), "");
    EXPECT_FALSE(screen().sample.cmdInclude.enabled());
    EXPECT_FALSE(control.m_FontChanged()) << "nothing is left to save";
}

TEST_F(FontSelectionTest, WithoutAFontTheOneMadeIsShownAndItsSetNotTakenForAnEdit) {
    tool->data["SelFont"] = 0;
    name("dlgFontName", "renamed");
    name("dlgFontNew", "fresh", 5);
    manager([](Form& form) { press(form, {"cmdNewFont", "cmdRenameFont", "CancelButton"}); });
    EXPECT_EQ(control.selectedFont(), "renamed");
    EXPECT_EQ(screen().font.txtCharSet.text(), "0123456789") << "the next key must not replace it";
    EXPECT_TRUE(screen().sample.cmdInclude.enabled());
    EXPECT_FALSE(control.m_FontChanged());
}

TEST_F(FontSelectionTest, AFontOfAStepThatWasLeftMeanwhileIsNotLoadedIntoTheNext) {
    auto second = std::make_shared<RecordingTool>();
    second->fonts = {"alpha", "beta"};
    manager([&](Form& form) {
        control.setStep(second);
        tool.reset();
        list(form).setListIndex(1);
        form.defaultButton->press();
    });
    EXPECT_EQ(second->count("LoadFont(beta)"), 0);
    EXPECT_EQ(control.selectedFont(), "alpha");
}

TEST_F(FontSelectionTest, TheNameNewIsReservedForNewFontsOnly) {
    platform.boxAnswers = {Answer::Ok};
    platform.modalHandlers["dlgFontNew"] = [](Form& form) {
        in<TextBox>(form, "txtFontName").setText("NEW");
        form.defaultButton->press();
        EXPECT_TRUE(form.loaded());
        form.cancelButton->press();
    };
    name("dlgFontName", "new");
    manager([](Form& form) { press(form, {"cmdNewFont", "cmdRenameFont", "CancelButton"}); });
    EXPECT_THAT(platform.told(),
                ElementsAre("Name Conflict: Font name 'new' is reserved, please select a different name"));
    EXPECT_EQ(tool->changes().front(), "RenameFont(new,alpha)");
}

TEST_F(FontSelectionTest, AnExistingNameMayBeOverwrittenByNewButNotByRename) {
    platform.boxAnswers = {Answer::No, Answer::Yes, Answer::Ok};
    name("dlgFontNew", "BETA");
    name("dlgFontName", "Gamma");
    manager([&](Form& form) {
        press(form, {"cmdNewFont"});
        EXPECT_TRUE(tool->changes().empty());
        press(form, {"cmdNewFont", "cmdDuplicateFont", "CancelButton"});
    });
    const char* const overwrite = "Name Conflict: Font name already exists. Overwrite?";
    ASSERT_THAT(platform.told(),
                ElementsAre(overwrite, overwrite, testing::EndsWith("Font name already exists.")));
    EXPECT_EQ(platform.boxes[0].icon, MessageBox::Icon::Information);
    EXPECT_EQ(platform.boxes[2].buttons, MessageBox::Buttons::Ok);
    EXPECT_EQ(tool->changes().front(), "CreateFont(BETA)");
    EXPECT_EQ(tool->count("DuplicateFont(Gamma,BETA)"), 0);
}

TEST_F(FontSelectionTest, DeleteAsksNothingAndKeepsASelection) {
    platform.fileDates[jobs.folder().fontFile("gamma")] = "1/2/2026 3:04 PM";
    manager([&](Form& form) {
        list(form).setListIndex(2);
        EXPECT_EQ(list(form).toolTip(), "Font created 1/2/2026 3:04 PM");
        EXPECT_EQ(form.defaultButton->caption(), "Select");
        EXPECT_EQ(status(form), jobs.folder().fontFile("gamma"));
        press(form, {"cmdDeleteFont"});
        EXPECT_EQ(status(form), "Deleted font: gamma");
        EXPECT_EQ(list(form).text(), "beta");
        EXPECT_EQ(list(form).toolTip(), "Creation date unknown");
        press(form, {"cmdDeleteFont", "cmdDeleteFont"});
        EXPECT_EQ(list(form).listIndex(), -1);
        for (const char* button : {"cmdDuplicateFont", "cmdRenameFont", "cmdDeleteFont", "OKButton"})
            EXPECT_FALSE(in<Button>(form, button).enabled()) << button;
        form.cancelButton->press();
    });
    manager([&](Form& form) {
        EXPECT_EQ(status(form), "There is no font yet: make one with New");
        form.cancelButton->press();
    });
}

TEST_F(FontSelectionTest, AFailureIsShownInTheManagersStatusBar) {
    tool->failAt("DuplicateFont", 70, "Permission denied");
    name("dlgFontName", "copy");
    manager([&](Form& form) {
        in<Button>(form, "cmdDuplicateFont").press();
        EXPECT_EQ(status(form), "DoRenameDupFont err 70 Permission denied");
        form.unload();
    });
    tool->failAt("LoadFont", 53, "File not found");
    manager([](Form& form) { press(form, {"cmdRenameFont", "OKButton"}); });
    EXPECT_EQ(message(), "SelectFont Err 53 File not found");
    EXPECT_EQ(control.selectedFont(), "copy") << "saving must not write a second font under the old name";
}

}  // namespace
}  // namespace dravik::test
