#include "trainer/commands/CommandLine.h"

#include <gmock/gmock.h>

#include <sstream>

#include "trainer/support/PgmFile.h"
#include "trainer/support/Workspace.h"

namespace dravik::test {

using namespace trainer;
using namespace ui;
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

CommandResult run(const std::vector<std::string>& arguments) {
    std::ostringstream out;
    std::ostringstream err;
    const int status = runHeadless(arguments, readPgm, out, err, false);
    return {status, linesOf(out.str()), linesOf(err.str())};
}

TEST(CommandLine, AWrongCommandLineIsOneLineWithAHintAndExitTwo) {
    const std::vector<std::pair<std::vector<std::string>, std::string>> kCases = {
        {{}, "no command"},
        {{"teach"}, "unknown command teach"},
        {{"learn", "--samples", "x.tsv"}, "learn needs --font NAME"},
        {{"learn", "--font", "f"}, "learn needs --samples LIST.tsv"},
        {{"learn", "--font", "--samples", "x.tsv"}, "option --font needs a value"},
        {{"learn", "--font", "f", "--samples"}, "option --samples needs a value"},
        {{"learn", "--font", " ", "--samples", "x"}, "the value of --font is empty"},
        {{"learn", "--font", "f", "--font=g", "--samples", "x"}, "option --font is given twice"},
        {{"learn", "--font", "f", "--samples", "x", "y"}, "unexpected argument y"},
        {{"learn", "--font", "f", "--samples", "x", "--timeout", "0"},
         "--timeout takes whole seconds from 1 to 86400, not 0"},
        {{"learn", "--font", "f", "--samples", "x", "--timeout", "10s"},
         "--timeout takes whole seconds from 1 to 86400, not 10s"},
        {{"learn", "--font", "f", "--samples", "x", "--charset="}, "the value of --charset is empty"},
        {{"learn", "--font", "f", "--samples", "x", "--charset", "A\tB"}, "--charset is not UTF-8 text"},
        {{"read", "--font", "f"}, "read needs at least one image"},
        {{"read", "a.pgm"}, "read needs --font NAME"},
        {{"read", "--font", "f", "--samples", "x", "a.pgm"}, "unknown option --samples"},
        {{"read", "--font", "f", "--reject", "1.5", "a.pgm"}, "--reject takes a number from 0 to 1, not 1.5"},
        {{"read", "--font", "f", "--reject", "nan", "a.pgm"}, "--reject takes a number from 0 to 1, not nan"},
        {{"read", "--font", "f", "--confidence=1", "a.pgm"}, "no value goes with option --confidence"},
        {{"read", "--font", "--confidence", "a.pgm"}, "option --font needs a value"},
        {{"fonts", "--jobs="}, "the value of --jobs is empty"},
        {{"fonts", "all"}, "unexpected argument all"}};
    for (const auto& [arguments, problem] : kCases) {
        const auto result = run(arguments);
        EXPECT_EQ(result.status, 2) << problem;
        EXPECT_THAT(result.out, IsEmpty());
        EXPECT_THAT(result.err, ElementsAre("dravik-trainer: " + problem + " (see dravik-trainer --help)"));
    }
}

TEST(CommandLine, HelpAndVersionAreResults) {
    EXPECT_THAT(run({"--version"}).out, ElementsAre(StartsWith("dravik-trainer ")));
    for (const auto& arguments : {std::vector<std::string>{"--help"}, {"learn", "--help"}, {"read", "-h"}}) {
        const auto result = run(arguments);
        EXPECT_EQ(result.status, 0);
        EXPECT_THAT(result.err, IsEmpty());
        EXPECT_THAT(result.out.at(0), StartsWith("Usage: dravik-trainer"));
    }
}

TEST(CommandLine, ResultsThatCannotBeWrittenAreAFailure) {
    std::ostringstream full;
    full.setstate(std::ios::badbit);
    std::ostringstream err;
    EXPECT_EQ(runHeadless({"--version"}, readPgm, full, err, false), 1);
    EXPECT_EQ(err.str(), "dravik-trainer: the results cannot be written\n");
}

TEST(CommandLine, OnlyCommandsAreHeadless) {
    EXPECT_TRUE(isHeadlessCommand({"fonts"}));
    EXPECT_TRUE(isHeadlessCommand({"--help"}));
    EXPECT_FALSE(isHeadlessCommand({}));
    EXPECT_FALSE(isHeadlessCommand({"./learn"}));

    const auto options = windowOptions({"a.png", "--jobs", "there", "--", "-b.png"});
    EXPECT_EQ(options.problem, "");
    EXPECT_EQ(options.jobs, "there");
    EXPECT_THAT(options.paths, ElementsAre("a.png", "-b.png"));
    EXPECT_THAT(windowOptions({"--full"}).problem, HasSubstr("unknown option --full"));
    EXPECT_THAT(windowOptions({"--jobs="}).problem, HasSubstr("--jobs is empty"));
}

}  // namespace
}  // namespace dravik::test
