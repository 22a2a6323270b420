// Font tools written in script languages, bound as job steps.
#include "windows/com/support/ComTest.h"
#include "windows/com/support/ScriptEngine.h"

namespace dravik::test {
namespace {

constexpr wchar_t kVisualBasic[] =
    LR"script(
Class Tool
    Public Characters
    Public Calls
    Public Property Get ProgId
        ProgId = "Step.DravikTool.1"
    End Property
    Public Property Get Datum(name)
        If name <> "SelFont" Then Err.Raise vbObjectError + 17, "Tool", "No datum " & name
        Datum = 2
    End Property
    Public Sub LoadFont(name)
        If name = "lost" Then Err.Raise 53, "Tool", "The font is lost"
        Calls = Calls & "LoadFont(" & name & ")"
    End Sub
    Public Sub SetCharacterSet(characterSet)
        Dim i
        Characters = characterSet
        For i = LBound(characterSet) To UBound(characterSet)
            Calls = Calls & characterSet(i)
        Next
    End Sub
    Public Function GetCharacterSet()
        GetCharacterSet = Characters
    End Function
    Public Function GetFontList()
        GetFontList = Array("first", "second")
    End Function
    Public Function GetTrainTimeout()
        GetTrainTimeout = 20
    End Function
    Public Function IsTrainingDone()
        IsTrainingDone = True
    End Function
    Public Function GetRmsError()
        GetRmsError = 0.25
    End Function
    Public Function GetUncommittedSamples()
        Dim samples(1, 0)
        samples(0, 0) = "A"
        samples(1, 0) = "B"
        GetUncommittedSamples = samples
    End Function
    Public Function GetSampleData(selectors, fields)
        If selectors(0) = 299999 Then Exit Function
        Dim table(2, 53), row, column
        For column = 0 To 53
            table(0, column) = "heading"
            For row = 1 To 2
                table(row, column) = column / 100
            Next
        Next
        table(1, 1) = 65
        table(2, 1) = 66
        table(2, 2) = UBound(fields)
        GetSampleData = table
    End Function
End Class
Dim made
Set made = New Tool
)script";

constexpr wchar_t kJava[] =
    LR"script(
var made = {
    characters: [], calls: "", ProgId: "Step.DravikTool.1",
    Datum: function (name) {
        if (name != "SelFont") throw new Error("No datum " + name);
        return { Value: 2 };
    },
    LoadFont: function (name) {
        if (name == "lost") throw new Error("The font is lost");
        this.calls += "LoadFont(" + name + ")";
    },
    SetCharacterSet: function (set) {
        this.characters = new VBArray(set).toArray();
        this.calls += this.characters.join("");
    },
    GetCharacterSet: function () { return this.characters; },
    GetFontList: function () { return ["first", "second"]; },
    GetTrainTimeout: function () { return 20; },
    IsTrainingDone: function () { return true; },
    GetRmsError: function () { return 0.25; },
    GetUncommittedSamples: function () { return [["A"], ["B"]]; },
    GetSampleData: function (selectors, fields) {
        if (new VBArray(selectors).getItem(0) == 299999) return null;
        var table = [[], [], []];
        for (var column = 0; column <= 53; ++column) {
            table[0][column] = "heading";
            table[1][column] = table[2][column] = column / 100;
        }
        table[1][1] = 65;
        table[2][1] = 66;
        table[2][2] = new VBArray(fields).ubound();
        return table;
    }
};
)script";

void expectTool(const std::wstring& language, const wchar_t* script) {
    test::ScriptEngine engine(language);
    engine.run(script);
    const StepPtr step = stepFromCom(objectOf(engine.value(L"made").get()).get());
    ASSERT_TRUE(step);
    EXPECT_EQ(step->programIdentifier(), kDravikStep);
    EXPECT_EQ(step->datum(kSelectedFontDatum), 2);
    // The language tells its host what happened; whether the caller is told the text as well is its own
    // affair.
    EXPECT_NE(failureOfAction([&] { step->datum("Other"); }).number(), 0);
    EXPECT_EQ(engine.error(), "No datum Other");

    FontTool& tool = step->fontTool();
    tool.LoadFont("first");
    EXPECT_NE(failureOfAction([&] { tool.LoadFont("lost"); }).number(), 0);
    EXPECT_EQ(engine.error(), "The font is lost");
    EXPECT_THAT(tool.GetFontList(), ElementsAre("first", "second"));
    EXPECT_THAT(tool.GetCharacterSet(), IsEmpty());
    tool.SetCharacterSet({"A", "\xC3\x84"});
    EXPECT_THAT(tool.GetCharacterSet(), ElementsAre("A", "\xC3\x84"));
    EXPECT_EQ(textOf(engine.value(L"made.calls").get()), "LoadFont(first)A\xC3\x84");
    EXPECT_EQ(tool.GetTrainTimeout(), 20);
    EXPECT_TRUE(tool.IsTrainingDone());
    EXPECT_EQ(tool.GetRmsError(), 0.25f);
    EXPECT_THAT(tool.GetUncommittedSamples(), ElementsAre("A", "B"));
    EXPECT_EQ(tool.GetSampleData(kAllUncommitted, kSampleFields), nullptr);
    const RecordTablePtr table = tool.GetSampleData(kAllCommitted, kSampleFields);
    ASSERT_TRUE(table);
    EXPECT_EQ(table->upperRow(), 2);
    EXPECT_EQ(table->upperColumn(), 53);
    EXPECT_THAT(table->codes(), ElementsAre('A', 'B'));
    EXPECT_THAT(table->values(), ElementsAre(0.02, 4));
    EXPECT_EQ(table->number(1, 53), 0.53);

    const Failure missing = failureOfAction([&] { tool.StopTraining(); });
    EXPECT_EQ(missing.number(), 438);
    EXPECT_THAT(missing.description(), testing::HasSubstr("StopTraining"));
    EXPECT_EQ(engine.error(), "The font is lost") << "an error since";
}

TEST(ScriptTool, InVisualBasicWorksAsAStep) {
    expectTool(L"VBScript", kVisualBasic);
}

TEST(ScriptTool, InJavaScriptWorksAsAStep) {
    expectTool(L"JScript", kJava);
}

}  // namespace
}  // namespace dravik::test
