// What the embedded tool does beyond the contract: the step, names, remembered fonts, damaged files, reading.
#include "engine/embedded/EmbeddedTool.h"

#include "engine/ToolActs.h"
#include "engine/font/FontVersions.h"
#include "support/Testing.h"
#include "tool/Samples.h"

namespace dravik {

using namespace tool;
namespace {

using test::refusal;
using testing::ElementsAre;

class ToolWithoutFonts : public testing::Test {
  protected:
    const TemporaryFolder folder;
    EmbeddedTool tool{JobFolder(folder.path())};
};

TEST_F(ToolWithoutFonts, ReadsWhatItWasTrainedOn) {
    tool.CreateFont("F");
    tool.setImage(drawn({"A1B"}));
    EXPECT_TRUE(tool.read().empty());
    for (const int scale : {3, 4, 6})
        for (const std::string line : {"0123456789", "ABCEHLT:=", "ioj;,'.-_"})
            teach(tool, line + "H", {.scale = scale, .dot = scale});
    train(tool);
    ASSERT_TRUE(tool.isTrained());
    tool.setImage(
        drawn({"LOT:A-17", "ioj=H,2"}, {.scale = 5, .dot = 5, .paper = 30, .print = 190, .slope = 0.03}));
    const std::vector<ReadCharacter> read = tool.read();
    EXPECT_EQ(textOf(read), "L0T:A-17ioj=H,2");
    for (std::size_t i = 0; i < read.size(); ++i) {
        EXPECT_TRUE(read[i].confidence > 0 && read[i].confidence <= 1);
        EXPECT_EQ(read[i].place.line, i < 8 ? 0 : 1);
        EXPECT_LT(read[i].place.left, read[i].place.right);
        EXPECT_LE(read[i].place.right, tool.image().width());
    }
    tool.SaveFont("F");
    EmbeddedTool later{JobFolder(folder.path())};
    later.LoadFont("F");
    later.setImage(tool.image());
    EXPECT_EQ(textOf(later.read()), textOf(read));
    later.setImage({});
    EXPECT_TRUE(later.found().empty());
    later.IncludeSamples("ABC");
    EXPECT_TRUE(later.GetUncommittedSamples().empty());
}

// The face draws 0 and O alike. What stands between letters is a digit where the parts before had one there,
// line by line; a clear shape is what it is whatever they had, and so is a text of another kind.
TEST_F(ToolWithoutFonts, ReadsLookAlikesByTheFormatOfThePrint) {
    tool.CreateFont("F");
    const Drawing how{.scale = 5, .dot = 5};
    for (const std::string line : {"123456789", "ABCEHLTO", "ABCEHLT"}) teach(tool, line, how);
    for (const std::string line : {"AOBH", "TOHC", "LOCT", "EOAB"}) {
        std::string code = line;
        code[1] = '0';
        tool.setImage(drawn({line, "12"}, how));
        tool.setImageName("of " + line);
        tool.IncludeSamples(code + "12");
        teach(tool, line, how);  // of an image without a name
    }
    train(tool);
    const auto read = [&](const std::string& line) { return textOf(tool.reader().read(drawn({line}, how))); };
    EXPECT_EQ(read("BOTL"), "B0TL");
    EXPECT_EQ(read("BETL"), "BETL");
    EXPECT_EQ(read("BOTLE"), "BOTLE");
    EXPECT_EQ(read("25O4"), "2504");
    tool.setImage(drawn({"BOTL"}, how));
    EXPECT_EQ(textOf(tool.read()), "B0TL");
    tool.SaveFont("F");
    EXPECT_EQ(textOf(FontReader(readFont(JobFolder(folder.path()).fontFile("F"))).read(tool.image())),
              "B0TL");
}

// Identifiers name no more, so a record more is refused, at once and with nothing changed.
TEST_F(ToolWithoutFonts, RefusesMoreRecordsThanIdentifiersName) {
    tool.CreateFont("f");
    tool.SetCharacterSet({"A"});
    CharacterSet many;
    for (std::int32_t code = 0x10000; many.size() < 100'000; ++code) many.push_back(characterOf(code));
    EXPECT_THROW(tool.SetCharacterSet(many), Failure);
    EXPECT_THAT(tool.GetCharacterSet(), ElementsAre("A"));

    FontRecord font;
    font.samples.resize(99'998);
    for (Sample& sample : font.samples) sample.serial = font.nextSerial++;
    font.distances.resize(font.samples.size());
    tool.SaveFont("f");
    writeFont(font, folder.path("Fonts/f.nnd"));
    tool.LoadFont("f");
    tool.setImage(drawn({"AB"}));
    EXPECT_THROW(tool.IncludeSamples("AB"), Failure);
    EXPECT_TRUE(tool.GetUncommittedSamples().empty());
    teach(tool, "A");
    EXPECT_THROW(tool.IncludeSamples("A"), Failure);
    EXPECT_EQ(labels(tool).size(), 99'999u);
}

TEST_F(ToolWithoutFonts, BadNamesAreRefused) {
    for (const std::string name : {"", ".", "..", "a/b", "a\\b", "../x", "a:b", "a*", "a?", "a\"", "<a", "a>",
                                   "a|", "a\n", "a.", "a "}) {
        EXPECT_EQ(refusal([&] { tool.CreateFont(name); }), 52) << name;
        EXPECT_EQ(refusal([&] { tool.LoadFont(name); }), 52) << name;
    }
    tool.CreateFont("ok");
    EXPECT_EQ(refusal([&] { tool.RenameFont("a/b", "ok"); }), 52);
    EXPECT_EQ(refusal([&] { tool.DuplicateFont("ok", "ok"); }), 58);
    EXPECT_EQ(refusal([&] { tool.LoadFont("none"); }), 53);
    EXPECT_THAT(tool.GetFontList(), ElementsAre("ok"));
    EXPECT_FALSE(std::filesystem::exists(folder.path("b.nnd")));
}

TEST_F(ToolWithoutFonts, StepDatumFollowsTheFont) {
    EXPECT_EQ(tool.programIdentifier(), "Step.DravikTool.1");
    EXPECT_EQ(&tool.fontTool(), &tool);
    EXPECT_EQ(tool.datum("SelFont"), 0);
    EXPECT_THROW(tool.datum("selfont"), Failure);
    for (const char* name : {"B", "a", "c"}) tool.CreateFont(name);
    EXPECT_THAT(tool.GetFontList(), ElementsAre("a", "B", "c"));
    EXPECT_EQ(tool.datum("SelFont"), 4);
    tool.LoadFont("B");
    EXPECT_EQ(tool.datum("SelFont"), 2);
    tool.RenameFont("z", "B");
    EXPECT_EQ(tool.datum("SelFont"), 4);
    tool.DeleteFont("z");
    EXPECT_EQ(tool.datum("SelFont"), 0);
    EXPECT_FALSE(tool.currentFont());
    EXPECT_EQ(EmbeddedTool(JobFolder(folder.path())).datum("SelFont"), 0);

    // The mask has 16 bits: a font beyond its reach is listed first.
    for (int i = 10; i < 30; ++i) tool.CreateFont("n" + std::to_string(i));
    EXPECT_EQ(tool.GetFontList().front(), "n29");
    EXPECT_EQ(tool.datum("SelFont"), 1);
    tool.LoadFont("n10");
    EXPECT_EQ(tool.GetFontList().front(), "a");
    EXPECT_EQ(tool.datum("SelFont"), 4);
    // Of a, c and n10 to n29 the 15th is the last that the mask names, the 16th the first that moves.
    tool.LoadFont("n22");
    EXPECT_EQ(tool.datum("SelFont"), 1 << 14);
    tool.LoadFont("n23");
    EXPECT_EQ(tool.GetFontList().front(), "n23");
    EXPECT_EQ(tool.datum("SelFont"), 1);
}

TEST(EmbeddedTool, RemembersTheSelectedFont) {
    const TemporaryFolder folder;
    const auto open = [&folder] { return std::make_unique<EmbeddedTool>(JobFolder(folder.path()), true); };
    auto tool = open();
    tool->CreateFont("a");
    tool->CreateFont("b");
    tool = open();
    EXPECT_EQ(tool->datum("SelFont"), 2);
    EXPECT_FALSE(tool->currentFont());
    tool->RenameFont("c", "b");
    tool = open();
    EXPECT_EQ(tool->datum("SelFont"), 2);
    tool->LoadFont("a");
    tool = open();
    EXPECT_EQ(tool->datum("SelFont"), 1);
    std::filesystem::remove(folder.path("Fonts/a.nnd"));
    EXPECT_EQ(open()->datum("SelFont"), 0);
    tool->LoadFont("c");
    tool->DeleteFont("c");
    EXPECT_EQ(open()->datum("SelFont"), 0);
    EXPECT_TRUE(std::filesystem::exists(folder.path("Fonts/c.nnd.bak")));
    EXPECT_TRUE(tool->GetFontList().empty());
}

TEST_F(ToolWithoutFonts, DamagedFontsAreRefusedAndTheCurrentOneStays) {
    tool.CreateFont("good");
    teach(tool, "AB1");
    std::ofstream(folder.path("Fonts/bad.nnd")) << "no font at all";
    std::ofstream(folder.path("Fonts/empty.nnd"));
    for (const char* name : {"bad", "empty"}) {
        EXPECT_EQ(refusal([&] { tool.LoadFont(name); }), 57) << name;
        EXPECT_EQ(refusal([&] { tool.summary(name); }), 57) << name;
        EXPECT_EQ(refusal([&] { tool.DuplicateFont("copy", name); }), 57) << name;
    }
    EXPECT_EQ(tool.currentFont(), "good");
    EXPECT_EQ(labels(tool), "AB1");
    EXPECT_THAT(tool.GetFontList(), ElementsAre("bad", "empty", "good"));
}

TEST_F(ToolWithoutFonts, FontsAreNotSwappedUnderARun) {
    tool.CreateFont("other");
    tool.CreateFont("F");
    // Labels that contradict each other keep the run busy.
    tool.setImage(drawn({"0123456789"}));
    for (int i = 0; i < 60; ++i) tool.IncludeSamples(i % 2 ? "0123456789" : "1032547698");
    tool.CommitNewSamples();
    tool.StartTraining();
    // The run may end at any time; until it has, these are refused, and samples may go while it uses its own.
    for (const auto& action : std::vector<std::function<void()>>{
             [&] { tool.StartTraining(); }, [&] { tool.LoadFont("other"); }, [&] { tool.DeleteFont("F"); }})
        ASSERT_EQ(refusal(action), 5);
    for (int i = 0; i < 100; ++i) tool.DeleteSample(300000);
    while (!tool.IsTrainingDone()) std::this_thread::yield();
    // Each sample tells how often its character was trained.
    const RecordTablePtr samples = tool.GetSampleData(kAllCommitted, std::array<std::int16_t, 1>{4});
    EXPECT_EQ(samples->upperRow(), 500);
    for (int row = 1; row <= samples->upperRow(); ++row) ASSERT_EQ(samples->number(row, 1), 60) << row;
}

}  // namespace
}  // namespace dravik
