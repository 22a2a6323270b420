// What a tool can offer beside the FontTool contract when it keeps working copies: acts that can be taken
// back and done again, fonts with unsaved changes, what was restored at the start, and older versions.
//
// An act is what the operator did in one go: an include, a deletion of a bin, a finished run. The changes of
// the current font since the last endAct() belong to one act. All calls come from the thread of the tool's
// other operations, and raise Failure as they do.
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace dravik::tool {

using FontTime = std::chrono::system_clock::time_point;

// Changes that were found unsaved, of a program that ended without saving, and are in the font again.
struct RecoveredChanges {
    std::string font;
    int acts = 0;
    FontTime first;
    FontTime last;
    // Why they are not in the font but among its versions, as Discarded, or still in its journal; "" when
    // they are in the font. There is neither their number nor their time then.
    std::string problem;
    bool areInJournal = false;
};

// The same in words: "hack: 3 changes of 2026-03-31 14:05:09 had not been saved; they are in the font again".
std::string recoveredText(const RecoveredChanges& found);

// A font as it once was.
struct FontVersion {
    enum class Kind {
        Saved,      // replaced by a later save
        Deleted,    // by the operator
        Discarded,  // changes that were never saved: dropped by a Revert or let go
    };
    std::string font;
    std::string identifier;  // names it in restoreVersion(); stable, without blanks
    FontTime when;
    Kind kind = Kind::Saved;
    int samples = 0;
    bool trained = false;
};

class FontHistory {
  public:
    FontHistory() = default;
    FontHistory(const FontHistory&) = delete;
    FontHistory& operator=(const FontHistory&) = delete;
    virtual ~FontHistory() = default;

    // Ends an act of the current font. `words` say what it was, to follow "Undo " ("deletion of 3 samples of
    // B"); when they are "" the tool finds words for the changes. `screenState` is handed back as it is when
    // the act is done again, or the one after it taken back. Without changes since the last call it only
    // replaces the state kept with the last act.
    virtual void endAct(std::string_view words, std::string_view screenState) = 0;

    // What undo() and redo() would take back or do again; nothing when there is nothing. A font that was just
    // deleted can be taken back, too.
    virtual std::optional<std::string> undoWords() const = 0;
    virtual std::optional<std::string> redoWords() const = 0;

    // Brings the current font to where it was before the last act, or after the next one. Changes since the
    // last endAct() end as an act of their own first. Gives the screen's state at that point, "" when none
    // was handed in. Raises Invalid procedure call (5) while a run goes on and when there is nothing to take
    // back.
    virtual std::string undo() = 0;
    virtual std::string redo() = 0;

    // Fonts whose changes are not in their files, in the order of names.
    virtual std::vector<std::string> unsavedFonts() const = 0;
    // Writes such a font to its file, whichever is current; raises as SaveFont().
    virtual void saveUnsaved(const std::string& font) = 0;
    // Lets the changes of such a font go: its file counts again. They stay in the versions as Discarded.
    virtual void discardUnsaved(const std::string& font) = 0;
    // Writes the font as it now is to a file anywhere, with nothing else changed.
    virtual void exportFont(const std::string& font, const std::string& file) = 0;
    // Makes a font of that name of a file anywhere, which stays; a font that it replaces becomes a version
    // first. Raises as restoreVersion(), and for a file that is no font's.
    virtual void importFont(const std::string& file, const std::string& name) = 0;

    // Unsaved changes are not let go when the tool goes, but left for the next program that loads the font,
    // as when a program dies.
    virtual void keepUnsaved() = 0;

    // What was restored since the last call, to be told to the operator.
    virtual std::vector<RecoveredChanges> takeRecovered() = 0;

    // Of one font, or of all for "", those of deleted fonts included; newest first.
    virtual std::vector<FontVersion> versions(const std::string& font) const = 0;
    // Makes a font of that name of the version. The font that it may replace becomes a version first; raises
    // Invalid procedure call (5) when that one has unsaved changes.
    virtual void restoreVersion(const FontVersion& version, const std::string& name) = 0;
};

}  // namespace dravik::tool
