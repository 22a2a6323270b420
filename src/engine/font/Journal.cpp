#include "engine/font/Journal.h"

#include <system_error>
#include <utility>

#include "base/AtomicFile.h"
#include "base/Failure.h"
#include "base/FileSystem.h"

namespace dravik::engine {
namespace {

// A font that is written anew as a whole may be in it twice.
constexpr std::uint64_t kLargestRead = 1u << 30;

std::vector<std::uint8_t> bytesOf(std::span<const TimedEntry> entries) {
    std::vector<std::uint8_t> bytes;
    for (const TimedEntry& one : entries) {
        const std::vector<std::uint8_t> entry = encodeEntry(one);
        bytes.insert(bytes.end(), entry.begin(), entry.end());
    }
    return bytes;
}

}  // namespace

std::string journalOf(const std::string& fontFile) {
    return fontFile + ".journal";
}

Journal::Journal(const std::string& fontFile, JournalFlusher& flusher)
    : name_(journalOf(fontFile)), fontFile_(fontFile), flusher_(&flusher) {}

Journal& Journal::operator=(Journal&& other) noexcept {
    if (this == &other) return *this;
    close();
    name_ = std::move(other.name_);
    fontFile_ = std::move(other.fontFile_);
    flusher_ = other.flusher_;
    file_ = std::move(other.file_);
    return *this;
}

JournalContent Journal::read() const {
    if (!fileExists(name_)) return {};
    return readJournal(readWholeFile(name_, kLargestRead));
}

std::uint64_t Journal::sizeOnDisk() const {
    if (!fileExists(name_)) return 0;
    std::error_code error;
    const std::uint64_t size = fileSize(name_, error);
    return error ? 0 : size;
}

void Journal::open(std::uint64_t size) {
    exchange(opened(size));
    try {
        if (size == 0) file_->file.append(journalHead());
    } catch (...) {
        exchange(nullptr);
        throw;
    }
}

void Journal::append(std::span<const TimedEntry> entries) {
    if (file_->hasFailed)
        throw fileFailure(RuntimeError::DeviceIoError, "Cannot write", name_, "it did not reach the disk");
    file_->file.append(bytesOf(entries));
    flusher_->soon(file_);
}

void Journal::cutBack(std::uint64_t size) {
    file_->file.cutBack(size);
}

void Journal::flush() {
    if (file_) file_->file.flush();
}

void Journal::rewrite(std::span<const TimedEntry> entries) {
    std::vector<std::uint8_t> bytes = journalHead();
    const std::vector<std::uint8_t> all = bytesOf(entries);
    bytes.insert(bytes.end(), all.begin(), all.end());
    // Some systems replace and delete no file that is open.
    const bool wasOpen = isOpen();
    const std::uint64_t before = size();
    exchange(nullptr);
    FlushDoubt doubt;
    try {
        doubt.allow([&] { writeWholeFile(name_, bytes, false); });
    } catch (...) {
        if (wasOpen) exchange(opened(before));
        throw;
    }
    exchange(opened(bytes.size()));
    file_->hasFailed = doubt.exists();
}

void Journal::close() noexcept {
    if (file_) flusher_->finish(file_);
    file_.reset();
}

void Journal::remove() {
    exchange(nullptr);
    removeFile(name_);
}

FlushedFilePtr Journal::opened(std::uint64_t size) const {
    auto file = std::make_shared<FlushedFile>(AppendFile(name_, size, fontFile_));
    flusher_->add(file);
    return file;
}

// The flusher keeps no file open that is not the journal's any more: some systems do not replace or delete it
// then.
void Journal::exchange(FlushedFilePtr file) {
    if (file_) flusher_->forget(file_);
    file_ = std::move(file);
}

}  // namespace dravik::engine
