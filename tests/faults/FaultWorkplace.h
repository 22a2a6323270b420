// A folder with images, lists and jobs for one story, in which programs run while one of their operations on
// files fails.
#pragma once

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "FaultStories.h"
#include "contract/DrawnText.h"
#include "engine/font/FontFile.h"
#include "support/Testing.h"
#include "trainer/support/PgmFile.h"

namespace dravik::test {

namespace fs = std::filesystem;

// Without DRAVIK_FAULTS_ALL no story takes more points than these, spread over all; a quarter of them in the
// window, which takes its time.
constexpr std::size_t kSomePoints = 40;
constexpr unsigned kLongestRun = 60;  // seconds

// What a failure says that has kept nothing from being done.
constexpr char kDoneAllTheSame[] = "was changed all the same";

struct Point {
    long number = 0;
    std::string operation;
    std::string kind;
    bool hasLinks = true;
};

inline std::ostream& operator<<(std::ostream& out, const Point& point) {
    return out << point.kind << " at operation " << point.number << ", " << point.operation
               << (point.hasLinks ? "" : ", without links");
}

struct Outcome {
    int status = 0;
    int signal = 0;
    std::string out;
    std::string err;
};

inline std::string contentOf(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

// The samples that learn has said to be included.
inline std::size_t includedIn(const std::string& out) {
    std::istringstream words(out);
    std::size_t all = 0, count = 0;
    for (std::string word; words >> word;)
        if (word == "included" && words >> count) all += count;
    return all;
}

inline std::string digestOf(const fs::path& file) {
    const std::string content = contentOf(file);
    return std::to_string(content.size()) + " bytes, " + std::to_string(std::hash<std::string>{}(content));
}

inline std::vector<std::string> kindsFor(const std::string& operation) {
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

    Outcome run(const Words& words, const Point& point = {}) const { return end(begin(words, point)); }

    pid_t begin(const Words& words, const Point& point = {}) const {
        Words command = words;
        const bool isWindow = command.front() == "fault-window";
        if (isWindow || command.front() == "fault-acts") {
            command.front() = isWindow ? DRAVIK_FAULT_WINDOW : DRAVIK_FAULT_ACTS;
            command.insert(command.begin() + 1, jobs());
        } else {
            command.front() = DRAVIK_TRAINER;
            command.insert(command.end(), {"--jobs", jobs()});
        }
        fs::remove(path("log"));
        const pid_t child = fork();
        if (child == 0) {
            if (chdir(folder_.path().c_str()) != 0) _exit(127);
            for (const int one : {SIGHUP, SIGINT}) std::signal(one, SIG_DFL);  // whatever started the tests
            const std::vector<std::pair<const char*, std::string>> settings = {
                {"LD_PRELOAD", DRAVIK_FAULT_SHIM}, {"QT_QPA_PLATFORM", "offscreen"},
                {"QT_LOGGING_RULES", "*=false"},   {"DRAVIK_FAULT_FOLDER", jobs()},
                {"DRAVIK_FAULT_LOG", path("log")}, {"DRAVIK_FAULT_AT", std::to_string(point.number)},
                {"DRAVIK_FAULT_KIND", point.kind}, {"DRAVIK_FAULT_NO_LINKS", point.hasLinks ? "" : "1"}};
            for (const auto& [name, value] : settings) setenv(name, value.c_str(), 1);
            if (!freopen(path("out").c_str(), "w", stdout) || !freopen(path("err").c_str(), "w", stderr))
                _exit(127);
            std::vector<char*> arguments;
            for (std::string& word : command) arguments.push_back(word.data());
            arguments.push_back(nullptr);
            alarm(kLongestRun);
            execv(arguments.front(), arguments.data());
            _exit(127);
        }
        return child;
    }

    Outcome end(pid_t child) const {
        int status = 0;
        EXPECT_EQ(waitpid(child, &status, 0), child);
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, WIFSIGNALED(status) ? WTERMSIG(status) : 0,
                contentOf(path("out")), contentOf(path("err"))};
    }

    // Does the act, on the jobs folder that was kept as "before", once without a fault, of which `usual`
    // looks at what it has done, and then for each way in which one of its operations can fail.
    void tryEach(const std::string& story, const Words& act, const std::function<void(const Outcome&)>& usual,
                 const std::function<void(const Point&)>& check) const {
        const auto points = pointsOf(act, usual);
        ASSERT_FALSE(points.empty());
        for (const Point& point : points) {
            const testing::ScopedTrace trace(__FILE__, __LINE__, testing::PrintToString(point));
            try {
                check(point);
            } catch (...) {
                ADD_FAILURE() << currentFailure().description();
            }
            if (testing::Test::HasFailure() && !std::getenv("DRAVIK_FAULTS_ALL")) break;
        }
        std::cout << story << ": " << points.size() << " points\n";
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

    // Of every font: those that are shown, which stand in Fonts itself, versions and backups.
    std::vector<fs::path> fontFiles() const {
        std::vector<fs::path> files;
        for (const auto& entry : fs::recursive_directory_iterator(jobs()))
            if (entry.path().extension() == ".nnd" || entry.path().extension() == ".bak")
                files.push_back(entry.path());
        return files;
    }
    // The fonts that are shown, or their backups, by name, with what is said of each.
    std::map<std::string, std::string> fonts(
        const char* extension = ".nnd",
        const std::function<std::string(const fs::path&)>& say = digestOf) const {
        std::map<std::string, std::string> fonts;
        for (const fs::path& file : fontFiles())
            if (file.parent_path() == jobs() + "/Fonts" && file.extension() == extension)
                fonts[file.stem()] = say(file);
        return fonts;
    }

    // Every font that can be got back somehow, and has samples.
    std::set<std::string> reachable() const {
        std::set<std::string> all;
        for (const fs::path& file : fontFiles())
            if (!engine::readFont(file).samples.empty()) all.insert(digestOf(file));
        return all;
    }

    // But for the lock of a font that has another name now, whose renaming was ended at its end.
    std::vector<std::string> leftovers() const {
        std::vector<std::string> names;
        for (const auto& entry : fs::recursive_directory_iterator(jobs())) {
            const std::string name = entry.path().filename();
            const bool isOfNoFont =
                name.ends_with(".lock") && !fs::exists(entry.path().parent_path() / entry.path().stem());
            for (const char* part : {".tmp-", ".part", ".lock"})
                if (name.find(part) != std::string::npos && !isOfNoFont) names.push_back(name);
        }
        return names;
    }

  private:
    std::vector<Point> pointsOf(const Words& act, const std::function<void(const Outcome&)>& usual) const {
        std::vector<Point> all;
        for (const bool hasLinks : {true, false}) {
            bringBack("before");
            usual(run(act, Point{0, "", "", hasLinks}));
            long number = 0;
            for (const std::string& operation : operations()) {
                ++number;
                for (const std::string& kind : kindsFor(operation))
                    all.push_back({number, operation, kind, hasLinks});
            }
        }
        if (std::getenv("DRAVIK_FAULTS_ALL")) return all;
        std::vector<Point> some;
        const std::size_t most = act.front() == "fault-window" ? kSomePoints / 4 : kSomePoints;
        const std::size_t step = std::max<std::size_t>(1, (all.size() + most - 1) / most);
        for (std::size_t i = 0; i < all.size(); i += step) some.push_back(all[i]);
        return some;
    }
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

}  // namespace dravik::test
