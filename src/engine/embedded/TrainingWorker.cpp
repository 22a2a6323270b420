#include "engine/embedded/TrainingWorker.h"

#include <utility>

#include "base/Failure.h"

namespace dravik::engine {

bool TrainingWorker::Progress::report(const TrainingFigures& figures) {
    worker_.cycles_ = figures.cycles;
    worker_.rmsError_ = figures.rmsError;
    return !stopped() && std::chrono::steady_clock::now() < end_;
}

void TrainingWorker::start(Work work, std::int32_t limitSeconds) {
    if (running()) throw Failure(RuntimeError::InvalidProcedureCall, "A training run is going on already");
    const auto end = limitSeconds > 0 ? std::chrono::steady_clock::now() + std::chrono::seconds(limitSeconds)
                                      : std::chrono::steady_clock::time_point::max();
    cycles_ = 0;
    rmsError_ = 0;
    BackgroundRun::start([this, end, work = std::move(work)](const std::stop_token& stop) {
        Progress progress(*this, stop, end);
        std::optional<TrainingResult> result = work(progress);
        if (progress.stopped()) result.reset();
        return result;
    });
}

}  // namespace dravik::engine
