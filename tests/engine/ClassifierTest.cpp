// Features, training and its worker.

#include "contract/DrawnText.h"
#include "engine/classifier/Network.h"
#include "engine/classifier/Reading.h"
#include "engine/embedded/TrainingWorker.h"
#include "support/Testing.h"

namespace dravik {

using namespace tool;
namespace {

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

TEST(Network, LearnsAndRepeatsItselfOnEveryInstructionSet) {
    const TrainingSet set = threeClasses();
    const auto always = [](const TrainingFigures&) { return true; };
    for (const MatrixKernels* kernels : availableKernels()) {
        TrainingPlan plan = TrainingPlan::forSamples(set.size());
        plan.kernels = kernels;
        TrainingFigures figures, again;
        const Network net = trained(set, 5, plan, always, figures);
        EXPECT_EQ(net, trained(set, 5, plan, always, again)) << kernels->name;
        EXPECT_EQ(figures.cycles, again.cycles);
        EXPECT_EQ(figures.rmsError, again.rmsError);
        EXPECT_NE(net, trained(set, 6, plan, always, again));
        for (std::size_t i = 0; i < set.size(); ++i) {
            std::vector<float> outputs(3);
            net.run(std::span(set.inputs).subspan(i * kInputCount, kInputCount), outputs);
            EXPECT_GT(outputs[set.classes[i]], 0.8f) << kernels->name;
            EXPECT_NEAR(outputs[0] + outputs[1] + outputs[2], 1, 1e-4);
        }
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
