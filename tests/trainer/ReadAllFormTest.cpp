// All opened images read in one go: what is listed first, what is counted, and what a file gets of it.
#include "trainer/window/ReadAllForm.h"

#include "engine/embedded/EmbeddedTool.h"
#include "trainer/support/Workspace.h"

namespace dravik::test {

using namespace ui;
namespace {

class ReadAllFormTest : public testing::Test {
  protected:
    ReadAllFormTest() {
        EXPECT_EQ(workspace.learnDigits("digits").status, 0);
        EmbeddedTool tool{JobFolder(workspace.jobs())};
        tool.LoadFont("digits");
        reader = std::make_shared<const FontReader>(tool.reader());
    }
    void readAll(const std::vector<ReadAll::Task>& tasks) {
        form.start(std::make_unique<ReadAll>(reader, readPgm, tasks));
        while (form.tmrRead.enabled()) {
            form.takeRead();
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
        }
    }

    Workspace workspace;
    std::shared_ptr<const FontReader> reader;
    std::string opened, file;
    ReadAllForm form{[this](const std::string& path) { opened = path; }, [this] { return file; }};
};

TEST_F(ReadAllFormTest, TheMostDoubtfulIsOnTopAndAClickOpensIt) {
    const std::string right = workspace.draw("right.pgm", "4071"), wrong = workspace.draw("wrong.pgm", "123"),
                      unknown = workspace.draw("unknown.pgm", "98\n71"),
                      blank = workspace.draw("blank.pgm", ""),
                      broken = workspace.write("broken.pgm", "no image");
    readAll({{right, "4071"}, {wrong, "124"}, {unknown}, {blank, "5"}, {broken}});
    EXPECT_THAT(form.lblSummary.caption(), StartsWith("5 of 5 read: 1 right, 1 wrong, 2 refused, 1 without"));
    ASSERT_EQ(form.grid.rows(), 6);
    EXPECT_THAT(form.grid.text(1, 2) + form.grid.text(2, 2),
                AllOf(HasSubstr("no characters found"), HasSubstr("broken.pgm")));
    std::vector<std::string> third;
    for (int column = 0; column < 5; ++column) third.push_back(form.grid.text(3, column));
    EXPECT_EQ(third[0] + " " + third[2] + " " + third[3] + " " + third[4], "wrong.pgm wrong 123 124");
    EXPECT_EQ(form.grid.text(4, 3) + form.grid.text(5, 3), "407198 71");
    form.grid.select(3, 0, 3, 0);
    form.grid.setMouseCell(3, 1);
    form.grid.mouseDown({kLeftButton, 0, 0, 0});
    EXPECT_EQ(opened, wrong);
    file = workspace.path("all.csv");
    form.cmdExport.press();
    EXPECT_THAT(Workspace::content(file), AllOf(HasSubstr(wrong + ",123,"), HasSubstr(",124,no,")));
    file = workspace.jobs();  // a folder
    form.cmdExport.press();
    EXPECT_THAT(form.lblSummary.caption(), StartsWith("Not written: "));

    const FoundCharacter second = reader->read(readPgm(right)).at(1).place;
    const auto wide = static_cast<float>(second.right + 4), high = static_cast<float>(second.bottom + 12);
    readAll({{right, "40", SegmentationSettings{.region = RotatedBox{wide / 2, high / 2, wide, high, 0}}}});
    EXPECT_EQ(form.grid.text(1, 2), "right") << "looked at in its own region: " << form.grid.text(1, 3);
}

TEST_F(ReadAllFormTest, CanBeStoppedAndClosed) {
    const std::vector<ReadAll::Task> many(4000, {workspace.draw("a.pgm", "4071")});
    form.load();
    form.start(std::make_unique<ReadAll>(reader, readPgm, many));
    while (form.readings().empty()) form.takeRead();
    form.cmdStop.press();
    while (form.tmrRead.enabled()) form.takeRead();
    EXPECT_LT(form.readings().size(), many.size());
    EXPECT_THAT(form.lblSummary.caption(), HasSubstr("; stopped"));
    form.start(std::make_unique<ReadAll>(reader, readPgm, many));
    form.cmdClose.press();
    EXPECT_FALSE(form.tmrRead.enabled()) << "nothing goes on behind a closed form";
}

}  // namespace
}  // namespace dravik::test
