// The training of the current font: one run at a time in the background, what it has led to, and the check of
// its samples that follows.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>

#include "engine/embedded/FontRun.h"
#include "engine/embedded/HeldOutCheck.h"
#include "engine/embedded/TrainingWorker.h"

namespace dravik::engine {

class FontTraining {
  public:
    // In seconds; 0 is none.
    std::int32_t limit() const noexcept { return limit_; }
    void setLimit(std::int32_t seconds) noexcept { limit_ = seconds; }

    // A run goes on, or has ended and nobody has taken its outcome.
    bool isUnderWay() const noexcept { return run_ != nullptr; }
    // Nothing is under way, and there are committed samples.
    void start(const FontState& font);
    // Drops a run that is under way, one that has just ended as well.
    void stop();
    // Once after a run has ended with a result, which is checked from then on. Raises what ended the run
    // before its time.
    std::optional<SetTraining> takeOutcome(const FontState& font);
    // The last run was stopped or gave no result.
    bool isAborted() const noexcept { return isAborted_; }
    TrainingFigures figures() const noexcept { return worker_.figures(); }

    bool isChecking() const noexcept { return check_.running(); }
    // Nothing before the end of the check.
    const HeldOutResult* checked() const { return check_.result(); }
    void dropCheck() { check_.stop(); }
    // Of the font's committed samples.
    void startCheck(const FontState& font);

  private:
    static constexpr std::int32_t kUsualLimit = 60;

    std::int32_t limit_ = kUsualLimit;
    std::shared_ptr<FontRun> run_;
    bool isAborted_ = false;
    TrainingWorker worker_;
    HeldOutWorker check_;
};

}  // namespace dravik::engine
