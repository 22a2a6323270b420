// What the engine makes of each labelled image, beside what it made of it when that was last looked at
// (regression/expected.tsv): a change that makes one worse fails, and so does one that makes it better, until
// the table says so. With DRAVIK_REWRITE_EXPECTED set the test writes the table anew; look at its diff.

#include "engine/LabelledImages.h"
#include "engine/LearntSheets.h"
#include "support/Differences.h"
#include "support/Testing.h"

namespace dravik::test {
namespace {

const std::string kSource = DRAVIK_SOURCE_DIR "/";
const std::string kTable = kSource + "tests/engine/regression/expected.tsv";

struct Seen {
    int found = 0;          // characters
    std::size_t wrong = 0;  // of those read without a font, by edit distance
};

// Of every image, by its path below the source folder.
std::map<std::string, Seen> expected() {
    std::map<std::string, Seen> result;
    std::ifstream table(kTable);
    std::string row;
    for (std::getline(table, row); std::getline(table, row);) {
        const std::size_t first = row.find('\t'), second = row.find('\t', first + 1);
        const std::size_t third = row.find('\t', second + 1);
        if (third == std::string::npos) throw std::runtime_error(kTable + ": not a row: " + row);
        result[row.substr(0, first)] = {std::stoi(row.substr(second + 1)), std::stoul(row.substr(third + 1))};
    }
    return result;
}

class Regression : public testing::TestWithParam<std::string> {};

// How far a reading of so many characters is from the text counts once for both.
void compare(const std::string& name, int characters, const Seen& now, const Seen& before) {
    const int missed = std::abs(now.found - characters), missedBefore = std::abs(before.found - characters);
    EXPECT_LE(missed, missedBefore) << name << ": " << now.found << " characters are found now";
    EXPECT_LE(now.wrong, before.wrong) << name << ": so many characters are read wrong now";
    if (missed > missedBefore || now.wrong > before.wrong) return;
    EXPECT_FALSE(missed < missedBefore || now.wrong < before.wrong)
        << name << ": unexpected pass: " << now.found << " characters of " << characters << " are found, "
        << now.wrong << " are wrong";
}

TEST_P(Regression, EachImageIsFoundAndReadAsWellAsBefore) {
    const bool rewrites = std::getenv("DRAVIK_REWRITE_EXPECTED") != nullptr;
    const std::map<std::string, Seen> before = expected();
    const TemporaryFolder folder;
    EmbeddedTool tool{JobFolder(folder.path())};
    const std::vector<LabelledImage> images = labelledImages(kSource + GetParam());
    ASSERT_FALSE(images.empty());
    std::string rows;
    for (const LabelledImage& image : images) {
        tool.setImage(readPng(image.file));
        Seen now{static_cast<int>(tool.found().size()), 0};
        std::string read;
        for (const SuggestedCharacter& one : tool.suggest()) read += one.best().character;
        now.wrong = differences(image.text, read);
        const std::string name = GetParam() + "/" + image.name;
        const int characters = static_cast<int>(characterCount(image.text));
        rows += name + '\t' + std::to_string(characters) + '\t' + std::to_string(now.found) + '\t' +
                std::to_string(now.wrong) + '\n';
        if (rewrites) continue;
        const auto row = before.find(name);
        if (row == before.end())
            ADD_FAILURE() << name << " is not in the table";
        else
            compare(name, characters, now, row->second);
    }
    if (rewrites) std::ofstream(kTable, std::ios::app) << rows;
}

// One sample of each character: what any face looks like, and what stands beside a character, tell the rest.
TEST(RegressionOfReading, FontsOfOneSheetReadAsWellAsBefore) {
    constexpr std::size_t kWrong = 2;
    std::vector<LabelledImage> lines;
    for (const char* name : {"corpus", "regression/usual", "regression/extreme", "regression/scenes"})
        for (LabelledImage& image : labelledImages(kSource + "tests/engine/" + name))
            lines.push_back(std::move(image));
    std::size_t wrong = 0, characters = 0;
    for (const LabelledImage& sheet : labelledImages(kSource + "tests/engine/regression/sheets")) {
        const TemporaryFolder folder;
        EmbeddedTool tool{JobFolder(folder.path())};
        tool.CreateFont(sheet.font);
        includeSheet(tool, sheet);
        train(tool);
        for (const LabelledImage& image : lines) {
            if (image.font != sheet.font) continue;
            tool.setImage(readPng(image.file));
            wrong += differences(image.text, textOf(tool.read()));
            characters += characterCount(image.text);
        }
    }
    EXPECT_GT(characters, 250u);
    EXPECT_LE(wrong, kWrong) << "of " << characters;
}

INSTANTIATE_TEST_SUITE_P(Folders, Regression,
                         testing::Values("data/parts/rendered_lines", "data/parts/rendered_charset",
                                         "tests/engine/corpus", "tests/engine/small_letters",
                                         "tests/engine/regression/usual", "tests/engine/regression/extreme",
                                         "tests/engine/regression/sheets", "tests/engine/regression/repeated",
                                         "tests/engine/regression/scenes"),
                         [](const testing::TestParamInfo<std::string>& folder) {
                             return folder.param.substr(folder.param.rfind('/') + 1);
                         });

}  // namespace
}  // namespace dravik::test
