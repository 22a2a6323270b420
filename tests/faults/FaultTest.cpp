// Whatever fails on the disk, and wherever the program is ended: what it said it did is there, and nothing
// that was there is lost. Each story's last step is run once to count its operations on files, then once for
// each of them and each way in which it can fail.
#include "FaultWorkplace.h"

namespace dravik::test {
namespace {

class Faults : public testing::TestWithParam<Story> {
  protected:
    const Story& story = GetParam();
    FaultWorkplace place;
    std::map<std::string, std::string> before, backups, after;
    std::set<std::string> kept;
    std::size_t samplesBefore = 0;
    std::string out;  // of an act that changes nothing

    void check(const Point& point) const {
        place.bringBack("before");
        const Outcome run = place.run(story.act, point);
        const auto fonts = place.fonts();
        if (run.signal == 0 && run.status == 0) {
            const bool isTold = story.learns && run.out.find("refused\t") != std::string::npos;
            EXPECT_TRUE(fonts == after || isTold) << "it ended well and did not do it";
            if (before == after) {
                EXPECT_EQ(run.out, out);
            }
        } else {
            EXPECT_TRUE(story.hasStates || fonts == before || fonts == after) << "half done";
        }
        if (run.signal == 0 && run.status != 0) {
            EXPECT_EQ(run.status, 1);
            EXPECT_NE(run.err, "") << "no word of what failed";
            EXPECT_TRUE(fonts != before || place.fonts(".bak") == backups) << "the backup is another";
            if (before != after) {
                // Of several files one may be changed already.
                const bool isSaid = run.err.find(kDoneAllTheSame) != std::string::npos;
                EXPECT_TRUE(isSaid == (fonts == after) || (isSaid && (story.hasStates || story.learns)))
                    << "it says otherwise than it did: " << run.err;
            }
        }
        EXPECT_TRUE(run.signal == 0 || run.signal == SIGKILL) << run.signal << run.err;
        const auto reachable = place.reachable();
        EXPECT_TRUE(std::includes(reachable.begin(), reachable.end(), kept.begin(), kept.end())) << "lost";

        if (fonts == after) return;
        const Outcome again = place.run(story.act);
        EXPECT_EQ(again.status, 0) << "not done when tried again: " << again.err;
        if (story.learns) {
            // What was included before the program was ended is in the font when that is opened again.
            const bool wasEnded = run.signal != 0 || run.status == 0;
            const std::size_t said = includedIn(again.out) + (wasEnded ? includedIn(run.out) : 0);
            EXPECT_GE(place.samples(), samplesBefore + said) << "included samples are lost";
        } else {
            EXPECT_EQ(place.fonts(), after) << "not done when tried again";
        }
        EXPECT_EQ(place.leftovers(), std::vector<std::string>());
    }
};

TEST_P(Faults, LoseNothingAndAreToldInWords) {
    for (const Words& step : story.before) {
        const Outcome run = place.run(step);
        ASSERT_EQ(run.status, 0) << run.err;
    }
    place.keepAs("before");
    before = place.fonts();
    backups = place.fonts(".bak");
    kept = place.reachable();
    samplesBefore = place.samples();
    out = place.run(story.act).out;
    after = place.fonts();

    const auto usual = [&](const Outcome& run) {
        EXPECT_EQ(run.status, 0) << run.err;
        EXPECT_EQ(place.fonts(), after);
    };
    place.tryEach(story.name, story.act, usual, [&](const Point& point) { check(point); });
}

INSTANTIATE_TEST_SUITE_P(Stories, Faults, testing::ValuesIn(faultStories()),
                         testing::PrintToStringParamName());

}  // namespace
}  // namespace dravik::test
