// Whatever fails on the disk, and wherever the program is ended: what it said it did is there, and nothing
// that was there is lost. Each story's last step is run once to count its operations on files, then once for
// each of them and each way in which it can fail.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>
#include <set>

#include "FaultStories.h"
#include "base/Failure.h"
#include "contract/DrawnText.h"
#include "engine/font/FontFile.h"
#include "support/TemporaryFolder.h"
#include "trainer/support/PgmFile.h"

namespace dravik::test {
namespace {

namespace fs = std::filesystem;

// Without DRAVIK_FAULTS_ALL no story takes more points than these, spread over all.
constexpr std::size_t kSomePoints = 40;
constexpr unsigned kLongestRun = 60;  // seconds

struct Point {
    long number = 0;
    std::string operation;
    std::string kind;
    bool hasLinks = true;
};

std::ostream& operator<<(std::ostream& out, const Point& point) {
    return out << point.kind << " at operation " << point.number << ", " << point.operation
               << (point.hasLinks ? "" : ", without links");
}

struct Outcome {
    int status = 0;
    int signal = 0;
    std::string out;
    std::string err;
};

std::string contentOf(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

// The samples that learn has said to be included.
std::size_t includedIn(const std::string& out) {
    std::size_t count = 0;
    for (std::size_t place = out.find("included "); place != std::string::npos;
         place = out.find("included ", place + 1))
        count += std::strtoul(out.c_str() + place + 9, nullptr, 10);
    return count;
}

std::string digestOf(const fs::path& file) {
    const std::string content = contentOf(file);
    return std::to_string(content.size()) + " bytes, " + std::to_string(std::hash<std::string>{}(content));
}

std::vector<std::string> kindsFor(const std::string& operation) {
    static const std::map<std::string, std::vector<std::string>> kKinds = {
        {"write", {"ENOSPC", "EIO", "short", "half", "kill"}},
        {"create", {"EACCES", "full", "kill"}},
        {"open", {"EACCES", "EMFILE"}},
        {"fopen", {"EACCES"}},
        {"opendir", {"EACCES"}},
        {"fsync", {"EIO", "kill"}},
        {"ftruncate", {"EIO", "kill"}},
        {"flock", {"ENOLCK"}},
        {"close", {"EIO"}},
        {"link", {"EACCES", "full", "kill"}},
        {"rename", {"EIO", "EACCES", "kill"}},
        {"unlink", {"EACCES", "kill"}},
        {"mkdir", {"EACCES", "full", "kill"}},
        {"rmdir", {"EACCES"}}};
    const auto place = kKinds.find(operation.substr(0, operation.find(' ')));
    EXPECT_NE(place, kKinds.end()) << operation;
    return place == kKinds.end() ? std::vector<std::string>() : place->second;
}

// Images, lists and a jobs folder for one story.
class FaultWorkplace {
  public:
    FaultWorkplace() {
        draw("d5.pgm", "0123456789", 5);
        draw("d6.pgm", "0123456789", 6);
        draw("l5.pgm", "ACHT", 5);
        draw("one.pgm", "314159", 6);
        std::ofstream(path("digits.tsv")) << "d5.pgm\t0123456789\nd6.pgm\t0123456789\n";
        std::ofstream(path("letters.tsv")) << "l5.pgm\tACHT\none.pgm\t314159\n";
        fs::create_directory(jobs());
    }

    std::string jobs() const { return path("jobs"); }
    std::string path(const std::string& name) const { return folder_.path(name); }

    Outcome run(const Words& words, const Point& point = {}) const {
        Words command = words;
        if (command.front() == "fault-acts") {
            command.front() = DRAVIK_FAULT_ACTS;
            command.insert(command.begin() + 1, jobs());
        } else {
            command.front() = DRAVIK_TRAINER;
            command.insert(command.end(), {"--jobs", jobs()});
        }
        fs::remove(path("log"));
        const pid_t child = fork();
        if (child == 0) {
            const auto set = [](const char* name, const std::string& value) {
                setenv(name, value.c_str(), 1);
            };
            if (chdir(folder_.path().c_str()) != 0) _exit(127);
            set("LD_PRELOAD", DRAVIK_FAULT_SHIM);
            set("DRAVIK_FAULT_FOLDER", jobs());
            set("DRAVIK_FAULT_LOG", path("log"));
            set("DRAVIK_FAULT_AT", std::to_string(point.number));
            set("DRAVIK_FAULT_KIND", point.kind);
            set("DRAVIK_FAULT_NO_LINKS", point.hasLinks ? "" : "1");
            if (!freopen(path("out").c_str(), "w", stdout) || !freopen(path("err").c_str(), "w", stderr))
                _exit(127);
            std::vector<char*> arguments;
            for (std::string& word : command) arguments.push_back(word.data());
            arguments.push_back(nullptr);
            alarm(kLongestRun);
            execv(arguments.front(), arguments.data());
            _exit(127);
        }
        int status = 0;
        EXPECT_EQ(waitpid(child, &status, 0), child);
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, WIFSIGNALED(status) ? WTERMSIG(status) : 0,
                contentOf(path("out")), contentOf(path("err"))};
    }

    // In the font a; 0 when there is none.
    std::size_t samples() const {
        const std::string file = jobs() + "/Fonts/a.nnd";
        return fs::exists(file) ? engine::readFont(file).samples.size() : 0;
    }

    // The operations on files of the last run.
    std::vector<std::string> operations() const {
        std::vector<std::string> lines;
        std::ifstream log(path("log"));
        for (std::string line; std::getline(log, line);) lines.push_back(line.substr(line.find(' ') + 1));
        return lines;
    }

    void keepAs(const std::string& name) const { copy(jobs(), path(name)); }
    void bringBack(const std::string& name) const { copy(path(name), jobs()); }

    // The fonts, or their backups, by name, with a digest of each.
    std::map<std::string, std::string> fonts(const char* extension = ".nnd") const {
        std::map<std::string, std::string> fonts;
        if (!fs::exists(jobs() + "/Fonts")) return fonts;
        for (const auto& entry : fs::directory_iterator(jobs() + "/Fonts"))
            if (entry.path().extension() == extension) fonts[entry.path().stem()] = digestOf(entry.path());
        return fonts;
    }

    // Every font that can be got back somehow, and has samples.
    std::set<std::string> reachable() const {
        std::set<std::string> all;
        for (const auto& entry : fs::recursive_directory_iterator(jobs())) {
            const auto extension = entry.path().extension();
            if (extension != ".nnd" && extension != ".bak") continue;
            const auto font = engine::readFont(entry.path());
            if (!font.samples.empty()) all.insert(digestOf(entry.path()));
        }
        return all;
    }

    std::vector<std::string> leftovers() const {
        std::vector<std::string> names;
        for (const auto& entry : fs::recursive_directory_iterator(jobs())) {
            const std::string name = entry.path().filename();
            for (const char* part : {".tmp-", ".part", ".lock"})
                if (name.find(part) != std::string::npos) names.push_back(name);
        }
        return names;
    }

  private:
    void draw(const std::string& name, const std::string& text, int scale) const {
        writePgm(path(name), drawn({text}, {.scale = scale, .dot = scale}));
    }
    static void copy(const fs::path& from, const fs::path& to) {
        fs::remove_all(to);
        const std::string command = "cp -a '" + from.string() + "' '" + to.string() + "'";
        ASSERT_EQ(std::system(command.c_str()), 0);
    }

    TemporaryFolder folder_;
};

class Faults : public testing::TestWithParam<Story> {
  protected:
    const Story& story = GetParam();
    FaultWorkplace place;
    std::map<std::string, std::string> before, backups, after;
    std::set<std::string> kept;
    std::size_t samplesBefore = 0;
    std::string out;  // of an act that changes nothing

    std::vector<Point> points() const {
        std::vector<Point> all;
        for (const bool hasLinks : {true, false}) {
            place.bringBack("before");
            const Outcome run = place.run(story.act, Point{0, "", "", hasLinks});
            EXPECT_EQ(run.status, 0) << run.err;
            EXPECT_EQ(place.fonts(), after);
            long number = 0;
            for (const std::string& operation : place.operations()) {
                ++number;
                for (const std::string& kind : kindsFor(operation))
                    all.push_back({number, operation, kind, hasLinks});
            }
        }
        if (std::getenv("DRAVIK_FAULTS_ALL")) return all;
        std::vector<Point> some;
        const std::size_t step = std::max<std::size_t>(1, (all.size() + kSomePoints - 1) / kSomePoints);
        for (std::size_t i = 0; i < all.size(); i += step) some.push_back(all[i]);
        return some;
    }

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

    const std::vector<Point> points = this->points();
    ASSERT_FALSE(points.empty());
    for (const Point& point : points) {
        const testing::ScopedTrace trace(__FILE__, __LINE__, testing::PrintToString(point));
        try {
            check(point);
        } catch (...) {
            ADD_FAILURE() << currentFailure().description();
        }
    }
    std::cout << story.name << ": " << points.size() << " points\n";
}

std::string storyName(const testing::TestParamInfo<Story>& info) {
    return info.param.name;
}

INSTANTIATE_TEST_SUITE_P(Stories, Faults, testing::ValuesIn(faultStories()), storyName);

}  // namespace
}  // namespace dravik::test
