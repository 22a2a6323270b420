#include "engine/font/JournalFlusher.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace dravik::engine {
namespace {

// What comes meanwhile is flushed along.
constexpr std::chrono::milliseconds kDelay{50}, kSlice{5};

// Slept, not waited for on a condition: that of the Windows runtime has been seen to miss wake-ups when some
// of those who wait have a time limit.
void pause(const std::stop_token& stop) {
    for (std::chrono::milliseconds slept{0}; slept < kDelay && !stop.stop_requested(); slept += kSlice)
        std::this_thread::sleep_for(kSlice);
}

}  // namespace

void JournalFlusher::soon(const FlushedFilePtr& file) {
    const std::lock_guard lock(mutex_);
    if (std::find(waiting_.begin(), waiting_.end(), file) != waiting_.end()) return;
    waiting_.push_back(file);
    if (!thread_.joinable()) thread_ = std::jthread([this](const std::stop_token& stop) { run(stop); });
    due_.notify_one();
}

void JournalFlusher::forget(const FlushedFilePtr& file) {
    std::unique_lock lock(mutex_);
    std::erase(waiting_, file);
    flushed_.wait(lock,
                  [&] { return std::find(flushing_.begin(), flushing_.end(), file) == flushing_.end(); });
}

void JournalFlusher::run(const std::stop_token& stop) {
    std::unique_lock lock(mutex_);
    for (;;) {
        due_.wait(lock, stop, [this] { return !waiting_.empty(); });
        if (waiting_.empty()) return;
        lock.unlock();
        pause(stop);
        lock.lock();
        flushing_ = std::exchange(waiting_, {});
        lock.unlock();
        for (const FlushedFilePtr& one : flushing_) {
            try {
                one->file.flush();
            } catch (...) {
                one->hasFailed = true;
            }
        }
        lock.lock();
        flushing_.clear();
        flushed_.notify_all();
    }
}

}  // namespace dravik::engine
