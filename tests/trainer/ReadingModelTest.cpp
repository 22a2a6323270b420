#include "support/Testing.h"
#include "trainer/window/ReadingModel.h"

namespace dravik::test {

using namespace engine;
using namespace trainer;
namespace {

Reading readingOf(std::initializer_list<std::vector<ReadCharacter>> lines) {
    Reading reading;
    reading.available = true;
    reading.lines = lines;
    return reading;
}
ReadCharacter read(const char* character, double confidence) {
    return {{}, character, confidence};
}

TEST(ReadingModel, SaysHowSureTheFontIsOfEachCharacter) {
    ReadingModel model;
    model.setReading(readingOf({{read("A", 0.994), read("B", kWeakConfidence - 0.01)}, {read("C", 0.01)}}));
    ASSERT_EQ(model.lines().size(), 2u);
    const auto& first = model.lines()[0];
    EXPECT_EQ(first[0].tip, "A: 99 % sure");
    EXPECT_FALSE(first[0].weak);
    EXPECT_EQ(first[1].tip, "B: 59 % sure (weak)");
    EXPECT_TRUE(first[1].weak);
    EXPECT_EQ(model.lines()[1][0].text, "?") << "hardly more than a guess";
    EXPECT_EQ(model.lines()[1][0].tip, "C: 1 % sure (not taken)");
    EXPECT_EQ(model.text(), "AB\n?");
    EXPECT_EQ(model.description(), "2 weak characters");
}

TEST(ReadingModel, TellsTheNoteWhereThereIsNothingToRead) {
    ReadingModel model;
    model.setReading(readingOf({{read("A", 0.1)}}));
    EXPECT_EQ(model.description(), "1 weak character");
    Reading nothing;
    nothing.note = "No font is selected";
    model.setReading(nothing);
    EXPECT_EQ(model.text(), "No font is selected");
    EXPECT_EQ(model.description(), "") << "nothing of the reading before";
    EXPECT_EQ(model.shownLines(), 1);
    const std::vector<ReadCharacter> line = {read("A", 1)};
    model.setReading(readingOf({line, line, line, line}));
    EXPECT_EQ(model.shownLines(), 3);
}

}  // namespace
}  // namespace dravik::test
