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

// A file that the flusher may still be flushing when its owner has done with it.
struct FlushedFile {
    AppendFile file;
    std::atomic<bool> hasFailed{false};  // what of it has reached the disk is not known

    explicit FlushedFile(AppendFile open) : file(std::move(open)) {}
};
using FlushedFilePtr = std::shared_ptr<FlushedFile>;

class JournalFlusher {
  public:
    JournalFlusher() = default;
    JournalFlusher(const JournalFlusher&) = delete;
    JournalFlusher& operator=(const JournalFlusher&) = delete;
    // Flushes what is left first.
    ~JournalFlusher() = default;

    // The file has grown. The thread starts with the first one.
    void soon(const FlushedFilePtr& file);
    // Has nothing more to do with the file when this returns, so that its owner can close it.
    void forget(const FlushedFilePtr& file);

  private:
    void run(const std::stop_token& stop);

    std::mutex mutex_;
    std::condition_variable_any due_;  // there is something to flush
    std::condition_variable flushed_;
    std::vector<FlushedFilePtr> waiting_;
    std::vector<FlushedFilePtr> flushing_;
    std::jthread thread_;
};

}  // namespace dravik::engine
