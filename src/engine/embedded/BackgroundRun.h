// Work on a thread of its own, observed by polling from the thread that owns this object. An exception of the
// work never leaves its thread: it ends the run and is handed over with the result.
#pragma once

#include <atomic>
#include <exception>
#include <functional>
#include <optional>
#include <thread>
#include <utility>

namespace dravik::engine {

template <class Result>
class BackgroundRun {
  public:
    // Asks the token every few milliseconds whether to end.
    using Work = std::function<std::optional<Result>(const std::stop_token&)>;

    BackgroundRun() = default;
    BackgroundRun(const BackgroundRun&) = delete;
    BackgroundRun& operator=(const BackgroundRun&) = delete;
    ~BackgroundRun() = default;

    // Stops a run that is going on.
    void start(Work work) {
        stop();
        ended_ = false;
        try {
            thread_ = std::jthread([this, work = std::move(work)](const std::stop_token& stop) {
                try {
                    result_ = work(stop);
                } catch (...) {
                    error_ = std::current_exception();
                }
                ended_ = true;
            });
        } catch (...) {
            ended_ = true;
            throw;
        }
    }
    // Ends the run and waits for it, which takes a few milliseconds; its result is dropped.
    void stop() {
        if (thread_.joinable()) {
            thread_.request_stop();
            thread_.join();
        }
        result_.reset();
        error_ = nullptr;
    }

    // True from start() until the run has ended.
    bool running() const noexcept { return thread_.joinable() && !ended_.load(); }
    // Nothing before the end of a run, and when it failed or gave nothing.
    const Result* result() const { return ended_.load() && result_ ? &*result_ : nullptr; }
    // Once after a run has ended: its result, nothing when it was stopped. Raises what ended the run before
    // its time.
    std::optional<Result> take() {
        if (thread_.joinable()) thread_.join();
        if (error_) std::rethrow_exception(std::exchange(error_, nullptr));
        return std::exchange(result_, std::nullopt);
    }

  private:
    std::atomic<bool> ended_{true};
    std::optional<Result> result_;
    std::exception_ptr error_;
    std::jthread thread_;
};

}  // namespace dravik::engine
