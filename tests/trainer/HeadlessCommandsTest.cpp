// The commands from end to end: real images, the real tool.

#include <csignal>
#include <regex>

#include "base/FileLock.h"
#include "engine/embedded/EmbeddedTool.h"
#include "engine/font/FontVersions.h"
#include "trainer/support/Workspace.h"

namespace dravik::test {
namespace {

MATCHER_P(Reads, pattern, "") {
    return std::regex_match(arg, std::regex(pattern));
}

class HeadlessCommands : public testing::Test {
  protected:
    CommandResult learn(const std::string& font, const std::string& list,
                        std::vector<std::string> more = {}) {
        more.insert(more.begin(), {"learn", "--font", font, "--samples", workspace.write("list.tsv", list)});
        return workspace.run(more);
    }

    CommandResult read(const std::string& font, std::vector<std::string> images) {
        images.insert(images.begin(), {"read", "--font", font});
        return workspace.run(images);
    }

    std::size_t samplesIn(const std::string& font) const {
        return readFont(workspace.fontFile(font)).samples.size();
    }

    // The command says this and nothing else.
    template <class Matcher>
    static void fails(const CommandResult& result, const Matcher& said) {
        EXPECT_EQ(result.status, 1);
        EXPECT_THAT(result.out, IsEmpty());
        EXPECT_THAT(result.err, said);
    }

    Workspace workspace;
};

TEST_F(HeadlessCommands, AFontLearntFromAListReadsOtherImages) {
    const auto learnt = workspace.learnDigits("digits");
    EXPECT_EQ(learnt.status, 0);
    EXPECT_THAT(learnt.err, IsEmpty());
    EXPECT_THAT(
        learnt.out,
        ElementsAre("included 10\tdigits5.pgm", "included 10\tdigits6.pgm", "included 10\tdigits7.pgm",
                    "samples 30", Reads("cycles [1-9][0-9]*"), Reads("rms 0\\.[0-9]+"),
                    Reads("seconds [0-9]+\\.[0-9]"), "saved " + workspace.fontFile("digits"),
                    Reads("Held-out check \\(3-fold\\): [0-9.]+ % right, [0-9] of 30 wrong.*")));

    const auto one = workspace.draw("one.pgm", "3141592650", 8);
    const auto two = workspace.draw("two.pgm", "90817\n26354", 4);
    const auto texts = read("digits", {one, two});
    EXPECT_EQ(texts.status, 0);
    EXPECT_THAT(texts.err, IsEmpty());
    EXPECT_THAT(texts.out, ElementsAre(one + "\t3141592650", two + "\t90817\\n26354"));

    const auto sure = read("digits", {"--confidence", one, two, "--reject=1"});
    EXPECT_THAT(sure.out, ElementsAre(Reads(".*one.pgm\t[?]{10}\t([01][.][0-9]{3} ?){10}"),
                                      Reads(".*two.pgm\t[?]{5}\\\\n[?]{5}\t([01][.][0-9]{3} ?){10}")));

    const auto fonts = workspace.run({"fonts"});
    EXPECT_EQ(fonts.status, 0);
    EXPECT_THAT(fonts.out, ElementsAre("font\tcharacters\tsamples\ttrained\tdate",
                                       Reads("digits\t0123456789\t30\tyes\t20..-..-.. ..:..:..")));
}

// A face that draws O and 0 alike, of which there is one sample each.
TEST_F(HeadlessCommands, NeighboursTellShapesApartThatAreDrawnAlike) {
    workspace.draw("figures.pgm", "1203456789");
    workspace.draw("letters.pgm", "LABOTCHE");
    EXPECT_EQ(learn("f", "figures.pgm\t1203456789\nletters.pgm\tLABOTCHE\n").status, 0);
    const auto number = workspace.draw("number.pgm", "2021", 7),
               word = workspace.draw("word.pgm", "CHOAB", 7);
    const auto right = ElementsAre(number + "\t2021", word + "\tCHOAB");
    EXPECT_THAT(read("f", {number, word}).out, right);
    EXPECT_THAT(read("f", {"--no-context", number, word}).out, testing::Not(right));
}

TEST_F(HeadlessCommands, ImagesThatCannotBeIncludedAreRefusedInWordsAndTheOthersGoOn) {
    workspace.draw("good.pgm", "12\n34");
    workspace.draw("short.pgm", "123");
    const auto result = learn("f",
                              "gone.pgm\tA\n"
                              "short.pgm\t1234\n"
                              "good.pgm\t1 2\\n3 4\n"
                              "./good.pgm\t1234\n",
                              {"--timeout", "3"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.err, IsEmpty());
    EXPECT_THAT(result.out,
                ElementsAre("refused\tgone.pgm\t" + workspace.path("gone.pgm") + ": no such file",
                            "refused\tshort.pgm\t4 characters typed, 3 found", "included 4\tgood.pgm",
                            "refused\t./good.pgm\tincluded already, from a row above", "samples 4",
                            StartsWith("cycles "), StartsWith("rms "), StartsWith("seconds "),
                            StartsWith("saved "), StartsWith("Held-out check: not made")));
}

TEST_F(HeadlessCommands, NothingIsTrainedWhenEveryImageIsRefused) {
    const auto part = workspace.draw("part.pgm", "12");
    const auto result = learn("f", "part.pgm\t123\n");
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.out, ElementsAre(StartsWith("refused\tpart.pgm\t")));
    EXPECT_THAT(result.err, ElementsAre("dravik-trainer: nothing to learn: every image was refused"));

    fails(read("f", {part}), ElementsAre("dravik-trainer: font f: is not trained"));
    EXPECT_THAT(workspace.run({"fonts"}).out.at(1), Reads("f\t.*\t0\tno\t.*"));

    fails(learn("g", "part.pgm\t12\npart.pgm 12\n"),
          ElementsAre("dravik-trainer: " + workspace.path("list.tsv") +
                      " line 2: no tab between image and text"));
    EXPECT_FALSE(std::filesystem::exists(workspace.fontFile("g"))) << "a wrong list changes nothing";
}

TEST_F(HeadlessCommands, ASecondListAddsToTheFontAndItsCharacters) {
    ASSERT_EQ(workspace.learnDigits("my font").status, 0);
    EXPECT_TRUE(std::filesystem::exists(workspace.fontFile("my_font"))) << "the name is cleaned";
    workspace.draw("letters.pgm", "ACHT");
    const auto result =
        learn("my font", "letters.pgm\tACHT\n", {"--charset", "0123456789A", "--timeout", "4"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.err, IsEmpty());
    EXPECT_THAT(result.out.at(1), "samples 34") << "the samples of the first list are still there";
    EXPECT_THAT(workspace.run({"fonts"}).out.at(1), Reads("my_font\t0123456789ACHT\t34\tyes\t.*"));
}

TEST_F(HeadlessCommands, FontNamesThatTheDialogsRefuseAreRefused) {
    workspace.draw("part.pgm", "12");
    fails(
        learn("New", "part.pgm\t12\n"),
        ElementsAre("dravik-trainer: font New: Font name 'new' is reserved, please select a different name"));
    ASSERT_EQ(learn("digits", "part.pgm\t12\n", {"--timeout", "1"}).status, 0);
    fails(learn("Digits", "part.pgm\t12\n"),
          ElementsAre("dravik-trainer: font Digits: there is a font whose name differs only in the case of "
                      "its letters"));
    EXPECT_THAT(read("other", {"x.pgm"}).err, ElementsAre(AllOf(HasSubstr("font other: no such font in "),
                                                                EndsWith("; there are digits"))));
}

TEST_F(HeadlessCommands, AnUnreadableImageIsOneLineAndTheOthersAreRead) {
    ASSERT_EQ(workspace.learnDigits("digits").status, 0);
    const auto good = workspace.draw("good.pgm", "507");
    const auto text = workspace.write("text.pgm", "this is a text");
    const auto blank = workspace.path("blank.pgm");
    writePgm(blank, GreyImage(50, 50, 200));
    const auto result = read("digits", {workspace.path("gone.pgm"), text, blank, good});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, ElementsAre("dravik-trainer: " + workspace.path("gone.pgm") + ": no such file",
                                        "dravik-trainer: " + text + ": is not a grey image"));
    EXPECT_THAT(result.out, ElementsAre(blank + "\t", good + "\t507"));
}

TEST_F(HeadlessCommands, ADamagedFontIsNamedByEveryCommandAndLeftAsItIs) {
    ASSERT_EQ(workspace.learnDigits("sound").status, 0);
    std::filesystem::copy_file(workspace.fontFile("sound"), workspace.fontFile("broken"));
    auto content = Workspace::content(workspace.fontFile("broken"));
    content[content.size() / 2] = static_cast<char>(content[content.size() / 2] ^ 0x40);
    workspace.write("jobs/Fonts/broken.nnd", content);

    const auto part = workspace.draw("part.pgm", "12");
    for (const auto& result : {learn("broken", "part.pgm\t12\n"), read("broken", {part})})
        fails(result, ElementsAre(StartsWith("dravik-trainer: font broken: ")));
    const auto fonts = workspace.run({"fonts"});
    EXPECT_EQ(fonts.status, 1);
    EXPECT_THAT(fonts.err, ElementsAre(StartsWith("dravik-trainer: font broken: ")));
    EXPECT_THAT(fonts.out, ElementsAre(StartsWith("font\t"), StartsWith("sound\t")));
    EXPECT_EQ(Workspace::content(workspace.fontFile("broken")), content);
}

TEST_F(HeadlessCommands, WhatAFontWasCanBeListedAndRestored) {
    EXPECT_THAT(workspace.run({"fonts", "--versions"}).out, ElementsAre(StartsWith("font\tversion\tkind\t")));
    ASSERT_EQ(workspace.learnDigits("digits").status, 0);
    EXPECT_THAT(workspace.run({"fonts", "--versions", "digits"}).err,
                ElementsAre("dravik-trainer: font digits: no earlier version is kept"));
    workspace.draw("letters.pgm", "ACHT");
    ASSERT_EQ(learn("digits", "letters.pgm\tACHT\n", {"--timeout", "1"}).status, 0);
    const auto more = Workspace::content(workspace.fontFile("digits"));

    const auto versions = workspace.run({"fonts", "--versions", "DIGITS"});
    EXPECT_EQ(versions.status, 0);
    ASSERT_EQ(versions.out.size(), 2u);
    EXPECT_THAT(versions.out[1],
                Reads("(digits|DIGITS)\t[0-9]{8}-[0-9]{6}-[0-9]{3}\tsaved\t30\tyes\t20..-..-.. ..:..:.."));

    const auto restored = workspace.run({"fonts", "--restore", "digits"});
    EXPECT_EQ(restored.status, 0);
    EXPECT_THAT(restored.out,
                ElementsAre(Reads("restored digits [0-9-]+ [(]saved .*, 30 samples[)] to .*digits.nnd")));
    EXPECT_EQ(samplesIn("digits"), 30u);
    EXPECT_EQ(Workspace::content(workspace.fontFile("digits") + ".bak"), more);

    // What was just replaced is the newest now; by its name it becomes another font.
    const auto newest = workspace.run({"fonts", "--versions"}).out.at(1).substr(7, 19);
    ASSERT_EQ(
        workspace.run({"fonts", "--restore", "digits", "--version", newest, "--as", "second one"}).status, 0);
    EXPECT_EQ(samplesIn("second_one"), 34u);
    EXPECT_EQ(samplesIn("digits"), 30u);

    EmbeddedTool(JobFolder(workspace.jobs())).DeleteFont("second_one");
    EXPECT_FALSE(std::filesystem::exists(workspace.fontFile("second_one")));
    EXPECT_THAT(workspace.run({"fonts", "--restore", "second_one"}).out, ElementsAre(HasSubstr("(deleted ")));
    EXPECT_EQ(samplesIn("second_one"), 34u);
}

TEST_F(HeadlessCommands, WhatCannotBeRestoredIsToldAndChangesNothing) {
    ASSERT_EQ(workspace.learnDigits("digits").status, 0);
    FontVersions kept(JobFolder(workspace.jobs()).fontsFolder());
    kept.keepDiscarded("digits", encodeFont({}));
    const auto taught = Workspace::content(workspace.fontFile("digits"));
    const auto version = workspace.run({"fonts", "--versions"}).out.at(1).substr(7, 19);
    const std::vector<std::pair<std::vector<std::string>, std::string>> kCases = {
        {{"other"}, "font other: no earlier version is kept"},
        {{"digits", "--version", "nosuch"}, "there is no version nosuch; fonts --versions digits lists them"},
        {{"digits"}, "only changes that were discarded"},
        {{"digits", "--version", version, "--as", "New"}, "reserved"}};
    for (auto [arguments, said] : kCases) {
        arguments.insert(arguments.begin(), {"fonts", "--restore"});
        fails(workspace.run(arguments), ElementsAre(HasSubstr(said)));
    }
    {
        const auto lock = FileLock::take(workspace.fontFile("digits") + ".lock");
        fails(workspace.run({"fonts", "--restore", "digits", "--version", version}),
              ElementsAre(AllOf(HasSubstr("is being changed by process "), HasSubstr(" since "))));
    }
    EXPECT_EQ(Workspace::content(workspace.fontFile("digits")), taught);

    workspace.write("jobs/Fonts/History/digits/20260301-000000-000.saved.nnd", "no font");
    const auto listed = workspace.run({"fonts", "--versions", "digits"});
    EXPECT_EQ(listed.status, 1);
    EXPECT_EQ(listed.out.size(), 3u);
    EXPECT_THAT(listed.err, ElementsAre(HasSubstr("20260301-000000-000.saved.nnd")));
}

TEST_F(HeadlessCommands, AFontThatCannotBeSavedIsAFailureWithItsReason) {
    workspace.draw("part.pgm", "12");
    const auto setWritable = [&](std::filesystem::perm_options how) {
        std::filesystem::permissions(workspace.fontFile("f"), std::filesystem::perms::owner_write, how);
    };
    const auto list = workspace.write("list.tsv", "part.pgm\t12\n");
    const auto result =
        workspace.run({"learn", "--font", "f", "--samples", list}, [&](const std::string& file) {
            setWritable(std::filesystem::perm_options::remove);
            return readPgm(file);
        });
    EXPECT_EQ(result.status, 1);
    ASSERT_EQ(result.out.size(), 5U);
    EXPECT_THAT(result.out.back(), StartsWith("seconds ")) << "not saved";
    EXPECT_THAT(result.err, ElementsAre(AllOf(StartsWith("dravik-trainer: font f: "), HasSubstr("Fonts"))));

    // What was learnt is not lost.
    setWritable(std::filesystem::perm_options::add);
    const auto next = learn("f", "part.pgm\t12\n");
    EXPECT_EQ(next.status, 0);
    EXPECT_THAT(next.err, ElementsAre(AllOf(StartsWith("dravik-trainer: f: 2 changes of "),
                                            HasSubstr("had not been saved; they are in the font again"))));
    EXPECT_THAT(next.out, Contains("samples 4"));
}

// What cannot be kept is not included, and what holds the font is named.
TEST_F(HeadlessCommands, AFontThatCannotBeChangedIsAFailureBeforeAnythingIsIncluded) {
    workspace.draw("part.pgm", "12");
    ASSERT_EQ(learn("f", "part.pgm\t12\n").status, 0);
    const auto before = Workspace::content(workspace.fontFile("f"));
    {
        engine::EmbeddedTool other{JobFolder(workspace.jobs())};
        other.LoadFont("f");
        other.DeleteSample(300000);
        fails(learn("f", "part.pgm\t12\n"), ElementsAre(AllOf(StartsWith("dravik-trainer: font f: "),
                                                              HasSubstr("is being changed by process"))));
        EXPECT_EQ(read("f", {workspace.path("part.pgm")}).status, 0);
    }
    EXPECT_EQ(Workspace::content(workspace.fontFile("f")), before);
}

// Presses Ctrl+C as soon as the progress of a training is written to it.
struct InterruptingBuffer : std::stringbuf {
    int sync() override {
        if (!interrupted_ && str().find("cycles") != std::string::npos) {
            interrupted_ = true;
            std::raise(SIGINT);
        }
        return 0;
    }

  private:
    bool interrupted_ = false;
};

TEST_F(HeadlessCommands, CtrlCDuringTheTrainingLeavesTheFontOnDiskAsItWas) {
    ASSERT_EQ(workspace.learnDigits("digits").status, 0);
    const auto before = Workspace::content(workspace.fontFile("digits"));
    workspace.draw("AC.pgm", "AC");
    const auto list = workspace.write("list.tsv", "AC.pgm\tAC\n");
    InterruptingBuffer progress;
    std::ostringstream out;
    std::ostream err(&progress);
    EXPECT_EQ(runCommand(parseCommandLine(
                             {"learn", "--font", "digits", "--samples", list, "--jobs", workspace.jobs()}),
                         readPgm, {out, err, true}),
              130);
    EXPECT_EQ(out.str(), "included 2\tAC.pgm\n");
    EXPECT_THAT(progress.str(), AllOf(HasSubstr(" %  "), HasSubstr("interrupted")));
    EXPECT_EQ(Workspace::content(workspace.fontFile("digits")), before);

    // But nothing that was included is lost.
    EXPECT_THAT(read("digits", {workspace.path("AC.pgm")}).err,
                ElementsAre(Reads("dravik-trainer: digits: (1 change|2 changes) of .* had not been saved; "
                                  "(it is|they are) in the font again")));
}

TEST_F(HeadlessCommands, FoldersAndListsAreReadInOrderAndCompared) {
    ASSERT_EQ(workspace.learnDigits("digits").status, 0);
    workspace.makeFolder("parts");
    std::string list;
    std::vector<std::string> expected;
    for (int i = 0; i < 9; ++i) {
        const std::string name = std::to_string(i) + ".pgm", text = std::to_string(1234567890 + i);
        workspace.draw("parts/" + name, text, 6 + i % 3);
        list.append("parts/").append(name).append("\t").append(text).append("\n");
        expected.push_back(fromPath(toPath(workspace.path("parts")) / name) + '\t' + text);
    }
    const auto folder = read("digits", {"--threads", "4", workspace.path("parts")});
    EXPECT_EQ(folder.status, 0);
    EXPECT_EQ(folder.out, expected);

    const std::string right = workspace.write("right.tsv", list);
    EXPECT_EQ(workspace.run({"read", "--font", "digits", "--samples", right}).status, 0);
    const std::string wrong =
        workspace.write("wrong.tsv", list + "parts/3.pgm\t1234567899\nparts/gone.pgm\t1\n");
    const auto compared = workspace.run({"read", "--font", "digits", "--samples", wrong});
    EXPECT_EQ(compared.status, 1);
    ASSERT_EQ(compared.out.size(), 10u);
    EXPECT_EQ(compared.out[9], "parts/3.pgm\t1234567893\twrong, should be 1234567899");
    EXPECT_EQ(compared.err.back(), "9 of 11 right, 1 wrong, 1 not read");

    fails(read("digits", {workspace.jobs()}), ElementsAre(HasSubstr("no images in this folder")));
}

TEST_F(HeadlessCommands, ReadingsComeAsCsvAndJson) {
    ASSERT_EQ(workspace.learnDigits("digits").status, 0);
    workspace.draw("a, c.pgm", "42", 8);
    const std::string list = workspace.write("list.tsv", "a, c.pgm\t42\na, c.pgm\t4\"2\ngone.pgm\t1\n");
    const auto csv = workspace.run({"read", "--font", "digits", "--csv", "--samples", list});
    ASSERT_EQ(csv.out.size(), 4u);
    EXPECT_THAT(csv.out[0], StartsWith("image,text,confidence,expected,right,problem"));
    EXPECT_THAT(csv.out[1], Reads("\"a, c\\.pgm\",42,[01]\\.[0-9]{3},42,yes,\\r?"));
    EXPECT_THAT(csv.out[2], Reads("\"a, c\\.pgm\",42,[01]\\.[0-9]{3},\"4\"\"2\",no,\\r?"));
    EXPECT_THAT(csv.out[3], StartsWith("gone.pgm,,,1,,"));

    const auto json = workspace.run({"read", "--font", "digits", "--json", "--samples", list});
    ASSERT_GE(json.out.size(), 8u);
    EXPECT_THAT(json.out[1], Reads("\\{\"image\": \"a, c\\.pgm\", \"expected\": \"42\", \"text\": \"42\", "
                                   "\"confidence\": [01]\\.[0-9]{4}, \"right\": true, \"characters\": \\["));
    EXPECT_THAT(json.out[2],
                Reads("  \\{\"character\": \"4\", \"confidence\": [01]\\.[0-9]{4}, \"line\": 0, \"box\": "
                      "\\[[0-9]+, [0-9]+, [0-9]+, [0-9]+\\], \"alternatives\": \\[.*\\]\\},"));
    EXPECT_THAT(json.out, Contains(HasSubstr("\"expected\": \"4\\\"2\", \"text\": \"42\"")));
    EXPECT_THAT(json.out, Contains(AllOf(HasSubstr("\"gone.pgm\""), HasSubstr("\"problem\": "))));
}

}  // namespace
}  // namespace dravik::test
