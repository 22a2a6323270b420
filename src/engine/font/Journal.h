// The journal of a font: the file beside it that holds the changes which the font file does not have yet, and
// the acts that can be taken back. An entry is with the system when append() returns, and on the disk within
// a tenth of a second.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "engine/font/JournalEntry.h"
#include "engine/font/JournalFlusher.h"

namespace dravik::engine {

// Beyond this a journal is written anew without its oldest acts.
constexpr std::uint64_t kLargestJournal = 64u << 20;
constexpr std::size_t kMostActs = 10'000;

std::string journalOf(const std::string& fontFile);

class Journal {
  public:
    // Of that font file; touches nothing. The flusher outlives it.
    Journal(const std::string& fontFile, JournalFlusher& flusher);
    Journal& operator=(Journal&& other) noexcept;
    ~Journal() { close(); }

    // What is in the file; nothing when there is none. Raises as readWholeFile() does.
    JournalContent read() const;
    // 0 when there is none.
    std::uint64_t sizeOnDisk() const;

    // Opens the file to go on behind so many bytes; whoever does holds the font's lock. Raises as AppendFile.
    void open(std::uint64_t size);
    bool isOpen() const noexcept { return file_ != nullptr; }
    // All or nothing; raises as AppendFile::append() does. A journal that could not be flushed raises Device
    // I/O error (57) until it is written anew.
    void append(std::span<const TimedEntry> entries);
    bool hasFailed() const noexcept { return file_ && file_->hasFailed; }
    // Takes away again what was appended behind so many bytes.
    void cutBack(std::uint64_t size);
    // Waits until all of it is on the disk.
    void flush();
    // The file is on the disk and open afterwards, or as it was.
    void rewrite(std::span<const TimedEntry> entries);
    // What waits for the disk is there afterwards, unless the journal has failed, and nobody has the file
    // open.
    void close() noexcept;
    // Closes it and takes the file away.
    void remove();

    std::uint64_t size() const noexcept { return file_ ? file_->file.size() : 0; }
    const std::string& fileName() const noexcept { return name_; }

  private:
    FlushedFilePtr opened(std::uint64_t size) const;
    void exchange(FlushedFilePtr file);

    std::string name_;
    std::string fontFile_;
    JournalFlusher* flusher_;
    FlushedFilePtr file_;
};

}  // namespace dravik::engine
