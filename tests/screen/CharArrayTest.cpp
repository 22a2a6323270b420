
#include "screen/inspection/CharArray.h"
#include "screen/support/ProcedureTest.h"

namespace dravik::test {
namespace {

using testing::IsSupersetOf;

struct CharArrayTest : ProcedureTest {
    CharArrayTest() {
        tool->characterSet = {"A", "B", "C"};
        tool->trained = {{"A", 2, filled(0.5)}, {"B", 1, filled(1.0)}, {"C", 0, filled(0.0)}};
    }

    void addSample(const std::string& character, int scaled) {
        tool->committed.push_back({character, 0.1, filled(scaled / 255.0)});
    }
    Label& note() { return dynamic_cast<Label&>(*form().find("lblMessage")); }
    std::string caption(std::size_t cell) { return form().lblCell[cell]->caption(); }
    dlgCharArray& form() { return *arrays.m_dlgArray(); }

    std::vector<std::string> fontArray;
    std::vector<std::string> charactersOfTool = {"A", "B", "C"};
    std::vector<std::pair<std::string, int>> events;
    CharArray arrays{context,
                     fontArray,
                     {[this] { fontArray = charactersOfTool; },
                      [this](const std::string& character, std::int16_t mode) {
                          events.emplace_back(character, mode);
                          arrays.DisplayCharArray(character, mode == kStdDevMode);
                      }}};
};

TEST_F(CharArrayTest, CellsShowTheScaledFeaturesInGrey) {
    tool->trained[1].features[10] = 127 / 255.0;
    tool->trained[1].features[12] = 2;
    arrays.DisplayCharArray("A", false);
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
    arrays.DisplayCharArray("A", false);
    EXPECT_TRUE(form().loaded()) << "a closed form is replaced";
}

TEST_F(CharArrayTest, DeviationIsThatOfTheWholePopulation) {
    addSample("A", 10);
    addSample("B", 200);
    addSample("A", 20);
    arrays.DisplayCharArray("A", true);
    EXPECT_EQ(form().caption(), "Standard Dev Array for A");
    EXPECT_EQ(caption(48), "5.0");
    EXPECT_EQ(form().lblCell[48]->accessibleName(), "Row 7, column 7: 5.0");
    EXPECT_EQ(form().lblCell[0]->toolTip(), "10 to 20");
    // The cells keep the grey of the character's own features.
    EXPECT_EQ(form().lblCell[0]->backColor(), rgb(128, 128, 128));

    arrays.DisplayCharArray("B", true);
    EXPECT_EQ(caption(0), "0.0");
    arrays.DisplayCharArray("C", true);
    EXPECT_EQ(message(), "Number of samples = 0");
    EXPECT_EQ(caption(0) + caption(48), "n/an/a");
    tool->committed.clear();
    arrays.DisplayCharArray("A", true);
    EXPECT_EQ(caption(24), "n/a");
}

TEST_F(CharArrayTest, OverflowIsReportedAndLeavesNoFigureOfAnotherCharacter) {
    addSample("B", 7);
    arrays.DisplayCharArray("B", true);
    EXPECT_EQ(caption(0), "0.0");
    // 182 squares of 255 times 182 pass 2^31; 181 do not.
    for (int i = 0; i < 181; ++i) addSample("A", 255);
    arrays.DisplayCharArray("A", true);
    EXPECT_EQ(caption(0), "0.0");
    addSample("A", 255);
    arrays.DisplayCharArray("A", true);
    EXPECT_EQ(message(), "CalculateStdDev Err 6 Overflow");
    EXPECT_EQ(caption(0), "");
    EXPECT_EQ(note().caption(), "No deviations: CalculateStdDev Err 6 Overflow");
    arrays.DisplayCharArray("A", false);
    EXPECT_FALSE(note().visible());
}

TEST_F(CharArrayTest, ChooserAndButtonsAskForAnotherArray) {
    addSample("B", 10);
    arrays.DisplayCharArray("A", false);
    EXPECT_EQ(form().cboChar.text(), "A");
    auto* const before = &form();
    auto& deviations = form().tlbArray.button("StdDev");
    deviations.press();
    EXPECT_TRUE(deviations.pressed() && !form().tlbArray.button("Char").pressed());
    form().cboChar.setText("B");
    EXPECT_EQ(form().caption(), "Standard Dev Array for B") << "in the mode that is shown";
    form().cboChar.setText("B");  // which is shown already
    EXPECT_THAT(events, ElementsAre(std::pair("A", 1), std::pair("B", 1)));
    deviations.press();
    EXPECT_TRUE(deviations.pressed()) << "a button that was down stays down";
    form().tlbArray.button("Char").press();
    EXPECT_EQ(caption(0), "255");
    EXPECT_EQ(events.back(), std::pair(std::string("B"), 0));
    EXPECT_EQ(&form(), before);
}

TEST_F(CharArrayTest, FontArrayTooShortChangesNothingButIsTraced) {
    charactersOfTool = {"A"};
    g_bTrace = true;
    arrays.DisplayCharArray("A", false);
    EXPECT_EQ(form().caption(), "Character Array");
    EXPECT_EQ(form().cboChar.count(), 0);
    EXPECT_EQ(caption(0), "128");
    form().tlbArray.button("StdDev").press();
    EXPECT_FALSE(form().tlbArray.button("StdDev").pressed()) << "no array of deviations is shown";
    EXPECT_TRUE(note().visible());
    charactersOfTool.clear();
    arrays.DisplayCharArray("A", false);
    form().SetCharacter("A", nullptr, 0);
    EXPECT_THAT(jobs.entries(), IsSupersetOf({"UBound(FontArray) = 0", "IsEmpty(FontArray) = TRUE",
                                              "IsArray(FontArray) = FALSE"}));
}

TEST_F(CharArrayTest, TracesItsSteps) {
    g_bTrace = true;
    tool->uncommitted = {{"A", 0, {}}, {"B", 0, {}}};
    arrays.DisplayCharArray("A", false);
    arrays.PrintFeatureVect();
    EXPECT_THAT(
        jobs.entries(),
        ElementsAre("Dravikdlg.DisplayCharArray(A)", "lUBound1 = 3", "lUBound2 = 52",
                    "dlgCharArray.Form_Load", "DravikDlg.DisplayCharArray: Set m_dlgArray = New dlgCharArray",
                    "dlgCharArray.SetCharacter(A)", "dlgCharArray.SetMode", "Dravikdlg.PrintFeatureVect",
                    "uncommitted UBound(vSamples, 0) = 2"));
}

TEST_F(CharArrayTest, AnswersThatAreMissingOrBroken) {
    tool->trained.clear();
    arrays.DisplayCharArray("B", false);
    EXPECT_EQ(caption(0), "0");
    EXPECT_EQ(message(), "");

    tool->failAt("GetSampleData", 42, "camera unplugged");
    arrays.DisplayCharArray("B", false);
    EXPECT_EQ(message(), "DisplayCharArray Err 42 camera unplugged");
    tool->succeedAt("GetSampleData");
    // A table too narrow to hold 49 features.
    tool->setAnswer(kAllTrained, {{"H", "H"}, {0.0, 66.0}});
    arrays.DisplayCharArray("B", false);
    EXPECT_EQ(message(), "DisplayCharArray Err 9 Subscript out of range");
}

}  // namespace
}  // namespace dravik::test
