// A font that is being worked on: its state, the acts that led there, and the journal that keeps both beside
// the font file, so that nothing is lost when the program ends, however it ends.
//
// The first change takes the font's lock, which is given up when the font is saved, when its changes are let
// go and with this object. What another program has done to the font since it was opened is never
// overwritten.
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/font/JournalReplay.h"
#include "engine/font/JournalWriter.h"
#include "tool/FontHistory.h"

namespace dravik::engine {

class WorkingCopy {
  public:
    // Opens the font and makes the changes again that a program has left in its journal, unless another
    // object is at work on the font. Raises as readFont() does. The flusher outlives it.
    WorkingCopy(std::string name, std::string file, JournalFlusher& flusher);
    // Leaves unsaved changes in the journal, to be made again when the font is opened.
    ~WorkingCopy();
    WorkingCopy(const WorkingCopy&) = delete;
    WorkingCopy& operator=(const WorkingCopy&) = delete;

    // What opening has found in the journal. What is not to be used is to be kept elsewhere by who has opened
    // the font, and dropJournal() called then.
    struct Found {
        std::optional<tool::RecoveredChanges> recovered;
        std::optional<FontRecord> letGo;  // with changes that were let go
        bool isForeign = false;           // it belongs to another version of the font file
        std::string problem;              // why what is in it can neither be made again nor be kept elsewhere
    };
    const Found& found() const noexcept { return found_; }
    void dropJournal();

    const std::string& name() const noexcept { return journal_.name(); }
    const std::string& file() const noexcept { return journal_.fontFile(); }
    const std::string& journalFile() const noexcept { return journal_.fileName(); }
    const FontState& state() const noexcept { return font_.state; }
    const ActHistory& history() const noexcept { return font_.history; }
    // Uncommitted samples are no change that could be saved.
    bool isUnsaved() const { return font_.history.isUnsaved(); }
    // Since it was opened; what was recovered then does not count.
    bool wasChanged() const noexcept { return wasChanged_; }
    bool hasFailedToSave() const noexcept { return hasFailedToSave_; }
    // When the last change was made.
    std::chrono::steady_clock::time_point lastChange() const noexcept { return lastChange_; }

    // Writes the change to the journal and makes it. Raises Permission denied (70) when another object is at
    // work on the font, Path/File access error (75) when the font was changed since it was opened, and what
    // writing raises; the font is then as it was. Uncommitted samples can be removed all the same.
    void make(FontChange change);
    // All of them or none.
    void make(std::vector<FontChange> changes);
    // The same for a change that is not to be lost for want of a journal: endAct() raises that then.
    void makeAnyway(FontChange change);
    void removeUncommitted();
    void endAct(std::string_view words, std::string_view screenState);
    // Nothing when there is nothing to take back or to do again.
    std::optional<std::string> undoWords() const;
    std::optional<std::string> redoWords() const;
    // Give the screen's state at that point. Raise Invalid procedure call (5) when there is nothing.
    std::string undo() { return go(true); }
    std::string redo() { return go(false); }
    // An act of its own: the training is that of the font file again.
    void revertTraining(TrainingPtr saved);

    // The font file is not what was opened or last saved: it was changed, renamed or deleted meanwhile.
    bool isChangedUnderneath() const { return journal_.digestOnDisk() != font_.digest; }
    // Nobody else has changed the font file. Raises as make() and writeFont() do.
    void save();
    // The changes are not to be made again; `keep` is given the font with them.
    void letGo(const std::function<void(const FontRecord&)>& keep);
    // Takes the lock, as the first change does.
    void lock() { journal_.lock(font_.digest); }
    // The font file gets another name and the journal with it; raises as renameFile() and make() do.
    void rename(std::string name, std::string file);
    // Writes the journal of a font file that is about to come back.
    void writeJournal() { journal_.writeAnew(font_); }
    // Gives the lock up when nothing is unsaved, so that others may change the font.
    void rest();

  private:
    void open();
    void openLocked(std::optional<Replayed> replayed);
    template <class Entry>
    void writeChange(const Entry& entry);
    void noteChange(FontChange change);
    void amend(std::string_view words, std::string_view screenState);
    void endOwnAct();
    std::string go(bool back);

    FontWithHistory font_;
    JournalWriter journal_;
    Found found_;
    bool wasChanged_ = false;
    bool hasFailedToSave_ = false;
    std::chrono::steady_clock::time_point lastChange_;
};

}  // namespace dravik::engine
