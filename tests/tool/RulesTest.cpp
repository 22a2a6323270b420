// The rules that the screen, the commands and the preview share.
#include <gtest/gtest.h>

#include <limits>

#include "screen/support/RecordingTool.h"
#include "support/Refused.h"
#include "tool/CaseRule.h"
#include "tool/FontName.h"
#include "tool/IncludeRules.h"

namespace dravik::test {
namespace {

TEST(CaseRule, OnlyTheLettersAToZDecide) {
    const auto caseOf = [](const std::vector<std::string>& characters) {
        RecordingTool tool;
        for (const auto& character : characters) tool.trained.push_back({character, 1, {}});
        return fontCase(tool);
    };
    EXPECT_EQ(caseOf({"A", "Z", "7"}), CharacterCase::Upper);
    EXPECT_EQ(caseOf({"a", "z", "\xC3\x89"}), CharacterCase::Lower);
    EXPECT_EQ(caseOf({"A", "b"}), CharacterCase::Mixed);
    EXPECT_EQ(caseOf({"@", "[", "`", "{", "\xC3\xA9"}), CharacterCase::None);
    EXPECT_EQ(caseOf({}), CharacterCase::None);

    EXPECT_EQ(inCase("aB\xC3\xA9", CharacterCase::Upper), "AB\xC3\x89");
    EXPECT_EQ(inCase("aB\xC3\x89", CharacterCase::Lower), "ab\xC3\xA9");
    EXPECT_EQ(inCase("aB", CharacterCase::Mixed), "aB");
    EXPECT_EQ(inCase("aB", CharacterCase::None), "aB");
}

// One sample a character, with the features given for it.
RecordTablePtr samplesOf(const std::vector<std::pair<char, std::vector<Cell>>>& samples) {
    std::vector<std::vector<Cell>> rows = {{"Id", "Code", "Distance", "", "", "F1", "F2"}};
    for (const auto& [character, features] : samples) {
        std::vector<Cell> row = {200000.0, static_cast<double>(character), 0.0, 0.0, 0.0};
        row.insert(row.end(), features.begin(), features.end());
        rows.push_back(row);
    }
    return std::make_shared<CellTable>(std::move(rows));
}

TEST(IncludeRules, SamplesWithoutInkDoNotCountAndInvalidFeaturesAreFound) {
    const auto found = foundSamples(samplesOf({{'A', {0.5, 0.0}}, {' ', {0.0, 0.0}}, {'B', {"0.25", 0.0}}}));
    EXPECT_EQ(found.characters, "AB");
    EXPECT_FALSE(found.invalid);
    EXPECT_EQ(foundSamples(nullptr).characters, "");

    const std::vector<Cell> kInvalid = {-0.01, std::numeric_limits<double>::infinity(),
                                        std::numeric_limits<double>::quiet_NaN(), "-1", "1.#INF"};
    for (const auto& value : kInvalid)
        EXPECT_EQ(
            foundSamples(samplesOf({{'A', {0.5, 0.5}}, {'B', {0.5, value}}, {'C', {0.5, value}}})).invalid,
            "B");
    EXPECT_EQ(refusal([] {
                  foundSamples(std::make_shared<CellTable>(
                      std::vector<std::vector<Cell>>{{"Id", "Code"}, {200000.0, "no code"}}));
              }),
              13);
}

TEST(IncludeRules, CharactersAreCountedNotBytesAndBlanksAtTheEndsAreNone) {
    EXPECT_EQ(textToInclude("  12 34 "), "12 34");
    EXPECT_TRUE(
        countsMatch("\xC3\xA9"
                    "1",
                    "AB"));
    EXPECT_FALSE(countsMatch("12 34", "1234"));
}

TEST(IncludeRules, AMissingCharacterIsNamedOnceInTheOrderFound) {
    EXPECT_EQ(missingCharacters({"b", "A", "a", "b", "1"}, "A1"), "ba");
    EXPECT_EQ(missingCharacters({"A"}, "A"), "");
    EXPECT_EQ(missingCharacters({"A"}, ""), "A");
}

TEST(FontNames, AreCleanedAndCompared) {
    EXPECT_EQ(CleanFontName("  a*b c.d|e/f\\g:h;i "), "a_b_c_d_e_f_g_h_i");
    EXPECT_TRUE(isReservedFontName("New"));
    EXPECT_FALSE(isReservedFontName("newer"));

    const std::vector<std::string> fonts = {"ocrb", "my_font"};
    EXPECT_EQ(fontNamed("ocrb", fonts), "ocrb");
    EXPECT_EQ(fontNamed(" my font", fonts), "my_font");
    EXPECT_EQ(fontNamed("OCRB", fonts), std::nullopt);
    EXPECT_TRUE(fontExists("OCRB", fonts));
    EXPECT_FALSE(fontExists("ocr", fonts));
}

}  // namespace
}  // namespace dravik::test
