#include "engine/embedded/FontTraining.h"

#include <utility>

#include "base/Failure.h"

namespace dravik::engine {

void FontTraining::start(const FontState& font) {
    check_.stop();
    auto run = std::make_shared<FontRun>(font.samples);
    worker_.start([run](TrainingWorker::Progress& progress) { return perform(*run, progress); }, limit_);
    run_ = std::move(run);
    isAborted_ = false;
}

void FontTraining::startCheck(const FontState& font) {
    check_.start(font.samples.columns(tool::SampleKind::Committed), kTrainingSeed);
}

void FontTraining::stop() {
    if (!run_) return;
    worker_.stop();
    run_.reset();
    isAborted_ = true;
}

std::optional<SetTraining> FontTraining::takeOutcome(const FontState& font) {
    if (!run_ || worker_.running()) return std::nullopt;
    const std::shared_ptr<FontRun> ended = std::exchange(run_, nullptr);
    isAborted_ = true;
    std::optional<TrainingResult> result;
    try {
        result = worker_.take();
    } catch (...) {
        const Failure cause = currentFailure();
        throw Failure(cause.number(), "Training failed: " + cause.description());
    }
    if (!result) return std::nullopt;
    SetTraining outcome = outcomeOf(*ended, std::move(*result), font);
    isAborted_ = false;
    check_.start(ended->samples, kTrainingSeed);
    return outcome;
}

}  // namespace dravik::engine
