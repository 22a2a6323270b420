// What operators do with fonts, step by step. Each last step is done again and again with one file operation
// of it failing, or the program ended there; see FaultTest.cpp for what must hold afterwards.
#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace dravik::test {

// Words of a command line; the first is "dravik-trainer" or "fault-acts". Images and lists are those of
// FaultWorkplace; the jobs folder is added.
using Words = std::vector<std::string>;

struct Story {
    std::string name;
    std::vector<Words> before;
    Words act;
    // Between the fonts as they were and as they are to be there are other states in which nothing is lost.
    bool hasStates = false;
    // Each image said to be included is in the font, and trying again adds to it.
    bool learns = false;
};

inline void PrintTo(const Story& story, std::ostream* out) {
    *out << story.name;
}

inline std::vector<Story> faultStories() {
    const Words digits = {"dravik-trainer", "learn", "--font", "a", "--samples", "digits.tsv"};
    const Words letters = {"dravik-trainer", "learn", "--font", "a", "--samples", "letters.tsv"};
    const Words restore = {"dravik-trainer", "fonts", "--restore", "a"};
    const Words remove = {"fault-acts", "delete", "a"};
    return {
        {"LearnMakesAFont", {}, digits, true, true},
        {"LearnAddsToAFont", {digits}, letters, false, true},
        {"LearnAddsToAFontWithVersions",
         {digits, letters},
         {"fault-acts", "save-characters", "a", "0123456789ACHTX"}},
        {"NewFont", {digits}, {"fault-acts", "new", "b"}, true},
        {"NewFontOverAnOldOne", {digits}, {"fault-acts", "new", "a"}, true},
        {"NewFontOverOneOfAnotherCase", {digits}, {"fault-acts", "new", "A"}, true},
        {"DeleteAFont", {digits}, remove},
        {"RestoreADeletedFont", {digits, remove}, restore},
        {"RestoreAnEarlierVersion", {digits, letters}, restore},
        {"RestoreUnderAnotherName",
         {digits, letters},
         {"dravik-trainer", "fonts", "--restore", "a", "--as", "b"}},
        {"RenameAFont", {digits, letters}, {"fault-acts", "rename", "b", "a"}},
        {"RenameOntoTheVersionsOfAnother",
         {digits, letters, {"fault-acts", "duplicate", "b", "a"}, remove},
         {"fault-acts", "rename", "a", "b"}},
        {"DuplicateAFont", {digits}, {"fault-acts", "duplicate", "b", "a"}},
        {"ListFonts", {digits}, {"dravik-trainer", "fonts"}},
        {"ListVersions", {digits, letters}, {"dravik-trainer", "fonts", "--versions"}},
        {"ReadWithAFont", {digits}, {"dravik-trainer", "read", "--font", "a", "one.pgm"}},
    };
}

}  // namespace dravik::test
