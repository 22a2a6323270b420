#include "trainer/commands/SampleList.h"

#include "trainer/support/Workspace.h"

namespace dravik::test {
namespace {

std::vector<std::string> problemsOf(const std::function<void()>& reading) {
    try {
        reading();
    } catch (const SampleListError& error) {
        return error.problems;
    }
    return {};
}

std::vector<std::string> problemsOf(const std::string& content) {
    return problemsOf([&] { parseSampleList(content, "LIST.tsv"); });
}

TEST(SampleList, RowsAreTakenAsTheyStandInTheFile) {
    const auto samples = parseSampleList(
        "\xEF\xBB\xBF"
        "a.png\tAB 12\\n\"C\"\r\n"
        "\r\n"
        "#2 b.png\tn\\x\\nn\n"
        "/parts/c.png\t\xC3\xA9\xE2\x82\xAC",
        "lists/LIST.tsv");
    using testing::_, testing::FieldsAre;
    // Quotes are data; blanks and line breaks are not on the part.
    ASSERT_THAT(samples, ElementsAre(FieldsAre("a.png", _, "AB12\"C\""), FieldsAre("#2 b.png", _, "n\\xn"),
                                     FieldsAre("/parts/c.png", _, "\xC3\xA9\xE2\x82\xAC")));
    EXPECT_EQ(toPath(samples[0].path), toPath("lists") / "a.png");
    EXPECT_EQ(toPath(samples[2].path), toPath("/parts/c.png")) << "an absolute name stays";
}

TEST(SampleList, EveryWrongLineIsNamedWithWhatIsWrong) {
    EXPECT_THAT(
        problemsOf("a.png\tA\nb.png B\n\tC\n\nd.png\t \\n\ne.png\tE\tF\nf.png\t\xE9\n"),
        ElementsAre("LIST.tsv line 2: no tab between image and text",
                    "LIST.tsv line 3: no image before the tab", "LIST.tsv line 5: no text after the tab",
                    "LIST.tsv line 6: more than one tab", "LIST.tsv line 7: not UTF-8 text"));
    EXPECT_THAT(problemsOf("a.png\tA\xE2\x80\x8B\nb.png\te\xCC\x81\ne\xCC\x81.png\tA\n"),
                ElementsAre("LIST.tsv line 1: a character that is not printed (U+200B)",
                            StartsWith("LIST.tsv line 2: an accent of its own (U+0301)")));
    EXPECT_THAT(problemsOf("\xEF\xBB\xBF\n \n"), ElementsAre("LIST.tsv: the list is empty"));
}

TEST(SampleList, AFileThatCannotBeReadSaysWhy) {
    const Workspace workspace;
    EXPECT_THAT(problemsOf([&] { readSampleList(workspace.path("none.tsv")); }),
                ElementsAre(StartsWith(workspace.path("none.tsv") + ": File not found")));
    EXPECT_THAT(problemsOf([&] { readSampleList(workspace.path("")); }),
                ElementsAre(workspace.path("") + ": is a folder, not a list"));
}

}  // namespace
}  // namespace dravik::test
