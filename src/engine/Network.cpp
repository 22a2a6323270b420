#include "engine/Network.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>
#include <random>

namespace dravik {
namespace {

constexpr std::uint32_t kHidden = 64;
constexpr std::size_t kBatch = 16;
constexpr float kGoodError = 0.005f;
constexpr int kMostCycles = 3000;
// Cycles without a better error after which the run has converged.
constexpr int kPatience = 40;
// Spread of the noise added to the standardised inputs, so that a few samples stand for more than themselves.
constexpr float kNoise = 0.25f;
constexpr float kRate = 0.006f;

// Uniform and nearly normal numbers from raw generator bits, alike on every platform.
class Chance {
  public:
    explicit Chance(std::uint32_t seed) : bits_(seed) {}
    float normal() {
        const std::uint32_t a = next(), b = next();
        const auto half = [](std::uint32_t v) {
            return static_cast<float>((v & 0xffff) + (v >> 16)) / 65536.0f;
        };
        return (half(a) + half(b) - 2.0f) * 1.7320508f;
    }
    std::size_t below(std::size_t count) { return next() % count; }

  private:
    std::uint32_t next() { return static_cast<std::uint32_t>(bits_()); }

    std::mt19937 bits_;
};

void addScaled(std::span<float> to, std::span<const float> from, float factor) {
    for (std::size_t i = 0; i < to.size(); ++i) to[i] += factor * from[i];
}

float dot(std::span<const float> a, std::span<const float> b) {
    std::array<float, 8> sums{};
    std::size_t i = 0;
    for (; i + 8 <= a.size(); i += 8)
        for (std::size_t k = 0; k < 8; ++k) sums[k] += a[i + k] * b[i + k];
    float sum = 0;
    for (; i < a.size(); ++i) sum += a[i] * b[i];
    for (const float one : sums) sum += one;
    return sum;
}

std::span<float> rowOf(std::vector<float>& matrix, std::size_t row, std::size_t width) {
    return std::span(matrix).subspan(row * width, width);
}
std::span<const float> rowOf(const std::vector<float>& matrix, std::size_t row, std::size_t width) {
    return std::span(matrix).subspan(row * width, width);
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

// Both layers for inputs that are standardised already.
void forward(const Network& net, std::span<const float> inputs, std::span<float> hidden,
             std::span<float> outputs) {
    std::copy(net.firstBias.begin(), net.firstBias.end(), hidden.begin());
    for (std::size_t i = 0; i < inputs.size(); ++i)
        addScaled(hidden, rowOf(net.first, i, net.hidden), inputs[i]);
    for (float& value : hidden) value = std::max(value, 0.1f * value);
    std::copy(net.secondBias.begin(), net.secondBias.end(), outputs.begin());
    for (std::size_t j = 0; j < hidden.size(); ++j)
        addScaled(outputs, rowOf(net.second, j, outputs.size()), hidden[j]);
    softmax(outputs);
}

// One block of weights with what its descent (Adam) keeps.
struct Block {
    std::vector<float>* weights;
    std::vector<float> gradient, mean, square;

    explicit Block(std::vector<float>& w)
        : weights(&w), gradient(w.size()), mean(w.size()), square(w.size()) {}

    void step(float rate, float decay, float correction1, float correction2) {
        float* w = weights->data();
        for (std::size_t i = 0; i < gradient.size(); ++i) {
            const float g = gradient[i];
            mean[i] = 0.9f * mean[i] + 0.1f * g;
            square[i] = 0.995f * square[i] + 0.005f * g * g;
            w[i] -=
                rate * (mean[i] * correction1 / (std::sqrt(square[i] * correction2) + 1e-6f) + decay * w[i]);
            gradient[i] = 0;
        }
    }
};

Network fresh(const TrainingSet& set, Chance& chance) {
    Network net;
    net.codes = set.codes;
    net.hidden = kHidden;
    const std::size_t outputs = set.codes.size();
    net.means.assign(kInputCount, 0);
    net.scales.assign(kInputCount, 1);
    for (std::size_t i = 0; i < kInputCount; ++i) {
        double sum = 0, squares = 0;
        for (std::size_t s = 0; s < set.size(); ++s) {
            const double value = static_cast<double>(set.inputs[s * kInputCount + i]);
            sum += value;
            squares += value * value;
        }
        const double count = static_cast<double>(set.size());
        const double mean = sum / count, variance = std::max(0.0, squares / count - mean * mean);
        net.means[i] = static_cast<float>(mean);
        net.scales[i] = static_cast<float>(1 / std::sqrt(variance + 0.01));
    }
    const auto random = [&chance](std::size_t count, float spread) {
        std::vector<float> weights(count);
        for (float& weight : weights) weight = spread * chance.normal();
        return weights;
    };
    net.first = random(kInputCount * kHidden, std::sqrt(2.0f / static_cast<float>(kInputCount)));
    net.firstBias.assign(kHidden, 0);
    net.second = random(kHidden * outputs, std::sqrt(1.0f / static_cast<float>(kHidden)));
    net.secondBias.assign(outputs, 0);
    return net;
}

// A run's working state.
class Descent {
  public:
    Descent(const TrainingSet& set, std::uint32_t seed)
        : set_(set),
          chance_(seed),
          net_(fresh(set, chance_)),
          blocks_{Block(net_.first), Block(net_.firstBias), Block(net_.second), Block(net_.secondBias)},
          standard_(set.inputs),
          hidden_(kHidden),
          back_(kHidden),
          outputs_(set.codes.size()),
          noisy_(kInputCount) {
        for (std::size_t i = 0; i < standard_.size(); ++i)
            standard_[i] = (standard_[i] - net_.means[i % kInputCount]) * net_.scales[i % kInputCount];
    }

    const Network& network() const { return net_; }

    // Adds a sample's gradient; returns its squared error.
    float learn(std::size_t sample) {
        const auto inputs = rowOf(standard_, sample, kInputCount);
        for (std::size_t i = 0; i < kInputCount; ++i) noisy_[i] = inputs[i] + kNoise * chance_.normal();
        forward(net_, noisy_, hidden_, outputs_);
        outputs_[set_.classes[sample]] -= 1;
        const float error = dot(outputs_, outputs_);
        const std::size_t width = outputs_.size();
        addScaled(blocks_[3].gradient, outputs_, 1);
        for (std::size_t j = 0; j < kHidden; ++j) {
            addScaled(rowOf(blocks_[2].gradient, j, width), outputs_, hidden_[j]);
            back_[j] = dot(rowOf(net_.second, j, width), outputs_) * (hidden_[j] > 0 ? 1.0f : 0.1f);
        }
        addScaled(blocks_[1].gradient, back_, 1);
        for (std::size_t i = 0; i < kInputCount; ++i)
            addScaled(rowOf(blocks_[0].gradient, i, kHidden), back_, noisy_[i]);
        return error;
    }

    void step(float rate) {
        ++steps_;
        const float correction1 = 1 / (1 - std::pow(0.9f, static_cast<float>(steps_)));
        const float correction2 = 1 / (1 - std::pow(0.995f, static_cast<float>(steps_)));
        for (Block& block : blocks_) block.step(rate, 1e-4f, correction1, correction2);
    }

    Chance& chance() { return chance_; }

  private:
    const TrainingSet& set_;
    Chance chance_;
    Network net_;
    std::array<Block, 4> blocks_;
    std::vector<float> standard_, hidden_, back_, outputs_, noisy_;
    int steps_ = 0;
};

}  // namespace

void Network::run(std::span<const float> inputs, std::span<float> outputs) const {
    std::array<float, kInputCount> standard{};
    for (std::size_t i = 0; i < kInputCount; ++i) standard[i] = (inputs[i] - means[i]) * scales[i];
    std::vector<float> units(hidden);
    forward(*this, standard, units, outputs);
}

Network trained(const TrainingSet& set, std::uint32_t seed,
                const std::function<bool(const TrainingFigures&)>& more, TrainingFigures& figures) {
    figures = {};
    Descent descent(set, seed);
    Network best = descent.network();
    float least = 1e9f;
    int since = 0;
    std::vector<std::size_t> order(set.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    const double cells = static_cast<double>(set.size()) * static_cast<double>(set.codes.size());
    for (int cycle = 1; cycle <= kMostCycles; ++cycle) {
        for (std::size_t i = order.size(); i > 1; --i)
            std::swap(order[i - 1], order[descent.chance().below(i)]);
        const float rate = kRate / (1 + 0.02f * static_cast<float>(cycle - 1));
        double squares = 0;
        for (std::size_t start = 0; start < order.size(); start += kBatch) {
            const std::size_t end = std::min(order.size(), start + kBatch);
            for (std::size_t i = start; i < end; ++i) squares += static_cast<double>(descent.learn(order[i]));
            descent.step(rate);
            if (more(figures)) continue;
            if (cycle > 1) return best;
            const double seen = static_cast<double>(end) * static_cast<double>(set.codes.size());
            figures.rmsError = static_cast<float>(std::sqrt(squares / seen));
            return descent.network();
        }
        figures = {cycle, static_cast<float>(std::sqrt(squares / cells))};
        if (figures.rmsError < 0.99f * least) {
            least = figures.rmsError;
            best = descent.network();
            since = 0;
        } else if (++since >= kPatience) {
            break;
        }
        if (figures.rmsError < kGoodError) break;
    }
    figures.rmsError = least;
    return best;
}

}  // namespace dravik
