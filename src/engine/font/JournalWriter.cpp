#include "engine/font/JournalWriter.h"

#include <algorithm>
#include <utility>

#include "base/Failure.h"
#include "base/FileSystem.h"
#include "engine/font/FontFile.h"

namespace dravik::engine {
namespace {

// Bytes of a journal in which there can be no change yet.
constexpr std::uint64_t kJustBegun = 128;

std::string lockOf(const std::string& fontFile) {
    return linkedFile(fontFile) + ".lock";
}

FileLock taken(const std::string& fontFile, const std::string& name) {
    const std::string file = lockOf(fontFile);
    if (auto lock = FileLock::take(file)) return std::move(*lock);
    throw Failure(RuntimeError::PermissionDenied, "Font \"" + name + "\" is being changed by " +
                                                      FileLock::holder(file) + "; nothing was changed here");
}

}  // namespace

JournalWriter::JournalWriter(std::string name, std::string fontFile, JournalFlusher& flusher)
    : name_(std::move(name)),
      fontFile_(std::move(fontFile)),
      flusher_(&flusher),
      journal_(fontFile_, flusher) {}

FontDigest JournalWriter::digestOnDisk() const {
    return fileExists(fontFile_) ? digestOf(readFontBytes(fontFile_)) : 0;
}

std::optional<JournalContent> JournalWriter::read() {
    size_ = journal_.sizeOnDisk();
    used_ = 0;
    JournalContent content;
    try {
        content = journal_.read();
    } catch (const Failure& failure) {
        unreadable_ = failure.description();
        throw;
    }
    const bool isJustBegun = content.entries.empty() && !content.isLater && size_ <= kJustBegun;
    if (size_ == 0 || isJustBegun) return std::nullopt;
    // One that an earlier program has written is written anew with the first change.
    if (!content.isEarlier) used_ = content.used;
    return content;
}

void JournalWriter::open() {
    if (used_ > 0)
        journal_.open(used_);
    else
        isBroken_ = true;
}

bool JournalWriter::tryLock() {
    lock_ = FileLock::take(lockOf(fontFile_));
    return isLocked();
}

void JournalWriter::lock(FontDigest digest) {
    if (lock_) return;
    if (!unreadable_.empty())
        throw Failure(RuntimeError::PathFileAccessError,
                      "Font \"" + name_ + "\" cannot be changed: " + unreadable_);
    FileLock lock = taken(fontFile_, name_);
    const FontDigest onDisk = digestOnDisk();
    if (onDisk == 0)
        throw Failure(RuntimeError::PathFileAccessError,
                      "Font \"" + name_ + "\" was renamed or deleted by another program since it was loaded");
    if (onDisk != digest || journal_.sizeOnDisk() != size_)
        throw Failure(
            RuntimeError::PathFileAccessError,
            "Font \"" + name_ + "\" was changed by another program since it was loaded; load it once more");
    lock_ = std::move(lock);
}

// Makes the journal ready for an entry.
void JournalWriter::prepare(const FontWithHistory& font) {
    const bool wasLocked = isLocked();
    lock(font.digest);
    try {
        isBroken_ |= journal_.hasFailed();
        if (!journal_.isOpen() && !isBroken_) {
            if (used_ == 0 && font.history.isEmpty()) {
                journal_.open(0);
                journal_.append(std::vector<TimedEntry>{{savedState(font, font.digest), timeNow()}});
            } else {
                open();
            }
        }
        if (isBroken_) rewrite(font);
    } catch (...) {
        journal_.close();  // it may lack its beginning
        size_ = journal_.sizeOnDisk();
        if (!wasLocked) lock_.reset();
        throw;
    }
}

void JournalWriter::append(std::span<const TimedEntry> entries, const FontWithHistory& font) {
    prepare(font);
    beforeLast_ = journal_.size();
    journal_.append(entries);
}

void JournalWriter::write(const JournalEntry& entry, const FontWithHistory& font) {
    append(std::vector<TimedEntry>{{entry, timeNow()}}, font);
}

void JournalWriter::write(std::span<const FontChange> changes, const FontWithHistory& font) {
    std::vector<TimedEntry> entries;
    for (const FontChange& change : changes) entries.push_back({change, timeNow()});
    append(entries, font);
}

void JournalWriter::tryWrite(const JournalEntry& entry, const FontWithHistory& font) noexcept {
    try {
        write(entry, font);
    } catch (...) {
        noteMissing();
    }
}

void JournalWriter::takeBackLast() noexcept {
    try {
        journal_.cutBack(beforeLast_);
    } catch (...) {
        noteMissing();
    }
}

void JournalWriter::rewrite(const FontWithHistory& font) {
    journal_.rewrite(journalEntries(font));
    isBroken_ = false;
}

void JournalWriter::shorten(FontWithHistory& font) {
    const auto& acts = font.history.acts();
    if (journal_.size() <= kLargestJournal && acts.size() <= kMostActs) return;
    try {
        do {
            font.history.dropOldest(acts.size() / 2);
            rewrite(font);
        } while (journal_.size() > kLargestJournal / 2 && !acts.empty());
    } catch (...) {
        noteMissing();
    }
}

void JournalWriter::writeAnew(const FontWithHistory& font) {
    lock_ = taken(fontFile_, name_);
    try {
        rewrite(font);
    } catch (...) {
        drop();
        throw;
    }
}

void JournalWriter::drop() {
    journal_.remove();
    size_ = used_ = 0;
    lock_.reset();
}

void JournalWriter::release(const FontWithHistory& font) {
    const bool isUnsaved = font.history.isUnsaved();
    bool isWhole = true;
    if (lock_ && isBroken_) {
        try {
            rewrite(font);
        } catch (...) {
            isWhole = false;
            if (!isUnsaved) journal_.remove();
        }
    }
    if (journal_.isOpen()) {
        if (font.history.isEmpty() && !isUnsaved) journal_.remove();
        size_ = used_ = journal_.size();
        journal_.close();
    } else if (lock_) {
        size_ = journal_.sizeOnDisk();
        used_ = std::min(used_, size_);
    }
    if (!isWhole) used_ = 0;
    isBroken_ = false;
    lock_.reset();
}

void JournalWriter::rename(std::string name, std::string fontFile, const FontWithHistory& font,
                           const std::function<void()>& renameFontFile) {
    const bool wasLocked = isLocked();
    lock(font.digest);
    Journal journal(fontFile, *flusher_);
    const bool keepsJournal = font.history.isUnsaved() || !font.history.isEmpty();
    try {
        FileLock lock = taken(fontFile, name);
        if (keepsJournal)
            journal.rewrite(journalEntries(font));
        else
            journal.remove();  // what a font of that name has left behind
        renameFontFile();
        lock_ = std::move(lock);
    } catch (...) {
        if (keepsJournal && !fileExists(fontFile)) journal.remove();
        if (!wasLocked) release(font);
        throw;
    }
    journal_.remove();
    journal_ = std::move(journal);
    name_ = std::move(name);
    fontFile_ = std::move(fontFile);
    isBroken_ = false;
    size_ = used_ = journal_.size();
    if (!wasLocked) release(font);
}

}  // namespace dravik::engine
