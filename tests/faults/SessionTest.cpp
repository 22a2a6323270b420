// An operator's day with the trainer while the disk fails or the program is ended: at the next start each
// change that was completed is there, or the program has said that it is not. The last session of each story
// is done once to count its operations on files, then once for each of them and each way in which it can
// fail.
#include "FaultWorkplace.h"
#include "support/FontContent.h"

namespace dravik::test {
namespace {

// See OperatorSession.h.
struct Line {
    std::string what, font, rest;
    bool operator==(const Line&) const = default;
};
using Lines = std::vector<Line>;

Lines linesOf(const std::string& out) {
    Lines lines;
    std::istringstream stream(out);
    for (std::string text; std::getline(stream, text) && !stream.eof();) {
        std::istringstream words(text);
        Line& line = lines.emplace_back();
        std::getline(words, line.what, '\t');
        std::getline(words, line.font, '\t');
        std::getline(words, line.rest);
    }
    return lines;
}

Lines withoutRecovered(Lines lines) {
    std::erase_if(lines, [&](const Line& line) { return line.what == "recovered"; });
    return lines;
}

// It says that changes of the font were found.
bool isRecovered(const Lines& lines, const std::string& font) {
    return std::ranges::any_of(
        lines, [&](const Line& line) { return line.what == "recovered" && line.font == font; });
}

std::map<std::string, std::string> shownIn(const Lines& lines) {
    std::map<std::string, std::string> fonts;
    for (const Line& line : lines)
        if (line.what == "shown") fonts[line.font] = line.rest;
    return fonts;
}

class Sessions : public testing::TestWithParam<SessionStory> {
  protected:
    FaultWorkplace place;
    Words act;
    std::map<std::string, std::string> before;  // content of each font as it is shown
    std::set<std::string> known;                // all contents that fonts have had
    Outcome usual;                              // the session without a fault

    static Words session(const std::vector<std::string>& steps, bool hasWindow = false) {
        Words words = {hasWindow ? "fault-window" : "fault-acts", "session"};
        words.insert(words.end(), steps.begin(), steps.end());
        return words;
    }

    Lines show() const {
        const Outcome run = place.run({"fault-acts", "show"});
        EXPECT_EQ(run.status, 0) << "the next start fails: " << run.err;
        return linesOf(run.out);
    }

    static bool isShownIn(const std::map<std::string, std::string>& shown, const std::string& content) {
        return std::ranges::any_of(shown, [&](const auto& one) { return one.second == content; });
    }

    // Of every font file, those of versions and backups included.
    std::set<std::string> kept() const {
        std::set<std::string> all;
        for (const fs::path& file : place.fontFiles()) all.insert(test::contentOf(engine::readFont(file)));
        return all;
    }

    void check(const Point& point) const {
        place.bringBack("before");
        const Outcome run = place.run(act, point);
        const Lines told = linesOf(run.out), usually = linesOf(usual.out);
        EXPECT_TRUE(run.signal == 0 || run.signal == SIGKILL) << run.signal << run.err;
        if (run.signal == 0 && run.status == 0) {
            EXPECT_TRUE(withoutRecovered(told) == withoutRecovered(usually))
                << "it ended well and did not do it: " << run.out;
        } else if (run.signal == 0) {
            EXPECT_EQ(run.status, 1);
            EXPECT_NE(run.err, "") << "no word of what failed";
        }

        // What each font must hold: what it was last told to be. A step that failed or was going on may have
        // been done all the same.
        std::map<std::string, std::set<std::string>> allowed;
        std::map<std::string, std::string> last = before, latest = before;  // without and with what failed
        std::map<std::string, std::string> beingLetGo;
        std::set<std::string> letGo, had = known;  // steps behind one that failed lead elsewhere
        bool hasFailed = false;
        for (const auto& [font, content] : before) allowed[font] = {content};
        for (const Line& line : told) {
            had.insert(line.rest);
            if (line.what == "shown" || line.what == "failed") latest[line.font] = line.rest;
            if (line.what == "shown") {
                allowed[line.font] = {line.rest};
                last[line.font] = line.rest;
                letGo.erase(line.rest);  // it came back, or has another name
            } else if (line.what == "failed") {
                // The screen's Include gives a font its new characters before it commits the samples.
                EXPECT_TRUE(hasFailed || GetParam().hasWindow || line.font.empty() || known.count(line.rest))
                    << "a step that failed is half done";
                hasFailed = true;
                allowed[line.font].insert(line.rest);
            } else if (line.what == "dropped") {
                beingLetGo.erase(line.font);
            } else if (line.what == "chosen") {
                EXPECT_TRUE(hasFailed || std::ranges::find(usually, line) != usually.end() ||
                            isRecovered(told, line.font))
                    << "no word that " << line.font << " is shown without its changes";
            } else if (line.what == "let go" || line.what == "gone") {
                if (line.what == "let go") beingLetGo[line.font] = line.rest;
                letGo.insert(line.rest);
                allowed.erase(line.font);
                last.erase(line.font);
            } else if (line.what == "elsewhere") {
                // A second tool may have told meanwhile of a step of its own that failed.
                const std::string copy = test::contentOf(engine::readFont(place.path(line.rest)));
                EXPECT_TRUE(copy == latest[line.font] || copy == last[line.font])
                    << "the copy of " << line.font << " is another font";
            }
        }
        std::string leaving;  // the font that is being renamed, deleted or let go
        if (run.signal != 0 && told.size() < usually.size()) {
            EXPECT_TRUE(std::equal(told.begin(), told.end(), usually.begin()));
            const Line& next = usually[told.size()];
            if (next.what == "shown")
                allowed[next.font].insert(next.rest);
            else if (next.what == "let go" || next.what == "gone")
                leaving = next.font;
            for (std::size_t i = told.size(); !leaving.empty() && i < usually.size() && i < told.size() + 3;
                 ++i)
                if (usually[i].what == "shown") allowed[usually[i].font].insert(usually[i].rest);
        }

        const auto files =
            place.fonts(".nnd", [](const fs::path& file) { return test::contentOf(engine::readFont(file)); });
        const Lines found = show();
        const auto shown = shownIn(found);
        const auto everything = kept();
        for (const auto& [font, content] : last) {
            const auto one = shown.find(font);
            if (one == shown.end() || !allowed[font].count(one->second)) {
                // A renaming or deletion that failed, or was going on, may have been done.
                const auto isSaid = [&](const char* step) { return run.err.find(step) != std::string::npos; };
                const bool isRenamed = font == leaving || isSaid(": rename ");
                const bool isRemoved = font == leaving || isSaid(": remove ");
                // So may a step in the window, which is several changes of the font.
                const bool mayHaveGoneOn = isRenamed || GetParam().hasWindow;
                const bool isReachable = std::ranges::find(found, content, &Line::rest) != found.end();
                EXPECT_TRUE((isRemoved && everything.count(content)) || (mayHaveGoneOn && isReachable))
                    << "lost of " << font << ": " << content << ", there is "
                    << (one == shown.end() ? "nothing" : one->second);
            } else if (font == leaving && one->second != content) {
                EXPECT_TRUE(everything.count(content) || isShownIn(shown, content))
                    << "lost of " << font << ": " << content;
            }
        }
        for (const auto& [font, content] : run.signal == 0 ? beingLetGo : decltype(beingLetGo)()) {
            EXPECT_EQ(shown.count(font) ? shown.at(font) : "nothing", content)
                << "letting go of " << font << " failed, and yet it was done";
        }
        for (const std::string& content : letGo) {
            EXPECT_TRUE(isShownIn(shown, content) || everything.count(content))
                << "lost what was let go: " << content;
        }
        for (const auto& [font, content] : shown) {
            const auto file = files.find(font);
            EXPECT_TRUE(isRecovered(found, font) || (file != files.end() && file->second == content))
                << "no word that changes of " << font << " were found";
        }
        for (const Line& line : found) {
            EXPECT_NE(line.what, "differs") << "taken back and done again, " << line.font << " is another";
            if (line.what == "undone") {
                EXPECT_TRUE(had.count(line.rest)) << line.font << " has never been " << line.rest;
            }
        }
    }
};

TEST_P(Sessions, KeepEachCompletedChange) {
    const SessionStory& story = GetParam();
    const auto note = [&](const Lines& lines) {
        for (const Line& line : lines) known.insert(line.rest);
    };
    for (const auto& steps : story.before) {
        const Outcome run = place.run(session(steps));
        ASSERT_TRUE(run.status == 0 || steps.back() == "die") << run.err;
        note(linesOf(run.out));
    }
    place.keepAs("before");
    const Lines first = show();
    note(first);
    before = shownIn(first);
    act = session(story.act, story.hasWindow);
    place.bringBack("before");
    usual = place.run(act);
    ASSERT_TRUE(usual.status == 0 || story.act.back() == "die") << usual.err;
    note(linesOf(usual.out));
    ASSERT_NO_FATAL_FAILURE(check({}));

    const auto asUsual = [&](const Outcome& run) { EXPECT_EQ(run.out, usual.out) << run.err; };
    place.tryEach(story.name, act, asUsual, [&](const Point& point) { check(point); });
}

// Signals that end the window, of which one cannot be answered.
class WindowEnds : public testing::TestWithParam<int> {};

TEST_P(WindowEnds, AndWhatWasDoneIsThereAtTheNextStart) {
    const FaultWorkplace place;
    const pid_t window = place.begin({"fault-window", "session", "new a", "include d5.pgm 0123456789",
                                      "new b", "include l5.pgm ACHT", "undo", "redo", "wait"});
    const auto said = [&] { return contentOf(place.path("out")); };
    for (int i = 0; i < 600 && said().find("waiting") == std::string::npos; ++i) usleep(50'000);
    kill(window, GetParam());
    const Outcome run = place.end(window);
    EXPECT_EQ(run.signal, GetParam());
    const auto last = shownIn(linesOf(run.out));
    ASSERT_EQ(last.size(), 2u) << run.out << run.err;
    const Lines found = linesOf(place.run({"fault-acts", "show"}).out);
    EXPECT_EQ(shownIn(found), last);
    EXPECT_TRUE(isRecovered(found, "a") && isRecovered(found, "b"));
    EXPECT_EQ(std::ranges::count(found, "differs", &Line::what), 0);
}

INSTANTIATE_TEST_SUITE_P(Ways, WindowEnds, testing::Values(SIGTERM, SIGHUP, SIGINT, SIGKILL));

// Signals that end `learn` while it includes.
class LearnEnds : public testing::TestWithParam<int> {};

TEST_P(LearnEnds, AndWhatItHasIncludedIsThereWhenTheFontIsUsedAgain) {
    const FaultWorkplace place;
    std::ofstream list(place.path("many.tsv"));
    for (int i = 0; i < 200; ++i) {
        const std::string name = "part" + std::to_string(i) + ".pgm";
        fs::create_hard_link(place.path("d5.pgm"), place.path(name));
        list << name << "\t0123456789\n";
    }
    list.close();
    const Words learn = {"dravik-trainer", "learn", "--font", "a", "--samples", "many.tsv"};
    const pid_t child = place.begin(learn);
    for (int i = 0; i < 6000 && includedIn(contentOf(place.path("out"))) < 30; ++i) usleep(5'000);
    kill(child, GetParam());
    const Outcome run = place.end(child);
    if (GetParam() == SIGINT) {
        EXPECT_EQ(run.status, 130);
        EXPECT_NE(run.err.find("what was included is kept until the font is used again"), std::string::npos)
            << run.err;
    } else {
        EXPECT_EQ(run.signal, GetParam()) << run.status << run.err;
    }
    const std::size_t said = includedIn(run.out);
    ASSERT_GE(said, 10U);
    EXPECT_EQ(place.samples(), 0U) << "it was ended before it has saved";
    const Outcome again = place.run({"dravik-trainer", "learn", "--font", "a", "--samples", "letters.tsv"});
    EXPECT_EQ(again.status, 0);
    EXPECT_NE(again.err.find("a: "), std::string::npos) << "no word of what was found: " << again.err;
    EXPECT_GE(place.samples(), said + includedIn(again.out)) << "included samples are lost";
}

INSTANTIATE_TEST_SUITE_P(Ways, LearnEnds, testing::Values(SIGTERM, SIGHUP, SIGINT, SIGKILL));

INSTANTIATE_TEST_SUITE_P(Stories, Sessions, testing::ValuesIn(sessionStories()),
                         testing::PrintToStringParamName());

}  // namespace
}  // namespace dravik::test
