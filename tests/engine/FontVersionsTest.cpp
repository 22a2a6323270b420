// What becomes of a font that is saved over, deleted or given another name: it is kept, and comes back whole.
#include "engine/font/FontVersions.h"

#include "base/AtomicFile.h"
#include "engine/font/FontLibrary.h"
#include "support/Testing.h"

namespace dravik {

using namespace engine;
namespace {

using Kind = tool::FontVersion::Kind;

FontRecord fontWith(int samples) {
    FontRecord font;
    font.nextSerial = 1000;
    font.characterSet = {"A"};
    for (int i = 0; i < samples; ++i) {
        font.samples.push_back({static_cast<std::uint64_t>(i), 'A', {}});
        font.distances.push_back(0);
    }
    return font;
}

class Fonts {
    TemporaryFolder folder_;

  public:
    const std::string folder = folder_.path("Fonts/");
    const FontVersions versions{folder};

    std::string file(const std::string& name) const { return folder + name + ".nnd"; }
    void save(const std::string& name, int samples) const { writeFont(fontWith(samples), file(name)); }
    std::size_t samplesOf(const std::string& path) const { return readFont(path).samples.size(); }
    // Numbers of samples of a font's versions, newest first.
    std::vector<int> samples(const std::string& name) const {
        std::vector<int> result;
        for (const tool::FontVersion& version : versions.list(name)) result.push_back(version.samples);
        return result;
    }
};

TEST(FontVersions, TheLastFiveThatSavesReplacedAreKept) {
    const Fonts fonts;
    EXPECT_TRUE(fonts.versions.list("").empty());
    fonts.save("a", 0);  // as it is made
    for (int samples = 1; samples <= 8; ++samples) fonts.save("a", samples);
    fonts.save("a", 8);  // nothing changed
    EXPECT_EQ(fonts.samples("a"), (std::vector<int>{7, 6, 5, 4, 3}));
    EXPECT_EQ(fonts.samplesOf(backupOf(fonts.file("a"))), 7u);
    for (const tool::FontVersion& version : fonts.versions.list("")) {
        EXPECT_EQ(version.font, "a");
        EXPECT_EQ(version.kind, Kind::Saved);
        EXPECT_EQ(version.identifier.find(' '), std::string::npos);
        EXPECT_EQ(fonts.versions.read(version).samples.size(), static_cast<std::size_t>(version.samples));
        EXPECT_LT(std::chrono::abs(std::chrono::system_clock::now() - version.when), std::chrono::minutes(1));
    }
    // A save that was killed behind keeping the version keeps it once, and it is no earlier version yet.
    FontVersions(fonts.folder).keepSaved("a");
    EXPECT_EQ(fonts.samples("a"), (std::vector<int>{7, 6, 5, 4}));
    fonts.save("a", 9);
    EXPECT_EQ(fonts.samples("a"), (std::vector<int>{8, 7, 6, 5, 4}));
}

TEST(FontVersions, ANewFontOverAnOldOneAndADeletedFontComeBack) {
    const Fonts fonts;
    fonts.save("a", 5);
    fonts.save("a", 0);  // made anew, then given its characters
    fonts.save("a", 0);
    EXPECT_EQ(fonts.samplesOf(backupOf(fonts.file("a"))), 5u);
    ASSERT_EQ(fonts.samples("a"), std::vector<int>{5});

    fonts.save("a", 6);
    retireFont(fonts.file("a"));
    EXPECT_FALSE(fileExists(fonts.file("a")));
    EXPECT_EQ(fonts.samplesOf(backupOf(fonts.file("a"))), 6u);
    EXPECT_EQ(fonts.samples("a"), (std::vector<int>{6, 5}));
    EXPECT_EQ(fonts.versions.list("a").front().kind, Kind::Deleted);
    EXPECT_EQ(test::refusal([&] { retireFont(fonts.file("a")); }), 53);

    writeFont(fonts.versions.read(fonts.versions.list("a").front()), fonts.file("back"));
    EXPECT_EQ(fonts.samplesOf(fonts.file("back")), 6u);
    EXPECT_EQ(test::refusal([&] {
                  fonts.versions.read({"a", "20200101-000000-000", {}, Kind::Saved, 0, false});
              }),
              53);
}

TEST(FontVersions, TheLastTwentyDeletedFontsAreKeptWithWhatTheyHadBeen) {
    const Fonts fonts;
    for (int i = 0; i < 23; ++i) {
        const std::string name = "font" + std::to_string(i);
        fonts.save(name, 1);
        fonts.save(name, 2);
        retireFont(fonts.file(name));
        if (i == 1) fonts.save(name, 3);  // is there again
    }
    EXPECT_EQ(fonts.versions.list("").size(), 2u * 20 + 1);
    EXPECT_TRUE(fonts.versions.list("font0").empty());
    EXPECT_EQ(fonts.samples("font1"), std::vector<int>{1}) << "belongs to the font that is there";
    EXPECT_TRUE(fonts.versions.list("font2").empty());
    EXPECT_EQ(fonts.samples("font3"), (std::vector<int>{2, 1}));
    EXPECT_FALSE(fileExists(fonts.folder + "History/font2"));
}

TEST(FontVersions, DroppedChangesAreKeptAndListed) {
    const Fonts fonts;
    FontVersions versions(fonts.folder);
    fonts.save("a", 5);
    for (int samples = 10; samples < 17; ++samples)
        versions.keepDiscarded("a", encodeFont(fontWith(samples)));
    EXPECT_EQ(fonts.samples("a"), (std::vector<int>{16, 15, 14, 13, 12}));
    EXPECT_EQ(versions.list("a").front().kind, Kind::Discarded);
    EXPECT_EQ(versions.read(versions.list("a").back()).samples.size(), 12u);

    const std::string journal = fonts.file("a") + ".journal";
    std::ofstream(journal) << "changes";
    versions.keepJournal("a", journal);
    EXPECT_FALSE(fileExists(journal));
    const tool::FontVersion newest = versions.list("a").front();
    EXPECT_EQ(newest.kind, Kind::Discarded);
    EXPECT_EQ(newest.samples, 0);
    EXPECT_EQ(test::refusal([&] { versions.read(newest); }), 5);
    EXPECT_EQ(readWholeFile(versions.file(newest), 100).size(), 7u);
    EXPECT_EQ(fonts.samplesOf(fonts.file("a")), 5u);
}

TEST(FontVersions, GoAlongWithANewNameAndJoinThoseThatAreThere) {
    const Fonts fonts;
    fonts.save("a", 1);
    fonts.save("a", 2);
    renameFont(fonts.file("a"), fonts.file("b"));
    EXPECT_TRUE(fonts.versions.list("a").empty());
    EXPECT_EQ(fonts.samples("b"), std::vector<int>{1});
    fonts.save("a", 7);
    // Versions of two fonts are in the order of their times, which are whole milliseconds.
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
    retireFont(fonts.file("a"));
    renameFont(fonts.file("b"), fonts.file("a"));
    EXPECT_EQ(fonts.samples("a"), (std::vector<int>{7, 1}));
    EXPECT_FALSE(fileExists(fonts.folder + "History/b"));
}

// Foreign files in History, a version that is damaged, a History that is none: each is told or passed over,
// and no save fails of it.
TEST(FontVersions, WhatIsWrongWithThemHarmsNoFont) {
    const Fonts fonts;
    fonts.save("a", 1);
    fonts.save("a", 2);
    const tool::FontVersion version = fonts.versions.list("a").front();
    std::ofstream(fonts.versions.file(version)) << "nothing of a font";
    for (const char* name : {"notes.txt", "20260230-000000-000.saved.nnd",
                             "20260301-000000-000.saved.nnd.tmp", "20260301-000000-000.nnd", "1.saved.nnd"})
        std::ofstream(fonts.folder + "History/a/" + name) << "x";
    ASSERT_EQ(fonts.versions.list("a").size(), 1u);
    std::vector<std::string> problems;
    EXPECT_EQ(fonts.versions.list("a", &problems).front().samples, 0);
    EXPECT_EQ(problems.size(), 1u);
    EXPECT_EQ(test::refusal([&] { fonts.versions.read(version); }), 57);

    std::filesystem::remove_all(fonts.folder + "History");
    std::ofstream(fonts.folder + "History") << "in the way";
    EXPECT_EQ(test::refusal([&] { fonts.versions.list(""); }), 75);
    fonts.save("a", 3);
    EXPECT_EQ(fonts.samplesOf(fonts.file("a")), 3u);
    EXPECT_EQ(fonts.samplesOf(backupOf(fonts.file("a"))), 2u);
    // Nothing but the version keeps a deleted font from being replaced by the next backup.
    EXPECT_THROW(retireFont(fonts.file("a")), Failure);
    EXPECT_EQ(fonts.samplesOf(fonts.file("a")), 3u);
}

TEST(FontLibrary, NamesThatDifferOnlyInCaseAreOneFont) {
    const TemporaryFolder folder;
    const JobFolder jobs(folder.path());
    const FontLibrary library(jobs, false);
    writeFont(fontWith(1), jobs.fontFile("Hack"));
    EXPECT_EQ(library.spelling("Hack"), "Hack");
    EXPECT_EQ(library.spelling("hACK"), "Hack");
    EXPECT_EQ(library.spelling("other"), "other");
    EXPECT_EQ(test::refusal([&] { library.spelling("a/b"); }), 52);
    EXPECT_EQ(test::refusal([&] { library.freeFile("hack"); }), 58);
    EXPECT_EQ(library.freeFile("hack", "Hack"), jobs.fontFile("hack"));
    EXPECT_EQ(test::refusal([&] { library.freeFile("hack", "other"); }), 58);
}

// Nothing to be seen is not the same as nothing there.
TEST(FontLibrary, AJobsFolderThatIsNoneIsTold) {
    const TemporaryFolder folder;
    EXPECT_TRUE(FontLibrary(JobFolder(folder.path("to/come")), false).names().empty());
    std::ofstream(folder.path("file")) << "x";
    for (const std::string& jobs : {folder.path("file"), folder.path("file/deeper")}) {
        const Failure failure = test::failureOfAction([&] { FontLibrary(JobFolder(jobs), false).names(); });
        EXPECT_EQ(failure.number(), 75) << jobs;
        EXPECT_NE(failure.description().find(jobs), std::string::npos);
    }
}

}  // namespace
}  // namespace dravik
