// Distances of samples: how much nearer a sample is to others of its own character than to those of the
// nearest other one. 0 looks like its own character alone, 0.5 as much like another, 1 like another alone.
// Taken from the samples themselves and never from a trained network, which learns wrong labels by heart.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <unordered_map>
#include <vector>

#include "engine/segmentation/Sample.h"

namespace dravik::engine {

// Sums over the samples of each character, kept up to date as samples come and go.
class ClassStatistics {
  public:
    void add(const Sample& sample);
    void remove(const Sample& sample);

    struct Class {
        std::int32_t code = 0;
        std::int32_t count = 0;
        std::array<double, kInputCount> sums{};
    };
    // Nothing when no sample has that code.
    const Class* find(std::int32_t code) const;
    std::span<const Class> classes() const noexcept { return classes_; }
    // How many comparisons of two samples the Distances of all of them take, at most.
    std::int64_t comparisons() const;

  private:
    friend class DistanceMeasure;
    std::vector<Class> classes_;  // some may be without samples
    std::unordered_map<std::int32_t, std::size_t> places_;
    std::array<double, kInputCount> squares_{};
    std::int64_t total_ = 0;
};

// Measures against the samples as they were when it was made: k nearest neighbours, the sample itself left
// out, in the inputs divided by their spread within a character. With a and b the mean squared distances to
// the nearest three (of fewer than five, the nearest half) of the own and of the nearest other character, the
// Distance is a / (a + b).
class DistanceMeasure {
  public:
    // `samples` are those that `statistics` counts; they are looked at here only.
    DistanceMeasure(const ClassStatistics& statistics, std::span<const Sample* const> samples);

    // The sample itself, known by its serial number, is not among its own neighbours. At least 0 and at most
    // 1. A character's first sample counts as usually near to others of it; in a font of one character the
    // nearest other one counts as usually far.
    double distance(const Sample& sample) const;

    // What a Distance is made of: mean squared distances to the nearest samples of the character itself and
    // of the nearest other one, in units of the spread within a character.
    struct Nearness {
        float own = 0;
        float other = 0;
        std::size_t samples = 0;  // of the character itself that it was compared with
    };
    // Of inputs that are no sample, taken for the character of that code.
    Nearness nearness(const SampleInputs& inputs, std::int32_t code) const {
        return nearness(inputs, code, 0);
    }

  private:
    // Rows of one character, a weighted sample each.
    struct Rows {
        std::int32_t code = 0;
        std::size_t first = 0;
        std::size_t count = 0;
    };

    // `serial` names the sample to leave out, which must not be its own neighbour; 0 leaves out none.
    Nearness nearness(const SampleInputs& inputs, std::int32_t code, std::uint64_t serial) const;

    std::array<float, kInputCount> weights_{};
    std::vector<Rows> classes_;
    std::vector<float> means_;  // a row for each class
    std::vector<float> rows_;
    std::vector<std::uint64_t> serials_;  // of each row
};

}  // namespace dravik::engine
