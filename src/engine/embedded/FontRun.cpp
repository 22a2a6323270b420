#include "engine/embedded/FontRun.h"

#include <map>
#include <utility>

#include "engine/embedded/HeldOutCheck.h"

namespace dravik::engine {

FontRun::FontRun(const SampleStore& store)
    : samples(store.columns(tool::SampleKind::Committed)), statistics(store.statistics()) {
    std::map<std::int32_t, std::uint32_t> places;
    for (const std::int32_t code : samples->codes) places.emplace(code, 0u);
    for (auto& [code, place] : places) {
        place = static_cast<std::uint32_t>(set.codes.size());
        set.codes.push_back(code);
        const ClassStatistics::Class& one = *statistics.find(code);
        TrainedCharacter& character = characters.emplace_back();
        character.code = code;
        character.count = one.count;
        for (std::size_t i = 0; i < kInputCount; ++i)
            character.mean[i] = static_cast<float>(one.sums[i] / one.count);
    }
    set.inputs.reserve(samples->size() * kInputCount);
    for (const Sample* sample : samples->samples) {
        set.inputs.insert(set.inputs.end(), sample->inputs.begin(), sample->inputs.end());
        set.classes.push_back(places[sample->code]);
    }
}

TrainingResult perform(const FontRun& run, TrainingWorker::Progress& progress) {
    TrainingResult result;
    TrainingFigures figures;
    result.network = trained(
        run.set, kTrainingSeed, [&progress](const TrainingFigures& f) { return progress.report(f); },
        figures);
    const DistanceMeasure measure(run.statistics, run.samples->samples);
    for (std::size_t i = 0; i < run.samples->size() && !progress.stopped(); ++i)
        result.distances.push_back(measure.distance(*run.samples->samples[i]));
    progress.report(figures);
    return result;
}

SetTraining outcomeOf(const FontRun& run, TrainingResult result, const FontState& font) {
    SetTraining change;
    change.before = font.training;
    change.after = std::make_shared<const Training>(Training{std::move(result.network), run.characters});
    // Both lists are in the order of their serial numbers.
    const SampleColumnsPtr now = font.samples.columns(tool::SampleKind::Committed);
    std::size_t at = 0;
    for (std::size_t i = 0; i < now->size(); ++i) {
        const std::uint64_t serial = now->samples[i]->serial;
        while (at < run.samples->size() && run.samples->samples[at]->serial < serial) ++at;
        if (at == run.samples->size() || run.samples->samples[at]->serial != serial) continue;
        change.serials.push_back(serial);
        change.distancesBefore.push_back(now->distances[i]);
        change.distancesAfter.push_back(result.distances[at]);
    }
    return change;
}

}  // namespace dravik::engine
