// Brings journals to the disk soon after they have grown, on a thread of its own, so that nobody waits for
// the disk: what an act has written is flushed once, within a tenth of a second.
#pragma once

#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include "base/AppendFile.h"

namespace dravik::engine {

struct FlushedFile {
    AppendFile file;
    std::atomic<bool> hasFailed{false};  // what of it has reached the disk is not known
    bool isDue = false;                  // the flusher's

    explicit FlushedFile(AppendFile open) : file(std::move(open)) {}
};
using FlushedFilePtr = std::shared_ptr<FlushedFile>;

class JournalFlusher {
  public:
    JournalFlusher() = default;
    JournalFlusher(const JournalFlusher&) = delete;
    JournalFlusher& operator=(const JournalFlusher&) = delete;
    // Flushes what is left first.
    ~JournalFlusher();

    // Of a file that was just opened. The thread starts with the first one.
    void add(const FlushedFilePtr& file);
    // The file has grown.
    void soon(const FlushedFilePtr& file) noexcept;
    // Both have nothing more to do with the file when they return, so that its owner can close it: forget()
    // leaves it as it is, finish() flushes it now if it waits for that.
    void forget(const FlushedFilePtr& file) noexcept;
    void finish(const FlushedFilePtr& file) noexcept;

  private:
    FlushedFilePtr nextDue() noexcept;
    bool takeOut(const FlushedFilePtr& file) noexcept;
    void run();

    std::mutex mutex_;
    std::condition_variable due_;  // there is something to flush, or the end has come
    std::condition_variable flushed_;
    std::vector<FlushedFilePtr> files_;
    FlushedFilePtr flushing_;
    // A flag and no stop token: GCC 12's condition variable that waits with one can hang on Windows when the
    // token is stopped just then (the removal of its stop callback misses the wake-up it waits for).
    bool isEnding_ = false;
    std::thread thread_;
};

}  // namespace dravik::engine
