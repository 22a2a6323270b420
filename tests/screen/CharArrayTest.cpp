// The viewer of a character's features, as it is opened from the menu of the character's cell.
#include "screen/inspection/dlgCharArray.h"
#include "screen/support/BoundScreen.h"

namespace dravik::test {
namespace {

struct CharArrayTest : BoundScreen {
    CharArrayTest() {
        tool->trained = {{"A", 2, filled(0.5)}, {"B", 1, filled(1.0)}, {"C", 0, filled(0.0)}};
        bind();
    }

    void addSample(const std::string& character, int scaled) {
        tool->committed.push_back({character, 0.1, filled(scaled / 255.0)});
    }
    void showArray(const std::string& character) { rightClick(character, "mnuMainCharacterShowArray"); }
    void showDeviations(const std::string& character) { rightClick(character, "mnuMainCharacterShowStdDev"); }
    dlgCharArray& form() { return dynamic_cast<dlgCharArray&>(platform.opened("dlgCharArray")); }
    std::string note() { return dynamic_cast<Label&>(*form().find("lblMessage")).caption(); }
    std::string caption(std::size_t cell) { return form().lblCell[cell]->caption(); }
};

TEST_F(CharArrayTest, CellsShowTheScaledFeaturesInGrey) {
    tool->trained[1].features[10] = 127 / 255.0;
    tool->trained[1].features[12] = 2;
    showArray("A");
    EXPECT_EQ(form().caption(), "Character Array for A");
    // 127.5 goes to the even neighbour.
    EXPECT_EQ(caption(0), "128");
    EXPECT_EQ(form().lblCell[48]->backColor(), rgb(128, 128, 128));
    EXPECT_EQ(form().lblCell[48]->foreColor(), rgb(0, 0, 0));
    EXPECT_EQ(form().lblCell[9]->accessibleName(), "Row 2, column 3: 128");

    form().cboChar.setText("B");
    EXPECT_EQ(caption(10), "127");
    EXPECT_EQ(form().lblCell[10]->foreColor(), rgb(255, 255, 255));
    EXPECT_EQ(caption(11), "255");
    EXPECT_EQ(form().lblCell[12]->backColor(), rgb(255, 255, 255)) << "beyond the brightest";
    form().unload();
    showArray("A");
    EXPECT_EQ(caption(10), "128") << "a closed form is replaced";
}

TEST_F(CharArrayTest, DeviationIsThatOfTheWholePopulation) {
    addSample("A", 10);
    addSample("B", 200);
    addSample("A", 20);
    showDeviations("A");
    EXPECT_EQ(form().caption(), "Standard Dev Array for A");
    EXPECT_EQ(caption(48), "5.0");
    EXPECT_EQ(form().lblCell[48]->accessibleName(), "Row 7, column 7: 5.0");
    EXPECT_EQ(form().lblCell[0]->toolTip(), "10 to 20");
    // The cells keep the grey of the character's own features.
    EXPECT_EQ(form().lblCell[0]->backColor(), rgb(128, 128, 128));

    showDeviations("B");
    EXPECT_EQ(caption(0), "0.0");
    showDeviations("C");
    EXPECT_EQ(message(), "Number of samples = 0");
    EXPECT_EQ(caption(0) + caption(48), "n/an/a");
}

TEST_F(CharArrayTest, OverflowIsReportedAndLeavesNoFigureOfAnotherCharacter) {
    // 182 squares of 255 times 182 pass 2^31; 181 do not.
    for (int i = 0; i < 181; ++i) addSample("A", 255);
    showDeviations("A");
    EXPECT_EQ(caption(0), "0.0");
    addSample("A", 255);
    showDeviations("A");
    EXPECT_EQ(caption(0), "");
    EXPECT_EQ(note(), "No deviations: CalculateStdDev Err 6 Overflow");
    showArray("A");
    EXPECT_EQ(note(), "");
}

TEST_F(CharArrayTest, ChooserAndButtonsShowAnotherArray) {
    addSample("B", 10);
    showArray("A");
    EXPECT_EQ(form().cboChar.text(), "A");
    auto* const before = &form();
    auto& deviations = form().tlbArray.button("StdDev");
    deviations.press();
    EXPECT_TRUE(deviations.pressed() && !form().tlbArray.button("Char").pressed());
    form().cboChar.setText("B");
    EXPECT_EQ(form().caption(), "Standard Dev Array for B") << "in the mode that is shown";
    tool->calls.clear();
    form().cboChar.setText("B");
    EXPECT_THAT(tool->calls, IsEmpty()) << "which is shown already";
    deviations.press();
    EXPECT_TRUE(deviations.pressed()) << "a button that was down stays down";
    form().tlbArray.button("Char").press();
    EXPECT_EQ(caption(0), "255");
    EXPECT_EQ(&form(), before);
}

TEST_F(CharArrayTest, TheChooserListsTheFontsCharactersFromTwoOn) {
    g_bTrace = true;
    tool->trained.clear();
    showArray("A");
    EXPECT_EQ(form().caption(), "Character Array");
    EXPECT_EQ(caption(0), "0");
    form().tlbArray.button("StdDev").press();
    EXPECT_FALSE(form().tlbArray.button("StdDev").pressed()) << "no array of deviations is shown";
    tool->trained = {{"A", 1, {}}};
    showArray("A");
    EXPECT_EQ(note(), "The font has one character only: nothing can be chosen here");
    EXPECT_THAT(jobs.entries(),
                testing::IsSupersetOf({"IsEmpty(FontArray) = TRUE", "UBound(FontArray) = 0"}));
    tool->trained = {{"B", 1, {}}, {"C", 1, {}}};
    for (int i = 0; i < 2; ++i) {
        toolButton("Array").press();
        EXPECT_EQ(form().cboChar.items(), (std::vector<std::string>{"B", "C"}));
        EXPECT_EQ(form().caption(), "Character Array for B");
        EXPECT_EQ(message(), "");
        tool->trained.clear();  // an empty answer keeps the characters
    }
}

TEST_F(CharArrayTest, TheMenuAndTheArrayTraceTheirSteps) {
    g_bTrace = true;
    showArray("A");
    EXPECT_THAT(
        jobs.entries(),
        ElementsAre("Dravikdlg.lblChar_MouseDown(0,2,0,30,45)",
                    "Dravikdlg.UserMsg = ", "dlgContextPopup.Form_Initialize", "Dravikdlg.NumberTrained",
                    "Dravikdlg.NumberTrained", "DravikDlg.lblChar_MouseDown: PopupMenu",
                    "DravikDlg.lblChar_MouseDown: UserSelection = CharacterArray",
                    "Dravikdlg.DisplayCharArray(A)", "lUBound1 = 3", "lUBound2 = 52",
                    "dlgCharArray.Form_Load", "DravikDlg.DisplayCharArray: Set m_dlgArray = New dlgCharArray",
                    "Dravikdlg.SetFontArray", "dlgCharArray.SetCharacter(A)", "dlgCharArray.SetMode"));
}

TEST_F(CharArrayTest, AFailureIsTold) {
    tool->failAt("GetSampleData", 42, "camera unplugged");
    showArray("A");
    EXPECT_EQ(message(), "DisplayCharArray Err 42 camera unplugged");
}

}  // namespace
}  // namespace dravik::test
