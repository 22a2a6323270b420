// Numbered pieces of work on several threads, some of them ahead of their turn; what comes out is taken in
// the order of the numbers.
#pragma once

#include <algorithm>
#include <condition_variable>
#include <cstddef>
#include <functional>
#include <mutex>
#include <optional>
#include <stop_token>
#include <thread>
#include <utility>
#include <vector>

namespace dravik::trainer {

inline int processorCount() {
    return std::max(1, static_cast<int>(std::thread::hardware_concurrency()));
}

template <class Result>
class InOrder {
  public:
    // Raises nothing; may end soon, with any result, once a stop is requested.
    using Work = std::function<Result(std::size_t piece, const std::stop_token& stop)>;

    // No more than so many results wait to be taken, on each thread.
    static constexpr std::size_t kWaiting = 2;

    InOrder(std::size_t count, int threads, Work work) : work_(std::move(work)), results_(count) {
        const auto most = std::min(static_cast<std::size_t>(threads), count);
        waiting_ = most * kWaiting;
        for (std::size_t i = 0; i < most; ++i) threads_.emplace_back([this] { run(); });
    }
    InOrder(const InOrder&) = delete;
    InOrder& operator=(const InOrder&) = delete;
    // Stops what is under way and waits for its end.
    ~InOrder() {
        stop_.request_stop();
        {
            const std::scoped_lock lock(mutex_);
            isEnding_ = true;
        }
        taken_.notify_all();
        for (std::thread& thread : threads_) thread.join();
    }

    // The next one; to be called once for each piece.
    Result take() {
        std::unique_lock lock(mutex_);
        ready_.wait(lock, [&] { return results_[place_].has_value(); });
        Result result = std::move(*results_[place_]);
        results_[place_++].reset();
        lock.unlock();
        taken_.notify_all();
        return result;
    }

  private:
    void run() {
        std::unique_lock lock(mutex_);
        for (;;) {
            taken_.wait(
                lock, [this] { return isEnding_ || next_ == results_.size() || next_ < place_ + waiting_; });
            if (isEnding_ || next_ == results_.size()) return;
            const std::size_t piece = next_++;
            lock.unlock();
            Result result = work_(piece, stop_.get_token());
            lock.lock();
            results_[piece] = std::move(result);
            ready_.notify_one();
        }
    }

    const Work work_;
    std::mutex mutex_;
    std::condition_variable ready_;
    std::condition_variable taken_;  // there is room for another one, or the end has come
    std::vector<std::optional<Result>> results_;
    std::size_t place_ = 0;  // the next to be taken
    std::size_t next_ = 0;   // the next to be begun
    std::size_t waiting_ = 0;
    bool isEnding_ = false;
    std::stop_source stop_;
    std::vector<std::thread> threads_;
};

}  // namespace dravik::trainer
