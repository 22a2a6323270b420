#include "engine/embedded/TrainingWorker.h"

#include <utility>

#include "base/Failure.h"

namespace dravik::engine {

bool TrainingWorker::Progress::report(const TrainingFigures& figures) {
    worker_.cycles_ = figures.cycles;
    worker_.rmsError_ = figures.rmsError;
    return !stop_.stop_requested() && std::chrono::steady_clock::now() < end_;
}

void TrainingWorker::start(Work work, std::int32_t limitSeconds) {
    if (running()) throw Failure(RuntimeError::InvalidProcedureCall, "A training run is going on already");
    if (thread_.joinable()) thread_.join();
    result_.reset();
    error_ = nullptr;
    cycles_ = 0;
    rmsError_ = 0;
    ended_ = false;
    const auto end = limitSeconds > 0 ? std::chrono::steady_clock::now() + std::chrono::seconds(limitSeconds)
                                      : std::chrono::steady_clock::time_point::max();
    try {
        thread_ = std::jthread([this, end, work = std::move(work)](std::stop_token stop) {
            try {
                Progress progress(*this, std::move(stop), end);
                TrainingResult result = work(progress);
                if (!progress.stopped()) result_ = std::move(result);
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

void TrainingWorker::stop() {
    if (!thread_.joinable()) return;
    thread_.request_stop();
    thread_.join();
    result_.reset();
    error_ = nullptr;
}

std::optional<TrainingResult> TrainingWorker::take() {
    if (thread_.joinable()) thread_.join();
    if (error_) std::rethrow_exception(std::exchange(error_, nullptr));
    return std::exchange(result_, std::nullopt);
}

}  // namespace dravik::engine
