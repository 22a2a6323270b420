#include "engine/DistanceMeasure.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace dravik {
namespace {

// Spread within a character that is assumed before there are samples to tell, squared, and how many samples
// it counts.
constexpr double kAssumedVariance = 0.015;
constexpr double kAssumedSamples = 20;
// Distances in units of that spread, for a character's first sample and for a font of one character.
const float kUsualOwn = 1.2f * std::sqrt(static_cast<float>(kInputCount));
const float kUsualOther = 3.5f * std::sqrt(static_cast<float>(kInputCount));

constexpr std::size_t kPadded = (kInputCount + 3) / 4 * 4;

float squaredDistance(const float* a, const float* b) {
    std::array<float, 4> sums{};
    for (std::size_t i = 0; i < kPadded; i += 4)
        for (std::size_t k = 0; k < 4; ++k) {
            const float difference = a[i + k] - b[i + k];
            sums[k] += difference * difference;
        }
    return (sums[0] + sums[1]) + (sums[2] + sums[3]);
}

}  // namespace

void ClassStatistics::add(const Sample& sample) {
    const auto [entry, isNew] = places_.try_emplace(sample.code, classes_.size());
    if (isNew) classes_.emplace_back().code = sample.code;
    Class& one = classes_[entry->second];
    ++one.count;
    ++total_;
    for (std::size_t i = 0; i < kInputCount; ++i) {
        const double value = static_cast<double>(sample.inputs[i]);
        one.sums[i] += value;
        squares_[i] += value * value;
    }
}

void ClassStatistics::remove(const Sample& sample) {
    Class& one = classes_[places_.at(sample.code)];
    --one.count;
    --total_;
    for (std::size_t i = 0; i < kInputCount; ++i) {
        const double value = static_cast<double>(sample.inputs[i]);
        one.sums[i] -= value;
        squares_[i] -= value * value;
    }
}

const ClassStatistics::Class* ClassStatistics::find(std::int32_t code) const {
    const auto entry = places_.find(code);
    if (entry == places_.end() || classes_[entry->second].count == 0) return nullptr;
    return &classes_[entry->second];
}

DistanceMeasure::DistanceMeasure(const ClassStatistics& statistics) {
    double classes = 0;
    std::array<double, kInputCount> within = statistics.squares_;
    for (const ClassStatistics::Class& one : statistics.classes_) {
        if (one.count == 0) continue;
        classes += 1;
        for (std::size_t i = 0; i < kInputCount; ++i) within[i] -= one.sums[i] * one.sums[i] / one.count;
    }
    const double freedom = static_cast<double>(statistics.total_) - classes;
    for (std::size_t i = 0; i < kInputCount; ++i) {
        const double variance =
            (std::max(0.0, within[i]) + kAssumedSamples * kAssumedVariance) / (freedom + kAssumedSamples);
        weights_[i] = static_cast<float>(1 / std::sqrt(variance + 1e-4));
    }
    for (const ClassStatistics::Class& one : statistics.classes_) {
        if (one.count == 0) continue;
        middles_.push_back({one.code, static_cast<float>(one.count)});
        for (std::size_t i = 0; i < kPadded; ++i)
            means_.push_back(i < kInputCount ? weights_[i] * static_cast<float>(one.sums[i] / one.count)
                                             : 0.0f);
    }
}

double DistanceMeasure::distance(const Sample& sample, bool member) const {
    std::array<float, kPadded> place{};
    for (std::size_t i = 0; i < kInputCount; ++i) place[i] = weights_[i] * sample.inputs[i];
    float own = kUsualOwn;
    float other = std::numeric_limits<float>::max();
    for (std::size_t c = 0; c < middles_.size(); ++c) {
        const float square = squaredDistance(place.data(), &means_[c * kPadded]);
        if (middles_[c].code != sample.code) {
            other = std::min(other, square);
            continue;
        }
        const float count = middles_[c].count;
        if (!member) {
            own = std::sqrt(square);
        } else if (count > 1) {
            // The mean without the sample lies this much farther from it than the mean with it.
            own = std::sqrt(square) * count / (count - 1);
        }
    }
    other = other == std::numeric_limits<float>::max() ? kUsualOther : std::sqrt(other);
    return own + other > 0 ? static_cast<double>(own / (own + other)) : 0.5;
}

}  // namespace dravik
