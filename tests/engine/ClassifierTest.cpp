// Features, Distances, training and its worker.

#include <condition_variable>
#include <mutex>

#include "contract/DrawnText.h"
#include "engine/classifier/DistanceMeasure.h"
#include "engine/classifier/Network.h"
#include "engine/classifier/Reading.h"
#include "engine/embedded/TrainingWorker.h"
#include "engine/font/SampleStore.h"
#include "support/Testing.h"

namespace dravik {

using namespace tool;
namespace {

std::vector<SampleInputs> inputsOf(const std::vector<std::string>& lines, const Drawing& how = {}) {
    return allInputs(segment(drawn(lines, how)), {});
}

double featureDistance(const SampleInputs& a, const SampleInputs& b) {
    double sum = 0;
    for (std::size_t i = 0; i < kFeatureCount; ++i) sum += std::pow(static_cast<double>(a[i] - b[i]), 2);
    return std::sqrt(sum);
}

// Pairs that differ by size or place alone would be one character if every box were stretched to the grid.
TEST(Features, KeepWhatTellsAlikeShapesApart) {
    const std::vector<SampleInputs> some = inputsOf({"HOo.-_,'H"});
    ASSERT_EQ(some.size(), 9u);
    const double same = featureDistance(some[0], some[8]);
    EXPECT_LT(same, 0.1);
    for (const auto& [a, b] : {std::pair{1, 2}, {3, 4}, {4, 5}, {6, 7}, {3, 6}})
        EXPECT_GT(featureDistance(some[static_cast<std::size_t>(a)], some[static_cast<std::size_t>(b)]), 1.0)
            << a << " and " << b;
}

// The image of a line of small letters alone is that of higher ones; the text tells.
TEST(Features, ALineOfSmallLettersIsLowerThanOneOfCapitals) {
    const Segmentation found = segment(drawn({"00"}));
    const std::vector<std::string> small = {"o", "o"}, capitals = {"O", "O"}, mixed = {"O", "o"};
    const auto height = [&](const std::vector<std::string>& text) {
        return allInputs(found, text)[1][kHeightInput];
    };
    EXPECT_LT(height(small), height(capitals) - 0.1f);
    EXPECT_EQ(height(mixed), height(capitals));
}

TEST(Features, ChangeLittleWithSizePolarityAndSlope) {
    const std::vector<SampleInputs> usual = inputsOf({"A1BC2E3"});
    for (const Drawing& how :
         {Drawing{.scale = 8, .dot = 8}, Drawing{.paper = 30, .print = 200}, Drawing{.slope = 0.04}}) {
        const std::vector<SampleInputs> other = inputsOf({"A1BC2E3"}, how);
        ASSERT_EQ(other.size(), usual.size());
        for (std::size_t i = 0; i < usual.size(); ++i) {
            EXPECT_LT(featureDistance(usual[i], other[i]), 0.8) << i;
            EXPECT_NEAR(usual[i][kHeightInput], other[i][kHeightInput], 0.15) << i;
            for (std::size_t k = 0; k < kFeatureCount; ++k) EXPECT_TRUE(other[i][k] >= 0 && other[i][k] <= 1);
        }
    }
}

Sample sampleOf(char label, float level, float shift = 0) {
    Sample sample;
    sample.code = label;
    sample.inputs.fill(level);
    sample.inputs[0] = level + shift;
    return sample;
}

TEST(DistanceMeasure, TellsGoodFromAmbiguousAndMislabelled) {
    SampleStore store;
    std::vector<Sample> samples;
    for (int i = 0; i < 6; ++i) samples.push_back(sampleOf('A', 0.2f, 0.02f * static_cast<float>(i)));
    for (int i = 0; i < 6; ++i) samples.push_back(sampleOf('B', 0.8f, -0.02f * static_cast<float>(i)));
    samples.push_back(sampleOf('A', 0.8f));
    samples.push_back(sampleOf('A', 0.5f));
    store.include(samples);
    store.commit();
    const std::vector<double> distances = store.columns(SampleKind::Committed)->distances;
    for (std::size_t i = 0; i < 12; ++i) EXPECT_LT(distances[i], 0.35) << i;
    EXPECT_GT(distances[12], 0.75);
    EXPECT_NEAR(distances[13], 0.5, 0.15);
}

TEST(DistanceMeasure, OneWrongLabelAmongFourDoesNotSpoilTheOtherThree) {
    SampleStore store;
    std::vector<Sample> samples;
    for (int i = 0; i < 3; ++i) samples.push_back(sampleOf('W', 0.2f, 0.02f * static_cast<float>(i)));
    samples.push_back(sampleOf('W', 0.8f));
    for (int i = 0; i < 4; ++i) samples.push_back(sampleOf('M', 0.8f, 0.02f * static_cast<float>(i)));
    store.include(samples);
    store.commit();
    const std::vector<double> distances = store.columns(SampleKind::Committed)->distances;
    for (const std::size_t right : {0, 1, 2}) EXPECT_LT(distances[right], 0.1) << right;
    for (const std::size_t right : {4, 5, 6, 7}) EXPECT_LT(distances[right], 0.4) << right;
    EXPECT_GT(distances[3], 0.75);
}

TEST(DistanceMeasure, IsDefinedForSingleSamplesAndASingleCharacter) {
    SampleStore store;
    store.include({sampleOf('A', 0.3f)});
    EXPECT_TRUE(std::isfinite(store.columns(SampleKind::Uncommitted)->distances[0]));
    store.commit();
    EXPECT_LT(store.columns(SampleKind::Committed)->distances[0], 0.5);
    store.include({sampleOf('A', 0.3f), sampleOf('A', 0.31f), sampleOf('B', 0.9f), sampleOf('C', 0.9f)});
    store.commit();
    for (const double distance : store.columns(SampleKind::Committed)->distances)
        EXPECT_TRUE(distance >= 0 && distance <= 1) << distance;
}

TEST(SampleStore, ForgottenSamplesDoNotPileUp) {
    SampleStore store;
    store.include({sampleOf('K', 0.1f)});
    store.commit();
    const SampleColumnsPtr early = store.columns(SampleKind::Committed);
    for (int round = 0; round < 40; ++round) {
        store.include(std::vector<Sample>(1000, sampleOf('A', 0.5f)));
        store.removeUncommitted();
    }
    store.include({sampleOf('B', 0.5f)});
    EXPECT_LT(store.columns(SampleKind::Uncommitted)->owner->size(), 10'000u);
    EXPECT_EQ(store.columns(SampleKind::Committed)->samples[0]->code, 'K');
    EXPECT_EQ(early->samples[0]->code, 'K');
}

TrainingSet threeClasses() {
    TrainingSet set;
    set.codes = {'A', 'B', 'C'};
    for (std::uint32_t i = 0; i < 30; ++i) {
        for (std::uint32_t k = 0; k < kInputCount; ++k)
            set.inputs.push_back(static_cast<float>((k + i % 3 * 5) % 7) / 7 +
                                 0.01f * static_cast<float>(i / 3));
        set.classes.push_back(i % 3);
    }
    return set;
}

TEST(Network, LearnsAndRepeatsItself) {
    const TrainingSet set = threeClasses();
    const auto always = [](const TrainingFigures&) { return true; };
    TrainingFigures figures, again;
    const Network net = trained(set, 5, always, figures);
    EXPECT_TRUE(net == trained(set, 5, always, again));
    EXPECT_EQ(figures.cycles, again.cycles);
    EXPECT_EQ(figures.rmsError, again.rmsError);
    EXPECT_FALSE(net == trained(set, 6, always, again));
    for (std::size_t i = 0; i < set.size(); ++i) {
        std::vector<float> outputs(3);
        net.run(std::span(set.inputs).subspan(i * kInputCount, kInputCount), outputs);
        EXPECT_GT(outputs[set.classes[i]], 0.8f);
        EXPECT_NEAR(outputs[0] + outputs[1] + outputs[2], 1, 1e-4);
    }
}

TEST(Network, EndsOnContradictionsAndWhenToldSo) {
    TrainingSet set = threeClasses();
    for (std::size_t i = 0; i < set.size(); ++i) set.classes[i] = static_cast<std::uint32_t>(i / 3 % 3);
    TrainingFigures figures;
    trained(
        set, 1, [](const TrainingFigures&) { return true; }, figures);
    EXPECT_GT(figures.rmsError, 0);
    int asked = 0;
    const Network net = trained(
        set, 1, [&asked](const TrainingFigures&) { return ++asked < 2; }, figures);
    EXPECT_EQ(asked, 2);
    EXPECT_FALSE(net.empty());
    EXPECT_TRUE(std::isfinite(figures.rmsError));
}

// Work that goes on until it is told to end.
TrainingResult endless(TrainingWorker::Progress& progress) {
    while (progress.report({3, 0.5f})) std::this_thread::yield();
    TrainingResult result;
    result.distances = {0.5};
    return result;
}

TEST(TrainingWorker, StopDropsTheResultAndTheTimeLimitKeepsIt) {
    TrainingWorker worker;
    worker.start(endless, 0);
    EXPECT_TRUE(worker.running());
    EXPECT_THROW(worker.start(endless, 0), Failure);
    worker.stop();
    EXPECT_FALSE(worker.running());
    EXPECT_FALSE(worker.take());

    worker.start(endless, 1);
    while (worker.running()) std::this_thread::yield();
    EXPECT_EQ(worker.figures().cycles, 3);
    EXPECT_EQ(worker.figures().rmsError, 0.5f);
    const auto result = worker.take();
    ASSERT_TRUE(result);
    EXPECT_EQ(result->distances, std::vector<double>{0.5});
    EXPECT_FALSE(worker.take());
    // One that is destroyed while it runs ends its thread.
    worker.start(endless, 0);
}

TEST(TrainingWorker, AnExceptionEndsTheRunAndIsHandedOver) {
    TrainingWorker worker;
    worker.start([](TrainingWorker::Progress&) -> TrainingResult { throw std::bad_alloc(); }, 0);
    while (worker.running()) std::this_thread::yield();
    EXPECT_THROW(worker.take(), std::bad_alloc);
    EXPECT_FALSE(worker.take());
    worker.start([](TrainingWorker::Progress&) { return TrainingResult(); }, 0);
    while (worker.running()) std::this_thread::yield();
    EXPECT_TRUE(worker.take());
}

}  // namespace
}  // namespace dravik
