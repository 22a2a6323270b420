// One training run on a thread of its own, observed by polling from the thread that owns this object. An
// exception of the run never leaves its thread: it ends the run and is handed over with the result.
#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <exception>
#include <functional>
#include <optional>
#include <thread>
#include <vector>

#include "engine/classifier/Network.h"

namespace dravik::engine {

struct TrainingResult {
    Network network;
    std::vector<double> distances;  // of the samples that the run was given, in their order
};

class TrainingWorker {
  public:
    // What a run reports to and asks; usable from the run's thread.
    class Progress {
      public:
        // Notes the figures; false once the run is to end, by a stop or by its time limit.
        bool report(const TrainingFigures& figures);
        // True when the run was stopped, so that its result is not wanted.
        bool stopped() const { return stop_.stop_requested(); }

      private:
        friend class TrainingWorker;
        Progress(TrainingWorker& worker, std::stop_token stop, std::chrono::steady_clock::time_point end)
            : worker_(worker), stop_(std::move(stop)), end_(end) {}
        TrainingWorker& worker_;
        std::stop_token stop_;
        std::chrono::steady_clock::time_point end_;
    };
    using Work = std::function<TrainingResult(Progress&)>;

    TrainingWorker() = default;
    TrainingWorker(const TrainingWorker&) = delete;
    TrainingWorker& operator=(const TrainingWorker&) = delete;
    ~TrainingWorker() = default;

    // Raises Invalid procedure call (5) while a run goes on. A limit of 0 seconds is none.
    void start(Work work, std::int32_t limitSeconds);
    // Ends the run and waits for it, which takes a few milliseconds; its result is dropped.
    void stop();

    // True from start() until the run has ended.
    bool running() const noexcept { return thread_.joinable() && !ended_.load(); }
    TrainingFigures figures() const noexcept { return {cycles_.load(), rmsError_.load()}; }
    // Once after a run has ended: its result, nothing when it was stopped. Raises what ended the run before
    // its time.
    std::optional<TrainingResult> take();

  private:
    std::atomic<bool> ended_{true};
    std::atomic<std::int32_t> cycles_{0};
    std::atomic<float> rmsError_{0};
    std::optional<TrainingResult> result_;
    std::exception_ptr error_;
    std::jthread thread_;
};

}  // namespace dravik::engine
