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
    const Words remove = {"fault-acts", "session", "remove a"};
    const Words duplicate = {"fault-acts", "session", "duplicate b a"};
    return {
        {"LearnMakesAFont", {}, digits, true, true},
        {"LearnAddsToAFont", {digits}, letters, false, true},
        {"NewFont", {digits}, {"fault-acts", "session", "make b"}, true},
        {"NewFontOverAnOldOne", {digits}, {"fault-acts", "session", "make a"}, true},
        {"NewFontOverOneOfAnotherCase", {digits}, {"fault-acts", "session", "make A"}, true},
        {"DeleteAFont", {digits}, remove},
        {"RestoreADeletedFont", {digits, remove}, restore},
        {"RestoreAnEarlierVersion", {digits, letters}, restore},
        {"RestoreUnderAnotherName",
         {digits, letters},
         {"dravik-trainer", "fonts", "--restore", "a", "--as", "b"}},
        {"RenameAFont", {digits, letters}, {"fault-acts", "session", "rename b a"}},
        {"RenameOntoTheVersionsOfAnother",
         {digits, letters, duplicate, remove},
         {"fault-acts", "session", "rename a b"}},
        {"DuplicateAFont", {digits}, duplicate},
        {"ListFonts", {digits}, {"dravik-trainer", "fonts"}},
        {"ListVersions", {digits, letters}, {"dravik-trainer", "fonts", "--versions"}},
        {"ReadWithAFont", {digits}, {"dravik-trainer", "read", "--font", "a", "one.pgm"}},
    };
}

// Sessions of an operator with the trainer; the steps are those of OperatorSession.h. The last session is the
// one that meets with the fault, with the window its steps are those of WindowSession.h.
struct SessionStory {
    std::string name;
    std::vector<std::vector<std::string>> before;
    std::vector<std::string> act;
    bool hasWindow = false;
};

inline void PrintTo(const SessionStory& story, std::ostream* out) {
    *out << story.name;
}

inline std::vector<SessionStory> sessionStories() {
    const std::string digits = "include d5.pgm 0123456789", larger = "include d6.pgm 0123456789",
                      letters = "include l5.pgm ACHT";
    const std::vector<std::string> twoFonts = {"new a", digits, "new b", larger, "close-saving"};
    const std::vector<std::string> killed = {"choose a", larger, letters, "delete 3", "die"};
    return {
        {"IncludeChooseAnotherSaveAll", {twoFonts}, {"choose a", letters, "choose b", "close-saving"}},
        {"IncludeChooseAnotherLetGo", {twoFonts}, {"choose a", letters, "choose b", "close-discarding"}},
        {"IncludeAndEndWithoutSaving", {twoFonts}, {"choose a", letters, "choose a", "choose b"}},
        {"StartAfterADeath", {twoFonts, killed}, {"choose a", letters, "close-saving"}},
        {"SaveAllOfSeveral",
         {twoFonts},
         {"choose a", letters, "choose b", letters, "new c", digits, "close-saving"}},
        {"NewOverOldWithUnsavedChanges", {twoFonts}, {"choose a", letters, "new a", digits, "undo", "undo"}},
        {"RenameWithUnsavedChangesThenChoose",
         {twoFonts},
         {"choose a", letters, "rename c a", "choose b", "choose c", "delete 2", "close-saving"}},
        {"DeleteSamplesThenUndo",
         {twoFonts},
         {"choose a", "delete 0", "delete 4", "undo", "undo", "delete 1", "save a"}},
        {"DeleteAFontThenUndo",
         {twoFonts},
         {"choose a", letters, "remove a", "undo", "choose b", "choose a"}},
        {"UndoAndRedoAfterARestart",
         {twoFonts, killed},
         {"choose a", "undo", "undo", "redo", "undo", larger, "undo", "redo", "close-saving"}},
        {"TwoToolsOnOneFont",
         {twoFonts},
         {"choose a", "other choose a", letters, "refused other delete 1", "close-saving", "other choose a",
          "other delete 1", "refused delete 2", "other close-saving"}},
        {"TheWindowTeachesTwoFontsAndSavesBoth",
         {twoFonts},
         {"choose a", letters, "choose b", larger, "close-saving"},
         true},
        {"TheWindowStartsAfterADeath", {twoFonts, killed}, {"choose a", letters, "undo", "learn"}, true},
    };
}

}  // namespace dravik::test
