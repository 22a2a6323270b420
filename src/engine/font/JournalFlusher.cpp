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

void JournalFlusher::add(const FlushedFilePtr& file) {
    const std::lock_guard lock(mutex_);
    files_.push_back(file);
    if (thread_.joinable()) return;
    try {
        thread_ = std::thread([this] { run(); });
    } catch (...) {
        files_.pop_back();
        throw;
    }
}

void JournalFlusher::soon(const FlushedFilePtr& file) noexcept {
    const std::lock_guard lock(mutex_);
    file->isDue = true;
    due_.notify_one();
}

// Null when nothing waits.
FlushedFilePtr JournalFlusher::nextDue() noexcept {
    const auto due =
        std::find_if(files_.begin(), files_.end(), [](const FlushedFilePtr& file) { return file->isDue; });
    return due == files_.end() ? nullptr : *due;
}

// True when it was still waiting.
bool JournalFlusher::takeOut(const FlushedFilePtr& file) noexcept {
    std::unique_lock lock(mutex_);
    std::erase(files_, file);
    flushed_.wait(lock, [&] { return flushing_ != file; });
    return std::exchange(file->isDue, false);
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
        due_.wait(lock, [this] { return isEnding_ || nextDue(); });
        if (!nextDue()) return;
        due_.wait_for(lock, kDelay, [this] { return isEnding_; });
        while ((flushing_ = nextDue())) {
            flushing_->isDue = false;
            lock.unlock();
            flush(*flushing_);
            lock.lock();
            flushing_.reset();
            flushed_.notify_all();
        }
    }
}

}  // namespace dravik::engine
