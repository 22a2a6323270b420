// What a training run of a font works on: a copy of its samples as they were when the run began, so that
// samples may come and go meanwhile.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "engine/embedded/TrainingWorker.h"
#include "engine/font/FontChange.h"
#include "engine/font/FontState.h"

namespace dravik::engine {

struct FontRun {
    explicit FontRun(const SampleStore& store);

    TrainingSet set;
    SampleColumnsPtr samples;
    ClassStatistics statistics;
    std::vector<TrainedCharacter> characters;
};

// For a TrainingWorker.
TrainingResult perform(const FontRun& run, TrainingWorker::Progress& progress);

// What the run has made of the font that it began with.
SetTraining outcomeOf(const FontRun& run, TrainingResult result, const FontState& font);

}  // namespace dravik::engine
