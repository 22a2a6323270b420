// The journal of a font that is being changed, and the lock that lets one object at a time change the font.
// It is opened, begun or written anew as is needed before an entry; one that lacks something is written anew
// with the next entry, or when the font is given up.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "base/FileLock.h"
#include "engine/font/Journal.h"
#include "engine/font/JournalReplay.h"

namespace dravik::engine {

class JournalWriter {
  public:
    // Touches nothing. The flusher outlives it.
    JournalWriter(std::string name, std::string fontFile, JournalFlusher& flusher);

    const std::string& name() const noexcept { return name_; }
    const std::string& fontFile() const noexcept { return fontFile_; }
    const std::string& fileName() const noexcept { return journal_.fileName(); }
    // Of the font file; 0 when there is none.
    FontDigest digestOnDisk() const;

    // Notes what there is, to be gone on from; nothing when no change can be in it. A journal that cannot be
    // read raises, and keeps the font from being changed.
    std::optional<JournalContent> read();
    // Goes on from what was read.
    void open();

    bool isLocked() const noexcept { return lock_.has_value(); }
    // False when another object holds the lock; raises as FileLock::take() does.
    bool tryLock();
    // Raises Permission denied (70) when another object holds the lock, and Path/File access error (75) when
    // the font file is not the one of that digest, or the journal not the one that was read or written here.
    void lock(FontDigest digest);
    void unlock() { lock_.reset(); }
    // Another object is at work on the font: nothing can be done to it here before it is opened once more.
    void leaveToOthers() { size_ = kSomebodyElses; }

    // `font` is as it is before the entry. Raises as lock() and Journal::append() do.
    void write(const JournalEntry& entry, const FontWithHistory& font);
    // All of them or none.
    void write(std::span<const FontChange> changes, const FontWithHistory& font);
    // What cannot be written is noted to be missing.
    void tryWrite(const JournalEntry& entry, const FontWithHistory& font) noexcept;
    // The journal lacks something that is in the font.
    void noteMissing() noexcept { isBroken_ = true; }
    // Takes away again what was written last.
    void takeBackLast() noexcept;
    void flush() { journal_.flush(); }
    bool isOpen() const noexcept { return journal_.isOpen(); }

    // Leaves the oldest acts out when it has become long; one that cannot be written anew stays long.
    void shorten(FontWithHistory& font);
    // Writes the journal of a font file that is about to come back, and takes the lock.
    void writeAnew(const FontWithHistory& font);
    void remove() { journal_.remove(); }
    // The same, and gives the lock up.
    void drop();
    // Closes it and gives the lock up: nothing is unsaved, or it is to stay in the journal.
    void release(const FontWithHistory& font);
    // The font file gets another name, by what is given, and the journal with it. Raises what that raises,
    // and as lock() does; both are then as they were.
    void rename(std::string name, std::string fontFile, const FontWithHistory& font,
                const std::function<void()>& renameFontFile);

  private:
    static constexpr std::uint64_t kSomebodyElses = ~0ull;  // no journal is as large

    void prepare(const FontWithHistory& font);
    void rewrite(const FontWithHistory& font);
    void append(std::span<const TimedEntry> entries, const FontWithHistory& font);

    std::string name_;
    std::string fontFile_;
    JournalFlusher* flusher_;
    Journal journal_;
    std::uint64_t size_ = 0;  // on the disk while it is closed
    std::uint64_t used_ = 0;  // what of it can be gone on from
    std::string unreadable_;  // why the journal that there is cannot be read
    std::uint64_t beforeLast_ = 0;
    bool isBroken_ = false;
    std::optional<FileLock> lock_;
};

}  // namespace dravik::engine
