#include "engine/classifier/DistanceMeasure.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <utility>

namespace dravik::engine {
namespace {

// Spread within a character that is assumed before there are samples to tell, squared, and how many samples
// it counts.
constexpr double kAssumedVariance = 0.015;
constexpr double kAssumedSamples = 20;
// How much of an input's variance is taken from the mean of all inputs, which is known better.
constexpr double kSharedVariance = 0.2;
// Neighbours that a sample is compared by.
constexpr std::size_t kNeighbours = 3;
// Other characters that are searched: those whose means are nearest.
constexpr std::size_t kOthers = 5;
// Samples of a character that stand for it, taken evenly from all of them.
constexpr std::size_t kMostRows = 200;
// Squared distances in units of the spread within a character, for its first sample and for a font of one
// character; as measured with rendered print.
constexpr float kUsualOwn = 20;
constexpr float kUsualOther = 130;

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

std::int64_t ClassStatistics::comparisons() const {
    std::int64_t classes = 0, largest = 0;
    for (const Class& one : classes_) {
        classes += one.count > 0;
        largest = std::max<std::int64_t>(largest, one.count);
    }
    const auto rows =
        std::min<std::int64_t>(total_, static_cast<std::int64_t>(kOthers + 1) *
                                           std::min(largest, static_cast<std::int64_t>(kMostRows)));
    return total_ * (classes + rows);
}

DistanceMeasure::DistanceMeasure(const ClassStatistics& statistics, std::span<const Sample* const> samples) {
    double classes = 0;
    std::array<double, kInputCount> variances = statistics.squares_;
    for (const ClassStatistics::Class& one : statistics.classes_) {
        if (one.count == 0) continue;
        classes += 1;
        for (std::size_t i = 0; i < kInputCount; ++i) variances[i] -= one.sums[i] * one.sums[i] / one.count;
    }
    const double freedom = static_cast<double>(statistics.total_) - classes;
    double mean = 0;
    for (double& variance : variances) {
        variance =
            (std::max(0.0, variance) + kAssumedSamples * kAssumedVariance) / (freedom + kAssumedSamples);
        mean += variance / static_cast<double>(kInputCount);
    }
    for (std::size_t i = 0; i < kInputCount; ++i)
        weights_[i] = static_cast<float>(
            1 / std::sqrt((1 - kSharedVariance) * variances[i] + kSharedVariance * mean + 1e-4));

    std::vector<std::size_t> places(statistics.classes_.size());
    std::size_t rows = 0;
    for (std::size_t c = 0; c < statistics.classes_.size(); ++c) {
        const ClassStatistics::Class& one = statistics.classes_[c];
        if (one.count == 0) continue;
        places[c] = classes_.size();
        classes_.push_back({one.code, rows, 0});
        rows += std::min(static_cast<std::size_t>(one.count), kMostRows);
        for (std::size_t i = 0; i < kPadded; ++i)
            means_.push_back(i < kInputCount ? weights_[i] * static_cast<float>(one.sums[i] / one.count)
                                             : 0.0f);
    }
    rows_.resize(rows * kPadded);
    serials_.resize(rows);
    std::vector<std::size_t> seen(statistics.classes_.size());
    for (const Sample* sample : samples) {
        const std::size_t c = statistics.places_.at(sample->code);
        const auto all = static_cast<std::size_t>(statistics.classes_[c].count);
        const std::size_t wanted = std::min(all, kMostRows), number = seen[c]++;
        // Of `all` samples those are taken at which number x wanted / all grows.
        if (number > 0 && number * wanted / all == (number - 1) * wanted / all) continue;
        Rows& one = classes_[places[c]];
        const std::size_t row = one.first + one.count++;
        serials_[row] = sample->serial;
        for (std::size_t i = 0; i < kInputCount; ++i)
            rows_[row * kPadded + i] = weights_[i] * sample->inputs[i];
    }
}

double DistanceMeasure::distance(const Sample& sample) const {
    const Nearness found = nearness(sample.inputs, sample.code, sample.serial);
    const float both = found.own + found.other;
    return both > 0 ? static_cast<double>(found.own / both) : 0.5;
}

DistanceMeasure::Nearness DistanceMeasure::nearness(const SampleInputs& inputs, std::int32_t code,
                                                    std::uint64_t serial) const {
    alignas(16) std::array<float, kPadded> place{};
    for (std::size_t i = 0; i < kInputCount; ++i) place[i] = weights_[i] * inputs[i];

    // Mean of the squared distances to the nearest rows of a class; `none` when it has no row but the sample.
    const auto toRows = [&](const Rows& rows, bool own, float none) {
        std::array<float, kNeighbours> nearest;
        nearest.fill(std::numeric_limits<float>::max());
        std::size_t count = 0;
        for (std::size_t row = rows.first; row < rows.first + rows.count; ++row) {
            if (own && serials_[row] == serial) continue;
            ++count;
            float square = squaredDistance(place.data(), &rows_[row * kPadded]);
            for (float& one : nearest)
                if (square < one) std::swap(square, one);
        }
        // Of a few samples half may be wrong ones; the nearest half is believed.
        count = std::min((count + 1) / 2, kNeighbours);
        if (count == 0) return none;
        return std::accumulate(nearest.begin(), nearest.begin() + static_cast<std::ptrdiff_t>(count), 0.0f) /
               static_cast<float>(count);
    };

    float own = kUsualOwn, other = kUsualOther;
    std::size_t samples = 0;
    std::array<std::pair<float, const Rows*>, kOthers> others{};
    std::size_t found = 0;
    for (std::size_t c = 0; c < classes_.size(); ++c) {
        if (classes_[c].code == code) {
            own = toRows(classes_[c], true, kUsualOwn);
            samples = classes_[c].count;
            continue;
        }
        std::pair<float, const Rows*> coming(squaredDistance(place.data(), &means_[c * kPadded]),
                                             &classes_[c]);
        for (std::size_t i = 0; i < found; ++i)
            if (coming.first < others[i].first) std::swap(coming, others[i]);
        if (found < kOthers) others[found++] = coming;
    }
    if (found > 0) other = std::numeric_limits<float>::max();
    for (std::size_t i = 0; i < found; ++i)
        other = std::min(other, toRows(*others[i].second, false, kUsualOther));
    return {own, other, samples};
}

}  // namespace dravik::engine
