// The classifier: a network of one hidden layer whose outputs are the likelihoods of the characters that it
// was trained on.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <vector>

#include "engine/kernels/MatrixKernels.h"
#include "engine/segmentation/Sample.h"

namespace dravik::engine {

struct Network {
    std::vector<std::int32_t> codes;        // character of each output
    std::uint32_t hidden = 0;               // units of the hidden layer
    std::vector<float> means, scales;       // of each input: what the network sees is (input - mean) x scale
    std::vector<float> first, firstBias;    // kInputCount rows of `hidden`; `hidden`
    std::vector<float> second, secondBias;  // `hidden` rows of codes.size(); codes.size()

    bool empty() const noexcept { return codes.empty(); }

    // Likelihood of each code, adding up to 1. `outputs` has codes.size() elements.
    void run(std::span<const float> inputs, std::span<float> outputs) const;

    friend bool operator==(const Network&, const Network&) = default;
};

// Samples to train from: one row of kInputCount inputs each and its class, an index into codes.
struct TrainingSet {
    std::vector<std::int32_t> codes;
    std::vector<float> inputs;
    std::vector<std::uint32_t> classes;

    std::size_t size() const noexcept { return classes.size(); }
};

struct TrainingFigures {
    std::int32_t cycles = 0;
    float rmsError = 0;
};

// How a run goes.
struct TrainingPlan {
    std::uint32_t hidden = 64;
    std::size_t batch = 30;  // samples between steps
    int cycles = 100;        // through all samples, while the steps become smaller and smaller
    float rate = 0.004f;     // length of the first steps
    float decay = 1e-4f;     // of the weights, by each step of length 1
    // Spread of what is added to the standardised inputs, so that a few samples stand for more than
    // themselves.
    float noise = 0.4f;
    const MatrixKernels* kernels = &usedKernels();

    // What suits a set of that many samples.
    static TrainingPlan forSamples(std::size_t count);
};

// Trains until the error is small, the plan is carried out, or `more` says no; asked at least every few
// milliseconds of work, with the figures after the last full cycle. The same set, seed and plan give the same
// network. Returns that of least error.
Network trained(const TrainingSet& set, std::uint32_t seed,
                const std::function<bool(const TrainingFigures&)>& more, TrainingFigures& figures);
Network trained(const TrainingSet& set, std::uint32_t seed, const TrainingPlan& plan,
                const std::function<bool(const TrainingFigures&)>& more, TrainingFigures& figures);

}  // namespace dravik::engine
