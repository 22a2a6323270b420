#include "Peers.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <utility>

#include "engine/classifier/Network.h"

namespace dravik {

using namespace engine;
namespace {

double squared(const SampleInputs& a, const SampleInputs& b) {
    float sum = 0;
    for (std::size_t i = 0; i < kInputCount; ++i) sum += (a[i] - b[i]) * (a[i] - b[i]);
    return static_cast<double>(sum);
}

}  // namespace

std::vector<double> classMeanRatios(const std::vector<Sample>& samples) {
    std::map<std::int32_t, std::pair<SampleInputs, float>> means;
    for (const Sample& sample : samples) {
        auto& [sum, count] = means[sample.code];
        for (std::size_t i = 0; i < kInputCount; ++i) sum[i] += sample.inputs[i];
        ++count;
    }
    for (auto& [code, mean] : means)
        for (float& value : mean.first) value /= mean.second;
    std::vector<double> result;
    for (const Sample& sample : samples) {
        double own = 0, other = std::numeric_limits<double>::max();
        for (const auto& [code, mean] : means) {
            const double distance = squared(sample.inputs, mean.first);
            if (code == sample.code)
                own = distance;
            else
                other = std::min(other, distance);
        }
        result.push_back(std::sqrt(own / (other + 1e-9)));
    }
    return result;
}

std::vector<double> neighbourShares(const std::vector<Sample>& samples, std::size_t neighbours) {
    std::vector<double> result;
    std::vector<std::pair<double, std::int32_t>> near;
    for (const Sample& sample : samples) {
        near.clear();
        double own = std::numeric_limits<double>::max(), other = own;
        for (const Sample& one : samples) {
            if (&one == &sample) continue;
            near.emplace_back(squared(sample.inputs, one.inputs), one.code);
            double& nearest = one.code == sample.code ? own : other;
            nearest = std::min(nearest, near.back().first);
        }
        const std::size_t count = std::min(neighbours, near.size());
        std::partial_sort(near.begin(), near.begin() + static_cast<std::ptrdiff_t>(count), near.end());
        double share = 0;
        for (std::size_t i = 0; i < count; ++i) share += near[i].second != sample.code;
        own = std::sqrt(own);
        other = std::sqrt(other);
        result.push_back(share / static_cast<double>(count) + 0.1 * own / (own + other + 1e-9));
    }
    return result;
}

std::vector<double> networkMargins(const std::vector<Sample>& samples, int cycles) {
    TrainingSet set;
    for (const Sample& sample : samples) {
        auto place = std::find(set.codes.begin(), set.codes.end(), sample.code);
        if (place == set.codes.end()) place = set.codes.insert(place, sample.code);
        set.classes.push_back(static_cast<std::uint32_t>(place - set.codes.begin()));
        set.inputs.insert(set.inputs.end(), sample.inputs.begin(), sample.inputs.end());
    }
    TrainingFigures figures;
    const Network network = trained(
        set, 1, [cycles](const TrainingFigures& now) { return now.cycles < cycles; }, figures);
    std::vector<double> result;
    std::vector<float> outputs(set.codes.size());
    for (std::size_t s = 0; s < samples.size(); ++s) {
        network.run(samples[s].inputs, outputs);
        const float own = std::exchange(outputs[set.classes[s]], 0.0f);
        result.push_back(static_cast<double>(*std::max_element(outputs.begin(), outputs.end()) - own));
    }
    return result;
}

}  // namespace dravik
