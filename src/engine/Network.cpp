#include "engine/Network.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>
#include <numeric>

#include "engine/Perceptron.h"

namespace dravik {
namespace {

constexpr float kGoodError = 0.001f;
// Standardised inputs beyond this are taken for this, whatever a damaged sample holds.
constexpr float kFarthest = 8;
// How much more exactly height and offset are taken than features are, which tell the same many times over.
constexpr double kSizeFactor = 3;
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

// A network without weights, with what its inputs are standardised by.
Network measured(const TrainingSet& set) {
    Network net;
    net.codes = set.codes;
    std::array<double, kInputCount> sums{}, squares{};
    for (std::size_t s = 0; s < set.size(); ++s)
        for (std::size_t i = 0; i < kInputCount; ++i) {
            const double value = static_cast<double>(set.inputs[s * kInputCount + i]);
            sums[i] += value;
            squares[i] += value * value;
        }
    const double count = static_cast<double>(set.size());
    for (std::size_t i = 0; i < kInputCount; ++i) {
        const double mean = sums[i] / count, variance = std::max(0.0, squares[i] / count - mean * mean);
        net.means.push_back(static_cast<float>(mean));
        const double spread =
            i < kFeatureCount ? std::sqrt(variance + 0.01) : std::sqrt(variance + 0.001) / kSizeFactor;
        net.scales.push_back(static_cast<float>(1 / spread));
    }
    return net;
}

// A run's working state.
class Descent {
  public:
    Descent(const TrainingSet& set, std::uint32_t seed, const TrainingPlan& plan)
        : set_(set),
          plan_(plan),
          chance_(seed),
          net_(measured(set)),
          perceptron_({kInputCount, plan.hidden, set.codes.size()}, chance_, *plan.kernels),
          inputs_(set.size() * perceptron_.inputStride()),
          noise_(kNoiseCount + perceptron_.inputStride()),
          order_(set.size()) {
        const std::size_t stride = perceptron_.inputStride();
        for (std::size_t s = 0; s < set.size(); ++s)
            for (std::size_t i = 0; i < kInputCount; ++i)
                inputs_.data()[s * stride + i] = standardised(net_, i, set.inputs[s * kInputCount + i]);
        for (std::size_t i = 0; i < noise_.size(); ++i) noise_.data()[i] = chance_.normal();
        std::iota(order_.begin(), order_.end(), 0u);
        steps_ = static_cast<double>((set.size() + plan.batch - 1) / plan.batch) * plan.cycles;
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
        return perceptron_.learn({rows_, classes_, noises_, plan_.noise,
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
    plan.cycles =
        static_cast<int>(std::clamp<std::size_t>(3'000'000 / std::max<std::size_t>(count, 1), 30, 300));
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

}  // namespace dravik
