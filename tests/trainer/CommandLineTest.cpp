

#include "trainer/support/Workspace.h"

namespace dravik::test {
namespace {

TEST(CommandLine, AWrongCommandLineIsOneLineWithAHintAndExitTwo) {
    using Words = std::vector<std::string>;
    const std::vector<std::tuple<std::string, Words, std::string>> kCases = {
        {"learn", {"--samples", "x.tsv"}, "learn needs --font NAME"},
        {"learn", {"--font", "--samples", "x.tsv"}, "option --font needs a value"},
        {"learn", {"--font", " ", "--samples", "x"}, "--font: the value is empty"},
        {"learn", {"--font", "f", "--font=g", "--samples", "x"}, "option --font is given twice"},
        {"learn", {"--font", "f", "--samples", "x", "y"}, "unexpected argument y"},
        {"learn",
         {"--font", "f", "--samples", "x", "--timeout", "10s"},
         "--timeout takes whole seconds from 1 to 86400, not 10s"},
        {"learn",
         {"--font", "f", "--samples", "x", "--charset", "e\xCC\x81"},
         "--charset: is an accent of its own (U+0301); a letter and its accent are to be one character"},
        {"read", {"--font", "f"}, "read needs IMAGE or --samples"},
        {"read", {"--font", "f", "--samples", "x", "a.pgm"}, "--samples excludes IMAGE"},
        {"read", {"--font", "f", "--charset", "x", "a.pgm"}, "unknown option --charset"},
        {"read", {"--font", "f", "--reject", "nan", "a.pgm"}, "--reject takes a number from 0 to 1, not nan"},
        {"read", {"--font", "f", "--confidence=1", "a.pgm"}, "no value goes with option --confidence"},
        {"fonts", {"--versions=a"}, "no value goes with option --versions"},
        {"fonts", {"--restore", "a", "--versions"}, "--versions excludes --restore"},
        {"fonts", {"--as", "b"}, "--as requires --restore"},
        {"", {"--nosuch"}, "unknown option --nosuch"},
        {"", {"--theme", "blue"}, "--theme: takes light, dark or system, not blue"}};
    for (auto [command, arguments, problem] : kCases) {
        if (!command.empty()) arguments.insert(arguments.begin(), command);
        const auto result = runWords(arguments);
        EXPECT_EQ(result.status, 2) << problem;
        EXPECT_THAT(result.out, IsEmpty());
        const std::string see = command.empty() ? "" : command + " ";
        EXPECT_THAT(result.err,
                    ElementsAre("dravik-trainer: " + problem + " (see dravik-trainer " + see + "--help)"));
    }
}

TEST(CommandLine, AMistypedCommandIsNoImageAndOpensNoWindow) {
    const auto mistyped = runWords({"LEARN", "--font", "f"});
    EXPECT_EQ(mistyped.status, 2);
    EXPECT_THAT(mistyped.err, ElementsAre(AllOf(HasSubstr("LEARN"), HasSubstr("learn, read and fonts"))));
    const Workspace workspace;
    const auto image = workspace.draw("part.pgm", "1");
    EXPECT_EQ(runWords({"lern", image}).status, 2);
    const auto gone = runWords({"gone.png", workspace.path("none.png")});
    EXPECT_EQ(gone.status, 1);
    EXPECT_THAT(gone.err, ElementsAre("dravik-trainer: gone.png, " + workspace.path("none.png") +
                                      ": no such file or folder"));
}

TEST(CommandLine, WhatExistsOpensTheWindow) {
    const Workspace workspace;
    const auto image = workspace.draw("part.pgm", "1");
    const auto window = std::get<WindowOptions>(
        parseCommandLine({"gone.png", "--jobs", "there", "--theme=dark", "--", image, "learn", "[a,b]"}));
    EXPECT_THAT(window.paths, ElementsAre("gone.png", image, "learn", "./[a,b]"));
    EXPECT_EQ(window.folder.folder(), JobFolder("there").folder());
    EXPECT_EQ(window.theme, "dark");
    EXPECT_TRUE(std::holds_alternative<WindowOptions>(parseCommandLine({})));
    EXPECT_TRUE(std::holds_alternative<WindowOptions>(parseCommandLine({image, "learn"})))
        << "a command stands in front";
}

TEST(CommandLine, ValuesAreTakenAsTheyAreGiven) {
    const auto learning = std::get<LearnOptions>(parseCommandLine(
        {"--jobs", "there", "learn", "--font=a=b", "--samples", "x.tsv", "--charset", "[-,\"]"}));
    EXPECT_EQ(learning.font, "a=b");
    EXPECT_EQ(learning.characters, "[-,\"]");
    EXPECT_EQ(learning.folder.folder(), JobFolder("there").folder());

    const auto reading = std::get<ReadOptions>(parseCommandLine(
        {"read", "--font", "f", "--reject=0.5", "a.pgm", "--confidence", "--", "--b.pgm", "[c]"}));
    EXPECT_THAT(reading.images, ElementsAre("a.pgm", "--b.pgm", "./[c]"));
    EXPECT_EQ(reading.rejectLimit, 0.5);
    EXPECT_TRUE(reading.showsConfidence);
}

TEST(CommandLine, HelpAndVersionAreResults) {
    EXPECT_THAT(runWords({"--version"}).out, ElementsAre(StartsWith("dravik-trainer ")));
    const std::vector<std::pair<std::vector<std::string>, std::vector<std::string>>> kCases = {
        {{"--help"},
         {"Usage: dravik-trainer [OPTIONS] [IMAGE|FOLDER...]", "--theme", "learn", "read", "fonts",
          "Exit status"}},
        {{"read", "-h"}, {"Usage: dravik-trainer read [OPTIONS] [IMAGE...]", "0 to 1", "--jobs"}}};
    for (const auto& [arguments, says] : kCases) {
        const auto result = runWords(arguments);
        EXPECT_EQ(result.status, 0);
        EXPECT_THAT(result.err, IsEmpty());
        for (const auto& text : says) EXPECT_THAT(result.out, Contains(HasSubstr(text)));
    }
}

TEST(CommandLine, ResultsThatCannotBeWrittenAreAFailure) {
    std::ostringstream full;
    full.setstate(std::ios::badbit);
    std::ostringstream err;
    EXPECT_EQ(runCommand(parseCommandLine({"--version"}), readPgm, {full, err, false}), 1);
    EXPECT_EQ(err.str(), "dravik-trainer: the results cannot be written\n");
}

}  // namespace
}  // namespace dravik::test
