#include "engine/classifier/Network.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>
#include <numeric>

#include "engine/classifier/Perceptron.h"

namespace dravik::engine {
namespace {

constexpr float kGoodError = 0.0003f;
// Standardised inputs beyond this are taken for this, whatever a damaged sample holds.
constexpr float kFarthest = 8;
// How much more exactly height and offset are taken than features are, which tell the same many times over.
constexpr double kSizeFactor = 3;
// Part of the noise that is left at the end of a run.
constexpr double kLastNoise = 0.5;
// Sets of fewer samples than this give too few steps when batches are long.
constexpr std::size_t kFewSamples = 3000;
// Samples that are prepared between questions whether to go on.
constexpr std::size_t kSamplesAtATime = 4096;
// Numbers of noise that are drawn once; each sample then takes a stretch of them.
constexpr std::size_t kNoiseCount = 1u << 14;

float standardised(const Network& net, std::size_t input, float value) {
    return std::clamp((value - net.means[input]) * net.scales[input], -kFarthest, kFarthest);
}

void softmax(std::span<float> values) {
    const float most = *std::max_element(values.begin(), values.end());
    float sum = 0;
    for (float& value : values) {
        value = std::exp(value - most);
        sum += value;
    }
    for (float& value : values) value /= sum;
}

// What the inputs of a set are standardised by: sums over its samples, taken a stretch at a time.
class InputSums {
  public:
    void add(const TrainingSet& set, std::size_t first, std::size_t last) {
        for (std::size_t s = first; s < last; ++s)
            for (std::size_t i = 0; i < kInputCount; ++i) {
                const double value = static_cast<double>(set.inputs[s * kInputCount + i]);
                sums_[i] += value;
                squares_[i] += value * value;
            }
        count_ += static_cast<double>(last - first);
    }

    void standardise(Network& net) const {
        for (std::size_t i = 0; i < kInputCount; ++i) {
            const double mean = sums_[i] / count_;
            const double variance = std::max(0.0, squares_[i] / count_ - mean * mean);
            const double spread = i < tool::kFeatureCount ? std::sqrt(variance + 0.01)
                                                          : std::sqrt(variance + 0.001) / kSizeFactor;
            net.means.push_back(static_cast<float>(mean));
            net.scales.push_back(static_cast<float>(1 / spread));
        }
    }

  private:
    std::array<double, kInputCount> sums_{}, squares_{};
    double count_ = 0;
};

// A run's working state.
class Descent {
  public:
    Descent(const TrainingSet& set, std::uint32_t seed, const TrainingPlan& plan)
        : set_(set),
          plan_(plan),
          chance_(seed),
          perceptron_({kInputCount, plan.hidden, set.codes.size()}, chance_, *plan.kernels),
          noise_(kNoiseCount + perceptron_.inputStride()),
          order_(set.size()) {
        net_.codes = set.codes;
        net_.means.assign(kInputCount, 0);
        net_.scales.assign(kInputCount, 1);
        for (std::size_t i = 0; i < noise_.size(); ++i) noise_.data()[i] = chance_.normal();
        std::iota(order_.begin(), order_.end(), 0u);
        const std::size_t batches = (set.size() + plan.batch - 1) / plan.batch;
        steps_ = static_cast<double>(batches) * plan.cycles;
    }

    // Standardises the samples; false when `goOn` said no before it was done.
    template <typename GoOn>
    bool prepare(const GoOn& goOn) {
        const auto inStretches = [&](const auto& work) {
            for (std::size_t first = 0; first < set_.size(); first += kSamplesAtATime) {
                work(first, std::min(set_.size(), first + kSamplesAtATime));
                if (!goOn()) return false;
            }
            return true;
        };
        InputSums sums;
        if (!inStretches([&](std::size_t first, std::size_t last) { sums.add(set_, first, last); }))
            return false;
        net_.means.clear();
        net_.scales.clear();
        sums.standardise(net_);
        const std::size_t stride = perceptron_.inputStride();
        inputs_ = AlignedFloats(set_.size() * stride);
        return inStretches([&](std::size_t first, std::size_t last) {
            for (std::size_t s = first; s < last; ++s) {
                float* inputs = inputs_.data() + s * stride;
                for (std::size_t i = 0; i < kInputCount; ++i)
                    inputs[i] = standardised(net_, i, set_.inputs[s * kInputCount + i]);
                std::fill(inputs + kInputCount, inputs + stride, 0.0f);
            }
        });
    }

    void shuffle() {
        for (std::size_t i = order_.size(); i > 1; --i)
            std::swap(order_[i - 1], order_[chance_.below(static_cast<std::uint32_t>(i))]);
    }

    // Learns the samples at places [first, last) of the shuffled order; returns the sum of their squared
    // errors.
    double learn(std::size_t first, std::size_t last) {
        rows_.clear();
        noises_.clear();
        classes_.clear();
        for (std::size_t i = first; i < last; ++i) {
            rows_.push_back(inputs_.data() + order_[i] * perceptron_.inputStride());
            noises_.push_back(noise_.data() + chance_.below(kNoiseCount));
            classes_.push_back(set_.classes[order_[i]]);
        }
        const double done = std::min(1.0, step_++ / steps_);
        const double rate = 0.5 * (1 + std::cos(std::numbers::pi * done));
        const float noise = plan_.noise * static_cast<float>(1 - (1 - kLastNoise) * done);
        return perceptron_.learn({rows_, classes_, noises_, noise,
                                  plan_.rate * static_cast<float>(std::max(rate, 0.01)), plan_.decay});
    }

    std::span<const float> weights() const { return perceptron_.weights(); }

    Network network(std::span<const float> weights) const {
        Network net = net_;
        const auto append = [](std::vector<float>& to, std::span<const float> from) {
            to.insert(to.end(), from.begin(), from.end());
        };
        net.hidden = plan_.hidden;
        for (std::size_t i = 0; i < kInputCount; ++i) append(net.first, perceptron_.firstRow(weights, i));
        append(net.firstBias, perceptron_.firstRow(weights, kInputCount));
        for (std::size_t j = 0; j < net.hidden; ++j) append(net.second, perceptron_.secondRow(weights, j));
        append(net.secondBias, perceptron_.secondRow(weights, net.hidden));
        return net;
    }

  private:
    const TrainingSet& set_;
    TrainingPlan plan_;
    Chance chance_;
    Network net_;
    Perceptron perceptron_;
    AlignedFloats inputs_, noise_;
    std::vector<std::uint32_t> order_, classes_;
    std::vector<const float*> rows_, noises_;
    double step_ = 0, steps_ = 1;
};

}  // namespace

void Network::run(std::span<const float> inputs, std::span<float> outputs) const {
    std::vector<float> units(firstBias);
    for (std::size_t i = 0; i < kInputCount; ++i) {
        const float input = standardised(*this, i, inputs[i]);
        for (std::size_t j = 0; j < hidden; ++j) units[j] += input * first[i * hidden + j];
    }
    std::copy(secondBias.begin(), secondBias.end(), outputs.begin());
    for (std::size_t j = 0; j < hidden; ++j) {
        const float unit = std::max(units[j], 0.1f * units[j]);
        for (std::size_t k = 0; k < outputs.size(); ++k) outputs[k] += unit * second[j * outputs.size() + k];
    }
    softmax(outputs);
}

TrainingPlan TrainingPlan::forSamples(std::size_t count) {
    TrainingPlan plan;
    const double cycles = 12000 / std::sqrt(static_cast<double>(std::max<std::size_t>(count, 1)));
    plan.cycles = static_cast<int>(std::clamp(cycles, 30.0, 1500.0));
    plan.batch = count < kFewSamples ? 30 : 60;
    return plan;
}

Network trained(const TrainingSet& set, std::uint32_t seed,
                const std::function<bool(const TrainingFigures&)>& more, TrainingFigures& figures) {
    return trained(set, seed, TrainingPlan::forSamples(set.size()), more, figures);
}

Network trained(const TrainingSet& set, std::uint32_t seed, const TrainingPlan& plan,
                const std::function<bool(const TrainingFigures&)>& more, TrainingFigures& figures) {
    figures = {};
    Descent descent(set, seed, plan);
    if (!descent.prepare([&] { return more(figures); })) return descent.network(descent.weights());
    std::vector<float> best(descent.weights().begin(), descent.weights().end());
    float least = std::numeric_limits<float>::max();
    for (int cycle = 1; cycle <= plan.cycles; ++cycle) {
        descent.shuffle();
        double squares = 0;
        for (std::size_t start = 0; start < set.size(); start += plan.batch) {
            const std::size_t end = std::min(set.size(), start + plan.batch);
            squares += descent.learn(start, end);
            if (more(figures)) continue;
            if (cycle > 1) return descent.network(best);
            const double seen = static_cast<double>(end) * static_cast<double>(set.codes.size());
            figures.rmsError = static_cast<float>(std::sqrt(squares / seen));
            return descent.network(descent.weights());
        }
        const double cells = static_cast<double>(set.size()) * static_cast<double>(set.codes.size());
        figures = {cycle, static_cast<float>(std::sqrt(squares / cells))};
        if (figures.rmsError < least) {
            least = figures.rmsError;
            best.assign(descent.weights().begin(), descent.weights().end());
        }
        if (figures.rmsError < kGoodError) break;
    }
    figures.rmsError = least;
    return descent.network(best);
}

}  // namespace dravik::engine
