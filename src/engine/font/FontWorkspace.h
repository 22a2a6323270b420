// The fonts of a jobs folder as one program works on them: which is current, the working copies of those with
// unsaved changes, and everything that is done to a font as a whole.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/JobFolder.h"
#include "engine/font/FontLibrary.h"
#include "engine/font/FontVersions.h"
#include "engine/font/WorkingCopy.h"
#include "tool/FontHistory.h"

namespace dravik::engine {

class FontWorkspace {
  public:
    FontWorkspace(const JobFolder& folder, bool remembersFont);
    // Lets the unsaved changes go, which stay among the versions; but those that a save has failed to write
    // stay in the journal, and those that were recovered and not gone on with.
    ~FontWorkspace();
    FontWorkspace(const FontWorkspace&) = delete;
    FontWorkspace& operator=(const FontWorkspace&) = delete;

    const FontLibrary& library() const noexcept { return library_; }
    // Null when no font is loaded.
    const WorkingCopy* current() const noexcept { return current_; }
    // The same; raises Object variable not set (91).
    const WorkingCopy& font() const;
    // Empty when no font is loaded.
    const FontState& state() const noexcept { return current_ ? current_->state() : nothing_; }

    // The rules of the tool's operations of these names hold (see EmbeddedTool.h). Names are spelt in any
    // case. True when another state is current than before.
    bool load(const std::string& name);
    void create(const std::string& name);
    void remove(const std::string& name);
    void rename(const std::string& newName, const std::string& existingName);
    void duplicate(const std::string& newName, const std::string& existingName);
    void save(const std::string& name);
    void revert(const std::string& name);

    // To the current font.
    void claim();
    void make(FontChange change);
    void make(std::vector<FontChange> changes);
    void makeAnyway(FontChange change);

    // As in tool::FontHistory.
    void endAct(std::string_view words, std::string_view screenState);
    std::optional<std::string> undoWords() const;
    std::optional<std::string> redoWords() const;
    std::string undo();
    std::string redo();
    std::vector<std::string> unsavedFonts() const;
    void saveUnsaved(const std::string& font);
    void discardUnsaved(const std::string& font);
    void exportFont(const std::string& font, const std::string& file);
    void importFont(const std::string& file, const std::string& name);
    std::vector<tool::RecoveredChanges> takeRecovered();
    std::vector<tool::FontVersion> versions(const std::string& font) const;
    void restoreVersion(const tool::FontVersion& version, const std::string& name);
    void keepUnsaved() noexcept { keepsUnsaved_ = true; }

  private:
    using CopyPtr = std::unique_ptr<WorkingCopy>;
    using Copies = std::map<std::string, CopyPtr>;
    // A font that was just deleted.
    struct Deleted {
        Copies::node_type copy;
        std::vector<std::uint8_t> file;  // its content
        bool wasCurrent = false;
    };

    CopyPtr opened(const std::string& name);
    WorkingCopy& open(const std::string& name);
    WorkingCopy* openIfReadable(const std::string& name);
    WorkingCopy* openCopy(const std::string& name) const;
    void close(const std::string& name);
    void endActByTime();
    void leave();
    void enter(WorkingCopy* copy);
    void writeNew(const std::string& name, const FontRecord& font);
    void replace(const std::string& name, const FontRecord& font);
    void replaceSaved(const std::string& asked, const FontRecord& font);
    void writeBack(WorkingCopy& copy);
    std::string bringBackDeleted();
    void letGo(WorkingCopy& copy);
    FontRecord shown(const std::string& name);

    FontLibrary library_;
    FontVersions versions_;
    JournalFlusher flusher_;
    Copies copies_;  // the current font and those with unsaved changes
    WorkingCopy* current_ = nullptr;
    std::optional<Deleted> deleted_;
    std::vector<tool::RecoveredChanges> recovered_;
    const FontState nothing_;
    bool actsAreEnded_ = false;  // by who works with this; else by time
    bool keepsUnsaved_ = false;
};

}  // namespace dravik::engine
