// One training run in the background, with its figures and its time limit.
#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <vector>

#include "engine/classifier/Network.h"
#include "engine/embedded/BackgroundRun.h"

namespace dravik::engine {

struct TrainingResult {
    Network network;
    std::vector<double> distances;  // of the samples that the run was given, in their order
};

class TrainingWorker : private BackgroundRun<TrainingResult> {
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
        Progress(TrainingWorker& worker, const std::stop_token& stop,
                 std::chrono::steady_clock::time_point end)
            : worker_(worker), stop_(stop), end_(end) {}
        TrainingWorker& worker_;
        const std::stop_token& stop_;
        std::chrono::steady_clock::time_point end_;
    };
    using Work = std::function<TrainingResult(Progress&)>;

    // Raises Invalid procedure call (5) while a run goes on. A limit of 0 seconds is none.
    void start(Work work, std::int32_t limitSeconds);
    using BackgroundRun::running;
    using BackgroundRun::stop;
    using BackgroundRun::take;

    TrainingFigures figures() const noexcept { return {cycles_.load(), rmsError_.load()}; }

  private:
    std::atomic<std::int32_t> cycles_{0};
    std::atomic<float> rmsError_{0};
};

}  // namespace dravik::engine
