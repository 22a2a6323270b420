#include "engine/font/JournalFlusher.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace dravik::engine {
namespace {

// What comes meanwhile is flushed along.
constexpr std::chrono::milliseconds kDelay{50};

void flush(FlushedFile& file) noexcept {
    try {
        file.file.flush();
    } catch (...) {
        file.hasFailed = true;
    }
}

}  // namespace

JournalFlusher::~JournalFlusher() {
    if (!thread_.joinable()) return;
    {
        const std::lock_guard lock(mutex_);
        isEnding_ = true;
    }
    due_.notify_one();
    thread_.join();
}

void JournalFlusher::soon(const FlushedFilePtr& file) {
    const std::lock_guard lock(mutex_);
    if (std::find(waiting_.begin(), waiting_.end(), file) != waiting_.end()) return;
    waiting_.push_back(file);
    if (!thread_.joinable()) thread_ = std::thread([this] { run(); });
    due_.notify_one();
}

// True when it was still waiting.
bool JournalFlusher::takeOut(const FlushedFilePtr& file) noexcept {
    std::unique_lock lock(mutex_);
    const bool waited = std::erase(waiting_, file) > 0;
    flushed_.wait(lock,
                  [&] { return std::find(flushing_.begin(), flushing_.end(), file) == flushing_.end(); });
    return waited;
}

void JournalFlusher::forget(const FlushedFilePtr& file) noexcept {
    takeOut(file);
}

void JournalFlusher::finish(const FlushedFilePtr& file) noexcept {
    if (takeOut(file)) flush(*file);
}

void JournalFlusher::run() {
    std::unique_lock lock(mutex_);
    for (;;) {
        due_.wait(lock, [this] { return isEnding_ || !waiting_.empty(); });
        if (waiting_.empty()) return;
        due_.wait_for(lock, kDelay, [this] { return isEnding_; });
        flushing_ = std::exchange(waiting_, {});
        lock.unlock();
        for (const FlushedFilePtr& one : flushing_) flush(*one);
        lock.lock();
        flushing_.clear();
        flushed_.notify_all();
    }
}

}  // namespace dravik::engine
