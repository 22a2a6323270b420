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
    std::string tips;
    for (const auto& line : model.lines())
        for (const auto& one : line) tips += one.tip + (one.weak ? ", marked; " : "; ");
    EXPECT_EQ(tips, "A: 99 % sure; B: 59 % sure (weak), marked; C: 1 % sure (not taken), marked; ");
    EXPECT_EQ(model.text(), "AB\n?") << "hardly more than a guess";
    EXPECT_EQ(model.description(), "2 weak characters");
}

}  // namespace
}  // namespace dravik::test
